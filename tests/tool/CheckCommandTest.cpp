#include "support/Process.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <simdjson.h>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using Words = std::vector<std::string>;

constexpr const char* header = "\n(object Petal\n    version \t42\n    charSet \t0)\n\n";

std::string model(const std::string& body)
{
    return std::string(header).append("(object Design \"Logical View\"\n").append(body).append(")\n");
}

class ReadCommands : public testing::Test {
protected:
    ReadCommands()
    {
        folder.write("fine.mdl", model("a 1"));
        folder.write("broken.mdl", model("a \"open"));
        folder.write("twice.mdl", model("u (object Class \"A\"\nquid \"3ABD90E80066\")\n"
                                        "v (object Class \"B\"\nquid \"3ABD90E80066\")"));
        folder.write("noted.mdl", model("a \"\\x\""));
        folder.write("other.txt", "{}");
        folder.write(
            "unit.mdl",
            model("u (object Class_Category \"U\"\nis_unit TRUE\nquid \"3ABD90E80066\"\nfile_name \"$LIB\\\\u.cat\")"));
        fs::create_directory(folder.path() / "lib");
        folder.write("lib/U.cat", std::string(header) + "(object Class_Category \"U\"\nquid \"3ABD90E80066\"\n"
                                                        "logical_models (list l\n(object Class \"\xc4\"\n"
                                                        "quid \"3ABD90E80067\")))");
    }

    [[nodiscard]] ProcessResult run(const Words& arguments, const std::string& input = "") const
    {
        return runProcess({PETAL_COMMAND, arguments, folder.path(), input, {}});
    }

    TemporaryFolder folder;
};

TEST_F(ReadCommands, EndWithACodeAndAMessage)
{
    const struct {
        Words arguments;
        int exitCode;
        const char* output;
        const char* errors;
    } rows[] = {
        {{"check", "fine.mdl"}, 0, "", "fine.mdl: 0 errors, 0 warnings\n"},
        {{"check", "noted.mdl"}, 0, "", "noted.mdl: 0 errors, 0 warnings; 1 note (see: --notes)\n"},
        {{"check", "noted.mdl", "--fail-on", "note"}, 1, "", "1 note (see: --notes)\n"},
        {{"check", "noted.mdl", "--fail-on", "fault"}, 2, "", "--fail-on"},
        {{"check", "broken.mdl", "--fail-on", "error"}, 1, "error: ", "broken.mdl: 1 error, 0 warnings\n"},
        {{"check", "twice.mdl"}, 1, "warning: ", "twice.mdl: 0 errors, 1 warning\n"},
        {{"check", "twice.mdl", "--fail-on=error"}, 0, "warning: ", "twice.mdl: 0 errors, 1 warning\n"},
        {{"check", "twice.mdl", "broken.mdl", "other.txt"}, 3, "warning: ", "2 files: 1 error, 1 warning\n"},
        {{"check", "noted.mdl", "--notes"}, 0, "noted.mdl:7:3: note: ", ""},
        {{"check", "fine.mdl", "broken.mdl"}, 1, "broken.mdl:7:3: error: expected a second \"", ""},
        {{"check", "broken.mdl", "other.txt"}, 3, "broken.mdl:7:3: error: ", "petal: other.txt: no petal file"},
        {{"check", "none.mdl"}, 3, "", "petal: none.mdl: No such file or directory\n"},
        {{"check", "-"}, 3, "", "petal: standard input: no petal file: it is empty\n"},
        {{"check", "unit.mdl"}, 0, "warning: ", "unit.mdl: 0 errors, 1 warning\n"},
        {{"check", "unit.mdl", "--fail-on", "note"}, 1, "$LIB\\u.cat", ""},
        {{"check", "unit.mdl", "--no-units"}, 0, "", ""},
        {{"check", "unit.mdl", "--path", "LIB=lib"}, 0, "", ""},
        {{"check", "unit.mdl", "--path=$lib=lib"}, 0, "", ""},
        {{"check", "fine.mdl", "--path", "lib"}, 2, "", "NAME=DIR expected, found 'lib'"},
        {{"check", "fine.mdl", "--charset", "none"}, 2, "", "there is no charset 'none'"},
        {{"check"}, 2, "", "FILE"},
        {{"tree", "fine.mdl", "--depth", "0"}, 2, "", "--depth"},
        {{"tree", "other.txt"}, 3, "", "petal: other.txt: no petal file"},
        {{"tree", "unit.mdl", "other.txt", "fine.mdl", "--no-units"}, 3, "unit.mdl:\npackage U", "no petal file"},
        {{"tree", "other.txt", "fine.mdl"}, 3, "\nfine.mdl:\n", "no petal file"},
        {{"tree", "broken.mdl"}, 0, "", "broken.mdl:7:3: error: expected a second \""},
        {{"tree", "unit.mdl", "--path", "LIB=lib"}, 0, "package U\n  class Ä\n", ""},
        {{"tree", "unit.mdl", "--path", "LIB=lib", "--charset", "CP1251"}, 0, "package U\n  class Д\n", ""},
        {{"tree", "unit.mdl"}, 0, "package U [not loaded: $LIB\\u.cat]\n", ""},
    };
    for (const auto& row : rows) {
        const ProcessResult result = run(row.arguments);
        EXPECT_EQ(result.exitCode, row.exitCode) << testing::PrintToString(row.arguments);
        EXPECT_THAT(result.output, HasSubstr(row.output)) << testing::PrintToString(row.arguments);
        EXPECT_THAT(result.errors, HasSubstr(row.errors)) << testing::PrintToString(row.arguments);
        EXPECT_EQ(result.output.empty(), !*row.output) << result.output << testing::PrintToString(row.arguments);
    }
    EXPECT_EQ(run({"check", "-q", "broken.mdl"}).errors, "");
    EXPECT_EQ(run({"check", "--json", "broken.mdl"}).errors, "");
}

