#include "kiv/KivModelFile.h"

#include "plugin/support/ModelBuilder.h"

#include <filesystem>
#include <set>

// Every example in every type system, against the files that scripts/update-golden wrote.

namespace {

namespace fs = std::filesystem;

constexpr std::string_view modelEnding = ".model.json";

std::string contentOf(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::set<std::string> namesIn(const fs::path& folder, std::string_view ending)
{
    std::set<std::string> names;
    std::error_code none;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, none))
        if (const std::string name = entry.path().filename().string(); name.ends_with(ending))
            names.insert(name.substr(0, name.size() - ending.size()));
    return names;
}

std::string_view firstLine(std::string_view text)
{
    const std::size_t end = text.find('\n');
    return text.substr(0, end == std::string_view::npos ? end : end + 1);
}

// Says where two texts part, or nothing when they do not.
std::string firstDifference(std::string_view expected, std::string_view actual)
{
    int number = 1;
    for (; expected != actual && firstLine(expected) == firstLine(actual); ++number) {
        expected.remove_prefix(firstLine(expected).size());
        actual.remove_prefix(firstLine(actual).size());
    }
    return expected == actual
               ? ""
               : "line " + std::to_string(number) + " is " + testing::PrintToString(std::string(firstLine(actual))) +
                     " instead of " + testing::PrintToString(std::string(firstLine(expected)));
}

} // namespace

TEST(Golden, Examples)
{
    const std::pair<const char*, const KivOptionEnumLiteral&> systems[] = {
        {"as-is", BP_SUPPORTED_TYPES_ENUM_AS_IS},
        {"c++", BP_SUPPORTED_TYPES_ENUM_C__},
        {"java", BP_SUPPORTED_TYPES_ENUM_JAVA},
        {"oracle", BP_SUPPORTED_TYPES_ENUM_ORACLE_7_X___8},
    };
    const fs::path golden = PETAL_GOLDEN;
    std::set<std::string> left = namesIn(golden, ".mdl");
    const std::set<std::string> examples = namesIn(PETAL_EXAMPLES, modelEnding);
    EXPECT_FALSE(examples.empty());
    for (const std::string& example : examples)
        for (const auto& [word, system] : systems) {
            const std::string name = example + "." + word;
            if (left.erase(name) == 0) {
                ADD_FAILURE() << "tests/golden/" << name << ".mdl is missing; scripts/update-golden writes it";
                continue;
            }
            const LoadedModel loaded = loadModel(PETAL_EXAMPLES "/" + example + std::string(modelEnding));
            const std::string file = exportedFile(*loaded.model, {{BP_SUPPORTED_TYPES, system.getText()}});
            EXPECT_EQ(firstDifference(contentOf(golden / (name + ".mdl")), file), "") << name;
        }
    for (const std::string& name : left)
        ADD_FAILURE() << "tests/golden/" << name << ".mdl has no example";
}
