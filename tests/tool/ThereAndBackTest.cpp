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

class ThereAndBack : public testing::Test {
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

class Exports : public ThereAndBack, public testing::WithParamInterface<std::string> {};

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

// The class X has A before B, although Y, which is read first, shares its line to B with X.
constexpr const char* sharedLines = R"({
  "format": "kiv-model", "version": 1,
  "childPackages": [{
    "name": "Logical View",
    "modelElements": [
      {"kind": "class", "id": "a", "name": "A", "projections": [{"diagram": "d", "x": 100, "y": 100}]},
      {"kind": "class", "id": "b", "name": "B", "projections": [{"diagram": "d", "x": 500, "y": 100}]},
      {"kind": "generalization", "id": "of a", "supertypes": ["a"], "subtypes": ["x", "z"],
       "projections": [{"diagram": "d", "vertices": [[100, 400], [100, 150]]}]}
    ],
    "childPackages": [
      {"name": "P", "modelElements": [
        {"kind": "class", "id": "y", "name": "Y", "projections": [{"diagram": "d", "x": 500, "y": 600}]}]},
      {"name": "Q", "modelElements": [
        {"kind": "class", "id": "x", "name": "X", "projections": [{"diagram": "d", "x": 300, "y": 600}]},
        {"kind": "generalization", "id": "of b", "supertypes": ["b"], "subtypes": ["x", "y"],
         "projections": [{"diagram": "d", "vertices": [[500, 400], [500, 150]]}]}]},
      {"name": "R", "modelElements": [
        {"kind": "class", "id": "z", "name": "Z", "projections": [{"diagram": "d", "x": 100, "y": 600}]}]}
    ],
    "diagrams": [{"id": "d", "name": "Main", "elements": ["a", "b", "x", "y", "z", "of a", "of b"]}]
  }]
})";

TEST_F(ThereAndBack, KeepTheOrderOfSupertypesThatShareLines)
{
    folder.write("shared.model.json", sharedLines);
    run({"export", "-q", "shared.model.json", "--types", "as-is", "-o", "first.mdl"});
    ASSERT_NE(folder.read("first.mdl").find("InheritTreeView"), std::string::npos);
    EXPECT_EQ(renumbered(again("first.mdl", "second.mdl")), renumbered(folder.read("first.mdl")));
}

INSTANTIATE_TEST_SUITE_P(, Exports,
                         testing::Values("/examples/orders.model.json", "/examples/host-model.model.json",
                                         "/tests/designs/files/all-kinds.model.json",
                                         "/tests/designs/files/shop.model.json"),
                         [](const auto& instance) { return "Model" + std::to_string(instance.index); });

} // namespace