TEST_F(ReadCommands, FindNothingInWhatTheExportWrites)
{
    for (const auto& example : fs::directory_iterator(PETAL_SOURCE_DIR "/examples")) {
        if (!example.path().string().ends_with(".model.json"))
            continue;
        const ProcessResult exported = run({"export", example.path().string(), "-o", "-"});
        const ProcessResult checked = run({"check", "-"}, exported.output);
        EXPECT_EQ(checked.exitCode, 0) << example.path();
        EXPECT_EQ(checked.output, "") << example.path();
        EXPECT_THAT(run({"tree", "-", "--depth", "1"}, exported.output).output,
                    "Use Case View\nLogical View\nComponent View\nDeployment View\n");
    }
}

TEST_F(ReadCommands, SayTheSameAsJson)
{
    const ProcessResult result = run({"check", "--json", "--notes", "broken.mdl", "other.txt"});
    EXPECT_EQ(result.exitCode, 3);
    simdjson::dom::parser parser;
    const simdjson::dom::element json = parser.parse(result.output);
    const simdjson::dom::element first = json["models"].at(0);
    EXPECT_EQ(std::string_view(first["files"].at(0)["encoding"]), "CP1252");
    EXPECT_EQ(std::int64_t(first["files"].at(0)["petal"]), 42);
    EXPECT_EQ(std::int64_t(first["objects"]), 2);
    EXPECT_EQ(std::string_view(first["findings"].at(0)["kind"]), "syntax");
    EXPECT_EQ(std::int64_t(first["findings"].at(0)["line"]), 7);
    EXPECT_THAT(std::string(std::string_view(json["models"].at(1)["error"])), HasSubstr("no petal file"));
}

TEST_F(ReadCommands, PrintAnOutline)
{
    const std::string text = model(R"(root_usecase_package (object Class_Category "Use Case View"
logical_models (list l
(object UseCase "Order goods" stereotype "top" statemachine (object State_Machine statediagrams (list l
(object State_Diagram "States"))))))
root_category (object Class_Category "Logical View"
logical_models (list l
(object Class "A" quid "3ABD90E80061" stereotype "entity" class_attributes (list l (object ClassAttribute "x")))
(object Class "Evil)"
                                   "\x1b"
                                   R"([31m")
(object Association "$UNNAMED$0" roles (list l
(object Role "a" supplier "Logical View::A" quidu "3ABD90E80061") (object Role "b" supplier "Logical View::Gone"))))
logical_presentations (list l
(object ClassDiagram "Main" items (list diagram_item_list (object ClassView "Class" "Logical View::A" @1)))))
root_subsystem (object SubSystem "Component View"
physical_models (list l (object module "Part")))
process_structure (object Processes
ProcsNDevs (list (object Processor "Server") (object Process_Diagram "Deployment View"))))");
    EXPECT_EQ(run({"tree", "-"}, text).output, R"(Use Case View
  use case Order goods <<top>>
    state diagram States
Logical View
  class A <<entity>>
  class Evil?[31m
  association (A -- Gone)
  class diagram Main
Component View
  component Part
Deployment View
  processor Server
  deployment diagram Deployment View
)");
}

} // namespace
