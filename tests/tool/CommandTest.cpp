#include "CommandFixture.h"

#include <filesystem>
#include <simdjson.h>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

TEST_F(Command, EndsWithACodeAndAMessage)
{
    const struct {
        Words arguments;
        int exitCode;
        const char* message;
    } rows[] = {
        {{"export", "m.json"}, 0, "m.mdl: 2 classes, 1 diagram, "},
        {{"export", "m.json", "-q"}, 0, ""},
        {{"-h"}, 0, ""},
        {{"--version"}, 0, ""},
        {{"export", "--help"}, 0, ""},
        {{}, 2, "petal"},
        {{"exprot"}, 2, "exprot"},
        {{"export"}, 2, "MODEL"},
        {{"export", "m.json", "n.json"}, 3, "petal: n.json: No such file or directory\n"},
        {{"export", "m.json", "n.json", "-o", "x.mdl"}, 2, "x.mdl is one file for what is made of 2; a folder"},
        {{"export", "m.json", "-", "-o", "./"}, 2, "standard input has no name"},
        {{"export", "m.json", "n.json", "--report", "r"}, 2, "--report is about one model, not 2\n"},
        {{"import", "m.json", "n.json", "-o", "x"}, 2, "x is one file for what is made of 2"},
        {{"export", "m.json", "--colour"}, 2, "--colour"},
        {{"export", "m.json", "--color", "red"}, 2, "--color"},
        {{"help", "exprot"}, 2, "there is no command 'exprot'; did you mean 'export'?"},
        {{}, 2, "a command is expected; petal --help lists them\n"},
        {{"--verison"}, 2, "there is no option --verison; did you mean --version?\n"},
        {{"export", "m.json", "--type=java"}, 2, "there is no option --type; did you mean --types?\n"},
        {{"export", "m.json", "--zzz"}, 2, "there is no option --zzz\nRun 'petal export --help' for usage.\n"},
        {{"export", "m.json", "--types", "cpp"}, 2, "as-is, c++, java or oracle expected, found 'cpp'\n"},
        {{"tree", "m.mdl", "--depth", "all"}, 2, "a number of levels from 1 on expected, found 'all'\n"},
        {{"export", "m.json", "-o"}, 2, "--output"},
        {{"options", "m.json"}, 2, "m.json"},
        {{"export", "none.json"}, 3, "petal: none.json: No such file or directory\n"},
        {{"export", "."}, 3, "petal: .: Is a directory\n"},
        {{"export", "broken.json"}, 3, "broken.json:1:43: error: /types: expected a list, found an object\n"},
        {{"export", "broken.json", "-o", "new/folder/"}, 3, "broken.json:1:43: error: /types: expected"},
        {{"export", "-", "-o", "-"}, 3, "standard input:1:1: error: expected "},
        {{"export", "m.json", "-o", "none/m.mdl"}, 1, "petal: none/m.mdl: No such file or directory\n"},
        {{"export", "m.json", "-o", "/dev/full"}, 1, "petal: /dev/full: No space left on device\n"},
        {{"export", "m.json", "--log", "none/log"}, 1, "petal: none/log: No such file or directory\n"},
        {{"export", "m.json", "--log", "/dev/full"}, 1, "petal: /dev/full: No space left on device\n"},
        {{"export", "m.json", "--stats-json", "none/s"}, 1, "petal: none/s: No such file or directory\n"},
    };
    for (const auto& row : rows) {
        const ProcessResult result = run(row.arguments);
        const std::string words = testing::PrintToString(row.arguments);
        EXPECT_EQ(result.exitCode, row.exitCode) << words;
        EXPECT_THAT(result.errors, HasSubstr(row.message)) << words;
        EXPECT_EQ(result.errors.empty(), !*row.message) << words << result.errors;
        EXPECT_TRUE(result.exitCode == 0 || result.output.empty()) << words;
    }
    EXPECT_THAT(folder.names(), ElementsAre("broken.json", "m.json", "m.mdl"));
}

