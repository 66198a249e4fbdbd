// What an export wrote, made a model of again, and exported again.

#include "support/Process.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <string>
#include <vector>

namespace {

// The numbers inside quids and of views by the order in which they first appear: an export gives them by the places of
// the elements, and a model that comes back may have these in another order.
std::string renumbered(const std::string& text)
{
    static const std::regex number("\"[0-9A-F]{9,16}\"|@[0-9]+");
    std::map<std::string, std::size_t> numbers;
    std::string result;
    auto from = text.begin();
    for (std::sregex_iterator match(text.begin(), text.end(), number), end; match != end; ++match) {
        result.append(from, (*match)[0].first);
        result += '#' + std::to_string(numbers.emplace(match->str(), numbers.size()).first->second);
        from = (*match)[0].second;
    }
    return result.append(from, text.end());
}

class Exports : public testing::TestWithParam<std::string> {
protected:
    void run(const std::vector<std::string>& arguments) const
    {
        const ProcessResult result = runProcess({PETAL_COMMAND, arguments, folder.path(), ""});
        ASSERT_EQ(result.exitCode, 0) << result.errors;
    }

    // The Rose file of `input`, by way of a model file.
    [[nodiscard]] std::string again(const std::string& input, const std::string& output) const
    {
        run({"convert", "-q", input, "-o", "between.model.json"});
        run({"export", "-q", "between.model.json", "--types", "as-is", "--foreign-keys", "-o", output});
        return folder.read(output);
    }

    TemporaryFolder folder;
};

TEST_P(Exports, ComeBackWhole)
{
    for (const char* const option : {"--option=BP_USE_GRAPHICAL_INFORMATION=True", "--no-geometry"}) {
        run({"export", "-q", std::string(PETAL_SOURCE_DIR) + GetParam(), "--types", "as-is", "--foreign-keys", option,
             "-o", "first.mdl"});
        const std::string second = again("first.mdl", "second.mdl");
        EXPECT_EQ(renumbered(second), renumbered(folder.read("first.mdl"))) << option;
        EXPECT_EQ(again("second.mdl", "third.mdl"), second) << option;
    }
}

INSTANTIATE_TEST_SUITE_P(, Exports,
                         testing::Values("/examples/orders.model.json", "/examples/host-model.model.json",
                                         "/tests/designs/files/all-kinds.model.json",
                                         "/tests/designs/files/shop.model.json"),
                         [](const auto& instance) { return "Model" + std::to_string(instance.index); });

} // namespace
