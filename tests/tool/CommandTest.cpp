#include "support/ModelTexts.h"
#include "support/Process.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <random>
#include <simdjson.h>
#include <sstream>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using Words = std::vector<std::string>;

// A model in which every option of the export makes a difference.
std::string sensitiveModel()
{
    const std::string place = "'projections':[{'diagram':'d','x':100,'y':200,'width':70,'height':50";
    return model(
        "'types':[{'id':'t','name':'Label','dataType':'VARCHAR','length':10}],'childPackages':[{'name':'Sales',"
        "'modelElements':[{'kind':'class','id':'a','name':'Customer','attributes':[{'id':'x','name':'owner','type':'t'}"
        ","
        "{'name':'title','type':'t'}],'keys':[{'id':'k','kind':'foreignKey','attributes':['x']}]," +
        place + "}]},{'kind':'class','id':'b','name':'Order'," + place +
        "}]},{'kind':'association','id':'s','name':'places','constraint':'{ordered}'," + place +
        ",'vertices':'(10,20)\\r\\n(90,80)'}],'roles':[{'participant':'a','key':'k'," + place +
        ",'vertices':''}]},{'participant':'b'," + place +
        ",'vertices':''}]}]}],'diagrams':[{'id':'d','name':'Main','elements':"
        "['a','b','s']}]},{'name':'a\\n\\\\'}]");
}

// Says where two long texts differ instead of showing them.
testing::AssertionResult isSame(const std::string& text, const std::string& expected)
{
    const auto at = std::mismatch(text.begin(), text.end(), expected.begin(), expected.end()).first - text.begin();
    return (text == expected ? testing::AssertionSuccess() : testing::AssertionFailure())
           << text.size() << " bytes, expected " << expected.size() << ", different from byte " << at << " on";
}

class Command : public testing::Test {
protected:
    Command()
    {
        folder.write("m.json", sensitiveModel());
        folder.write("broken.json", model("'types':{}"));
    }