TEST_F(Command, NamesTheOutputAfterTheModel)
{
    const std::string expected = exported();
    EXPECT_THAT(expected, AllOf(StartsWith("\r\n(object Petal"), EndsWith("))\r\n")));
    fs::create_directory(folder / "sub");
    const struct {
        const char* model;
        const char* output;
    } rows[] = {{"n.model.json", "n.mdl"},          {"n.json", "n.mdl"},
                {"sub/n.model.json", "n.mdl"},      {"n", "n.mdl"},
                {"n.model.txt", "n.model.txt.mdl"}, {"n x.\xC3\xA9.json", "n x.\xC3\xA9.mdl"}};
    for (const auto& row : rows) {
        folder.write(row.model, sensitiveModel());
        EXPECT_EQ(run({"export", row.model}).exitCode, 0) << row.model;
        EXPECT_TRUE(isSame(folder.read(row.output), expected)) << row.model;
        fs::remove(folder / row.output);
        fs::remove(folder / row.model);
    }
    EXPECT_THAT(folder.names(), ElementsAre("broken.json", "m.json", "sub"));
    EXPECT_TRUE(isSame(run({"export", "-"}, {}, sensitiveModel()).output, expected));
    EXPECT_EQ(run({"export", "-", "-o", "x.mdl"}, {}, sensitiveModel()).output, "");
    EXPECT_TRUE(isSame(folder.read("x.mdl"), expected));
}

TEST_F(Command, TakesShortFormsOfTheBridgesOptions)
{
    const std::string x = "BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM=";
    const std::string y = "BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM=";
    const struct {
        Words shortForm;
        Words options;      // the same by the bridge's own names
        const char* marker; // what the output has only then
    } rows[] = {
        {{"--types", "java"}, {"BP_SUPPORTED_TYPES=Java"}, "\"String\""},
        {{"--types=oracle"}, {"BP_SUPPORTED_TYPES=Oracle 7.x/8"}, "\"VARCHAR2(10)\""},
        {{"--types", "JAVA"}, {"BP_SUPPORTED_TYPES=Java"}, "\"String\""},
        {{"--types", "As-Is"}, {"BP_SUPPORTED_TYPES=As is"}, "\"Label\""},
        {{"--types", "as-is"}, {"BP_SUPPORTED_TYPES=As is"}, "\"Label\""},
        {{"--foreign-keys"}, {"BP_EXPORT_FOREIGN_KEY_ATTRIBUTES=True"}, "\"owner\""},
        {{"--qualifiers"}, {"BP_GENERATE_QUALIFIERS=True"}, "\"owner\""},
        {{"--constraints"}, {"BP_SHOW_CONSTRAINTS_IN_DIAGRAMS=True"}, ""},
        {{"--no-geometry"}, {"BP_USE_GRAPHICAL_INFORMATION=False"}, ""},
        {{"--scale", "150"}, {x + "150", y + "150"}, ""},
        {{"--x-scale", "150"}, {x + "150"}, ""},
        {{"--y-scale", "150"}, {y + "150"}, ""},
        // values go through as they are
        {{"--x-scale", "120"}, {x + " 120"}, ""},
        {{"--x-scale", "120"}, {x + "120%"}, ""},
        {{"--x-scale", "120"}, {x + "120,7"}, ""},
        {{"--option", x + "0"}, {x}, ""},
        {{"--option", x + "0"}, {x + "[120,120]"}, ""},
        {{"--option", x + "0"}, {x + "\"120\""}, ""},
        {{"--option", "BP_SUPPORTED_TYPES="}, {"BP_SUPPORTED_TYPES= Java"}, ""},
        {{"--option", "BP_SUPPORTED_TYPES=Java="}, {"BP_SUPPORTED_TYPES=java"}, ""},
        // the last one holds
        {{"--types", "java", "--option", "BP_SUPPORTED_TYPES=As is"}, {"BP_SUPPORTED_TYPES=As is"}, ""},
        {{"--option", "BP_SUPPORTED_TYPES=As is", "--types", "java"}, {"BP_SUPPORTED_TYPES=Java"}, ""},
        {{"--types", "java", "--types", "oracle"}, {"BP_SUPPORTED_TYPES=Oracle 7.x/8"}, ""},
        {{"--x-scale", "50", "--scale", "200"}, {x + "200", y + "200"}, ""},
        {{"--scale", "200", "--x-scale", "50", "--y-scale", "70"}, {x + "50", y + "70"}, ""},
        {{"--option", x + "5", "--scale", "7", "--option", x + "9", "--option", y + "3"}, {x + "9", y + "3"}, ""},
        {{"--foreign-keys", "--option", "BP_EXPORT_FOREIGN_KEY_ATTRIBUTES=x", "--foreign-keys"},
         {"BP_EXPORT_FOREIGN_KEY_ATTRIBUTES=True"},
         ""},
    };
    const std::string usual = exported();
    for (const auto& row : rows) {
        Words named;
        for (const std::string& option : row.options)
            named.insert(named.end(), {"--option", option});
        const std::string output = exported(row.shortForm);
        EXPECT_TRUE(isSame(output, exported(named))) << testing::PrintToString(row.shortForm);
        EXPECT_FALSE(isSame(output, usual)) << testing::PrintToString(row.shortForm);
        EXPECT_THAT(output, HasSubstr(row.marker));
        EXPECT_TRUE(*row.marker == '\0' || usual.find(row.marker) == usual.npos) << row.marker;
    }
    EXPECT_TRUE(isSame(exported({"--types", "c++", "--scale", "100"}), usual));
    EXPECT_TRUE(isSame(exported({"--no-geometry", "--option", "BP_USE_GRAPHICAL_INFORMATION=True"}), usual));
    EXPECT_TRUE(isSame(exported({"--qualifiers", "--option", "BP_GENERATE_QUALIFIERS=true"}), usual));
}