    [[nodiscard]] ProcessResult run(const Words& arguments, const std::function<void()>& prepare = {},
                                    const std::string& input = "") const
    {
        return runProcess({PETAL_COMMAND, arguments, folder.path(), input, prepare});
    }
    // The bytes that the export of the model with these options gives.
    [[nodiscard]] std::string exported(const Words& options = {}) const
    {
        Words arguments = {"export", "m.json", "-o", "-"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const ProcessResult result = run(arguments);
        EXPECT_EQ(result.exitCode, 0) << testing::PrintToString(options) << result.errors;
        EXPECT_EQ(result.errors, "");
        return result.output;
    }

    TemporaryFolder folder;
};

TEST_F(Command, EndsWithACodeAndAMessage)
{
    const struct {
        Words arguments;
        int exitCode;
        const char* message;
    } rows[] = {
        {{"export", "m.json"}, 0, ""},
        {{"-h"}, 0, ""},
        {{"--version"}, 0, ""},
        {{"export", "--help"}, 0, ""},
        {{}, 2, "petal"},
        {{"exprot"}, 2, "exprot"},
        {{"export"}, 2, "MODEL"},
        {{"export", "m.json", "n.json"}, 2, "n.json"},
        {{"export", "m.json", "--colour"}, 2, "--colour"},
        {{"export", "m.json", "-o"}, 2, "--output"},
        {{"options", "m.json"}, 2, "m.json"},
        {{"export", "none.json"}, 3, "petal: none.json: No such file or directory\n"},
        {{"export", "."}, 3, "petal: .: Is a directory\n"},
        {{"export", "broken.json"}, 3, "petal: broken.json:/types: expected a list, found an object\n"},
        {{"export", "-", "-o", "-"}, 3, "petal: standard input:1:1: expected "},
        {{"export", "m.json", "-o", "none/m.mdl"}, 1, "petal: none/m.mdl: No such file or directory\n"},
        {{"export", "m.json", "-o", "."}, 1, "petal: .: Is a directory\n"},
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
        EXPECT_EQ(result.errors.empty(), row.exitCode == 0) << words;
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
                                                       {"--types", "JAVA"},
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
    EXPECT_EQ(run({"export", "m.json", "--log", "log"}).errors, "");
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
                testing::MatchesRegex("load +[0-9.]+ s .*\nnumber +.*\nwrite +.*\nmemory +[0-9.]+ MB.*\n"));
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

// --- the output is complete or untouched ---

void limitFileSize(rlim_t bytes)
{
    const rlimit limit = {bytes, bytes};
    setrlimit(RLIMIT_FSIZE, &limit);
}

mode_t modeOf(const std::string& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

TEST_F(Command, LeavesTheTargetAloneWhenItFails)
{
    const std::size_t size = exported().size();
    const struct {
        Words arguments;
        rlim_t most; // bytes that a file can have
        int exitCode;
        const char* message;
    } rows[] = {
        {{"export", "broken.json"}, RLIM_INFINITY, 3, "broken.json:/types"},
        {{"export", "none.json"}, RLIM_INFINITY, 3, "none.json"},
        {{"export", "m.json", "--log", "/dev/full"}, RLIM_INFINITY, 1, "/dev/full: No space left on device"},
        {{"export", "m.json", "--log", "sub"}, RLIM_INFINITY, 1, "sub: Is a directory"},
        {{"export", "m.json", "--stats-json", "sub"}, RLIM_INFINITY, 1, "sub: Is a directory"},
        {{"export", "m.json"}, 0, 1, "target: File too large"},
        {{"export", "m.json"}, 1000, 1, "target: File too large"},
        {{"export", "m.json"}, size - 1, 1, "target: File too large"},
    };
    fs::create_directory(folder / "sub");
    folder.write("target", "old");
    const Words names = folder.names();
    for (const auto& row : rows) {
        Words arguments = row.arguments;
        arguments.insert(arguments.end(), {"-o", "target"});
        const ProcessResult result = run(arguments, [&] { limitFileSize(row.most); });
        const std::string words = testing::PrintToString(row.arguments) + " up to " + std::to_string(row.most);
        EXPECT_EQ(result.exitCode, row.exitCode) << words;
        EXPECT_THAT(result.errors, AllOf(StartsWith("petal: "), HasSubstr(row.message))) << words;
        EXPECT_TRUE(isSame(folder.read("target"), "old")) << words;
        EXPECT_EQ(folder.names(), names) << words;
    }
    EXPECT_EQ(run({"export", "m.json", "-o", "target"}, [&] { limitFileSize(size); }).exitCode, 0);
    EXPECT_EQ(folder.read("target").size(), size);
}

TEST_F(Command, FollowsLinksAndKeepsModes)
{
    const std::string expected = exported();
    fs::create_directory(folder / "sub");
    folder.write("sub/real.mdl", "old");
    chmod((folder / "sub/real.mdl").c_str(), 0640);
    fs::create_symlink("real.mdl", folder / "sub/link");
    fs::create_symlink("sub/link", folder / "link");
    fs::create_symlink("sub/new.mdl", folder / "dangling");
    fs::create_symlink("loop", folder / "loop");
    fs::create_symlink("none/new.mdl", folder / "nowhere");
    for (const char* const link : {"link", "dangling"})
        EXPECT_EQ(run({"export", "m.json", "-o", link}, [] { umask(027); }).exitCode, 0) << link;
    for (const char* const file : {"sub/real.mdl", "sub/new.mdl"}) {
        EXPECT_TRUE(isSame(folder.read(file), expected)) << file;
        EXPECT_EQ(modeOf(folder / file), 0640U) << file;
    }
    for (const char* const link : {"loop", "nowhere"})
        EXPECT_EQ(run({"export", "m.json", "-o", link}).exitCode, 1) << link;
    for (const char* const link : {"link", "sub/link", "dangling", "loop", "nowhere"})
        EXPECT_TRUE(fs::is_symlink(folder / link)) << link;
    EXPECT_EQ(run({"export", "m.json", "-o", "plain.mdl"}, [] { umask(0); }).exitCode, 0);
    EXPECT_EQ(modeOf(folder / "plain.mdl"), 0666U);
    chmod((folder / "plain.mdl").c_str(), 04751);
    EXPECT_EQ(run({"export", "m.json", "-o", "plain.mdl"}, [] { umask(077); }).exitCode, 0);
    EXPECT_EQ(modeOf(folder / "plain.mdl"), 04751U);
    EXPECT_THAT(folder.names(),
                ElementsAre("broken.json", "dangling", "link", "loop", "m.json", "nowhere", "plain.mdl", "sub"));
}

TEST_F(Command, WritesToPipes)
{
    const std::string expected = exported();
    mkfifo((folder / "pipe").c_str(), 0600);
    Process reader({"/bin/cat", {"pipe"}, folder.path()});
    EXPECT_EQ(run({"export", "m.json", "-o", "pipe"}).exitCode, 0);
    EXPECT_TRUE(isSame(reader.wait().output, expected));
    EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
    for (const char* const pipe : {"/dev/stdout", "/proc/self/fd/1", "/dev/fd/1"}) {
        const ProcessResult result = run({"export", "m.json", "-o", pipe});
        EXPECT_TRUE(isSame(result.output, expected)) << pipe << result.errors;
    }
    const ProcessResult broken = run({"export", "m.json", "-o", "-"}, [] {
        int ends[2];
        if (pipe(ends) == 0 && dup2(ends[1], STDOUT_FILENO) >= 0)
            close(ends[0]);
    });
    EXPECT_EQ(broken.exitCode, 1);
    EXPECT_THAT(broken.errors, HasSubstr("Broken pipe"));
    EXPECT_THAT(folder.names(), ElementsAre("broken.json", "m.json", "pipe"));
}

TEST_F(Command, TakesNoFileForAClosedStream)
{
    // Enough packages for the log to reach the file while the export still writes it.
    std::string packages = "{'name':'p0'}";
    for (int i = 1; i < 3000; ++i)
        packages.append(",{'name':'p").append(std::to_string(i)).append("'}");
    folder.write("m.json", model("'childPackages':[" + packages + "]"));
    const std::string expected = exported();
    EXPECT_EQ(run({"export", "m.json", "-o", "-"}, [] { close(STDOUT_FILENO); }).exitCode, 1);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        (void)run({"export", "m.json", "-o", "x.mdl", "--log", "-", "--stats"}, [=] { close(stream); });
        EXPECT_TRUE(isSame(folder.read("x.mdl"), expected)) << "without stream " << stream;
    }
}

TEST_F(Command, RefusesToOverwriteItsOwnFiles)
{
    fs::create_symlink("m.json", folder / "link");
    fs::create_hard_link(folder / "m.json", folder / "twin");
    fs::create_directory(folder / "sub");
    const Words rows[] = {{"-o", "m.json"},
                          {"-o", "./sub/../m.json"},
                          {"-o", folder / "m.json"},
                          {"-o", "link"},
                          {"-o", "twin"},
                          {"--log", "m.json"},
                          {"--stats-json", "link"},
                          {"-o", "x", "--log", "./x"},
                          {"-o", "x", "--stats-json", "sub/../x"},
                          {"-o", "x", "--log", "y", "--stats-json", "y"}};
    const Words names = folder.names();
    for (const Words& row : rows) {
        Words arguments = {"export", "m.json"};
        arguments.insert(arguments.end(), row.begin(), row.end());
        const ProcessResult result = run(arguments);
        EXPECT_EQ(result.exitCode, 2) << testing::PrintToString(row);
        EXPECT_THAT(result.errors, HasSubstr("would overwrite")) << testing::PrintToString(row);
        EXPECT_EQ(folder.names(), names) << testing::PrintToString(row);
        fs::remove(folder / "x");
    }
    EXPECT_EQ(folder.read("m.json"), sensitiveModel());
}

// A model whose export takes so much longer than the start of the command that most signals arrive in between.
std::string slowModel(const std::function<double(const std::string&)>& secondsFor)
{
    std::string classes = "{'kind':'class','name':'c','attributes':[{'name':'a'},{'name':'b'}]}";
    const double start = secondsFor(model(""));
    while (secondsFor(model("'childPackages':[{'modelElements':[" + classes + "]}]")) < start + 0.02) {
        const std::string half = classes;
        classes.append(",").append(half);
    }
    return model("'childPackages':[{'modelElements':[" + classes + "]}]");
}

TEST_F(Command, LeavesTheOldOrTheNewFileWhenASignalEndsIt)
{
    using Clock = std::chrono::steady_clock;
    using Seconds = std::chrono::duration<double>;
    double duration = 0;
    folder.write("m.json", slowModel([&](const std::string& text) {
                     folder.write("m.json", text);
                     const auto start = Clock::now();
                     EXPECT_EQ(run({"export", "m.json", "-o", "m.mdl"}).exitCode, 0);
                     return duration = Seconds(Clock::now() - start).count();
                 }));
    const Words names = folder.names();
    const std::string contents[] = {folder.read("m.mdl"), exported({"--types", "java"})};
    std::size_t now = 0; // which of the two stands in the file
    std::mt19937 random(1);
    int endedBySignal = 0;
    for (int round = 0; round < 240; ++round) {
        const int signals[] = {SIGINT, SIGTERM, SIGHUP, SIGKILL};
        const int signal = signals[round % 4];
        SCOPED_TRACE(testing::Message() << "round " << round << ", signal " << signal);
        Process command(
            {PETAL_COMMAND, {"export", "m.json", "-o", "m.mdl", "--types", now == 0 ? "java" : "c++"}, folder.path()});
        std::this_thread::sleep_for(Seconds(std::uniform_real_distribution(0.0, 1.2 * duration)(random)));
        command.kill(signal);
        const ProcessResult result = command.wait();
        ASSERT_TRUE(result.signal == signal || result.exitCode == 0) << result.exitCode << result.errors;
        endedBySignal += result.signal == signal ? 1 : 0;
        const std::string content = folder.read("m.mdl");
        if (result.exitCode == 0 || content != contents[now])
            now = 1 - now;
        ASSERT_TRUE(isSame(content, contents[now]));
        ASSERT_TRUE(signal == SIGKILL || folder.names() == names) << testing::PrintToString(folder.names());
        for (const std::string& name : folder.names())
            if (name.starts_with(".petal-"))
                fs::remove(folder / name);
        ASSERT_EQ(folder.names(), names);
    }
    EXPECT_GT(endedBySignal, 20) << "too few for the test to mean anything";
}

} // namespace