TEST_F(Command, RefusesWhatIsNoOption)
{
    folder.write("m.mdl", "old");
    const Words names = {"BP_SUPPORTED_TYPES",
                         "BP_EXPORT_FOREIGN_KEY_ATTRIBUTES",
                         "BP_GENERATE_QUALIFIERS",
                         "BP_SHOW_CONSTRAINTS_IN_DIAGRAMS",
                         "BP_USE_GRAPHICAL_INFORMATION",
                         "BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM",
                         "BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM"};
    for (const char* const unknown : {"BP_GENERATE_QUALIFIER=True", "BP_Generate_Qualifiers=", "=x", "x=BP_FILE"}) {
        const ProcessResult result = run({"export", "m.json", "--option", unknown});
        EXPECT_EQ(result.exitCode, 2) << unknown;
        for (const std::string& name : names)
            EXPECT_THAT(result.errors, HasSubstr("  " + name + "\n"));
    }
    EXPECT_THAT(run({"export", "m.json", "--option", "BP_GENERATE_QUALIFIER=True"}).errors,
                HasSubstr("'BP_GENERATE_QUALIFIER'; did you mean BP_GENERATE_QUALIFIERS?"));
    const std::pair<const char*, const char*> bad[] = {{"--option", "BP_FILE=x.mdl"},
                                                       {"--option", "BP_GENERATE_QUALIFIERS"},
                                                       {"--option", ""},
                                                       {"--types", ""},
                                                       {"--types", "c"},
                                                       {"--scale", "0"},
                                                       {"--scale", "100001"},
                                                       {"--scale", "-5"},
                                                       {"--scale", "1.5"},
                                                       {"--scale", "x"},
                                                       {"--scale", ""},
                                                       {"--scale", "120%"},
                                                       {"--x-scale", "99999999999"},
                                                       {"--y-scale", "7 "},
                                                       {"--scale", "0x10"},
                                                       {"--scale", "1e2"}};
    for (const auto& [option, value] : bad) {
        EXPECT_EQ(run({"export", "m.json", option, value}).exitCode, 2) << option << ' ' << value;
        EXPECT_EQ(run({"export", "m.json", std::string(option) + "=" + value}).exitCode, 2) << option << '=' << value;
    }
    for (const char* const flag : {"--foreign-keys=false", "--qualifiers=0", "--constraints=x", "--no-geometry="})
        EXPECT_EQ(run({"export", "m.json", flag}).exitCode, 2) << flag;
    EXPECT_TRUE(isSame(folder.read("m.mdl"), "old"));
    EXPECT_TRUE(isSame(exported({"--scale", "010"}), exported({"--scale", "10"}))) << "percentages are decimal";
}

TEST_F(Command, KeepsALog)
{
    const std::string elements = "writing classes\nwriting associations\n";
    const std::string diagrams = "writing diagrams\n";
    const std::string lines = "writing package 'Logical View'\n" + elements + "writing package 'Sales'\n" + elements +
                              diagrams + "writing package 'a\\n\\\\'\n" + elements + diagrams + diagrams;
    folder.write("log", std::string(10'000, 'x'));
    EXPECT_EQ(run({"export", "m.json", "--log", "log", "-q"}).errors, "");
    EXPECT_EQ(folder.read("log"), lines);
    EXPECT_EQ(run({"export", "m.json", "--log", "-", "-q"}).errors, lines);
    EXPECT_EQ(run({"export", "broken.json", "--log", "log"}).exitCode, 3);
    EXPECT_EQ(folder.read("log"), lines) << "which begins anew only when the model has been read";
}

TEST_F(Command, SaysWhatTheExportCost)
{
    const std::string output = exported();
    EXPECT_EQ(run({"export", "m.json", "--stats-json", "s.json", "-q"}).errors, "");
    simdjson::dom::parser parser;
    const simdjson::dom::element statistics = parser.parse(folder.read("s.json")).value();
    for (const char* const stage : {"load", "number", "write"}) {
        const simdjson::dom::element cost = statistics[stage].value();
        EXPECT_GE(cost["seconds"].get_double().value(), 0) << stage;
        EXPECT_EQ(cost["bytes"].get_uint64().value(), *stage == 'w' ? output.size() : sensitiveModel().size()) << stage;
        EXPECT_EQ(cost["objects"].get_uint64().value(), 13U) << stage;
    }
    EXPECT_GT(statistics["peak_memory_bytes"].get_uint64().value(), 100'000U);
    EXPECT_THAT(run({"export", "m.json", "--stats-json", "-"}).output,
                AllOf(StartsWith("{\"load\":"), EndsWith("}\n")));
    EXPECT_EQ(run({"export", "m.json", "--stats-json", "-", "-o", "-"}).exitCode, 2);
    EXPECT_THAT(run({"export", "m.json", "--stats"}).errors,
                testing::MatchesRegex("m.mdl: .*\nload +[0-9.]+ s .*\nnumber +.*\nwrite +.*\nmemory +[0-9.]+ MB.*\n"));
    EXPECT_EQ(run({"export", "m.json", "--stats", "-q"}).errors, "");
}

TEST_F(Command, ListsTheOptions)
{
    simdjson::dom::parser parser;
    const std::string text = run({"options"}).output;
    std::string summary;
    const std::string listed = run({"options", "--json"}).output;
    const simdjson::dom::array options = parser.parse(listed).get_array().value();
    for (const simdjson::dom::element option : options) {
        const auto textOf = [&](const char* key) { return std::string(option[key].get_string().value()); };
        summary += textOf("name").substr(0, 20) + "|" + textOf("kind") + "|" + textOf("default") + "|" +
                   simdjson::minify(option["literals"].value()) + simdjson::minify(option["extensions"].value()) + "\n";
        EXPECT_THAT(text,
                    AllOf(HasSubstr(textOf("name")), HasSubstr(textOf("description")), HasSubstr(textOf("kind"))));
        const simdjson::dom::array literals = option["literals"].get_array().value();
        for (const simdjson::dom::element literal : literals)
            EXPECT_THAT(text, HasSubstr(std::string(literal.get_string().value())));
    }
    EXPECT_EQ(summary, json("BP_FILE|output file||[]['mdl']\n"
                            "BP_SUPPORTED_TYPES|enumeration|C++|['As is','C++','Java','Oracle 7.x/8'][]\n"
                            "BP_EXPORT_FOREIGN_KE|boolean|False|['True','False'][]\n"
                            "BP_GENERATE_QUALIFIE|boolean|False|['True','False'][]\n"
                            "BP_SHOW_CONSTRAINTS_|boolean|False|['True','False'][]\n"
                            "BP_USE_GRAPHICAL_INF|boolean|True|['True','False'][]\n"
                            "BP_X_SCALE__IN____FO|integer percent|100|[][]\n"
                            "BP_Y_SCALE__IN____FO|integer percent|100|[][]\n"));
}

} // namespace
