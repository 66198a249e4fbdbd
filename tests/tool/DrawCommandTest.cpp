#include "support/Process.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;
using Words = std::vector<std::string>;

std::string diagram(const std::string& kind, const std::string& name)
{
    return "(object " + kind + " \"" + name +
           "\" items (list diagram_item_list (object ClassView \"Class\" \"A\" @1 location (9, 9))))\n";
}

class DrawCommand : public testing::Test {
protected:
    DrawCommand()
    {
        const std::string start =
            "\n(object Petal\n version 42\n charSet 0)\n(object Design \"Logical View\"\n"
            "root_category (object Class_Category \"Logical View\" logical_presentations (list l\n";
        folder.write("two.mdl", start + diagram("ClassDiagram", "Main") + diagram("Tier_Diagram", "Tiers") + ")))");
        folder.write("none.mdl", start + ")))");
        const std::string empty = "(object ClassDiagram \"Empty\" items (list diagram_item_list))\n";
        folder.write("empty.mdl", start + empty + ")))");
        folder.write("some.mdl", start + empty + diagram("ClassDiagram", "Main") + ")))");
        folder.write("names.mdl", start + diagram("ClassDiagram", "Main") + diagram("ClassDiagram", "MAIN") +
                                      diagram("UseCaseDiagram", "main") + diagram("ClassDiagram", "Main") +
                                      diagram("ClassDiagram", "Main") + diagram("ClassDiagram", "") +
                                      diagram("ClassDiagram", "../../etc/x") + diagram("ClassDiagram", "..") +
                                      diagram("ClassDiagram", "a\x01 ") + diagram("ClassDiagram", "Nul") +
                                      diagram("ClassDiagram", std::string(300, 'n')) + ")))");
        folder.write("mains.mdl",
                     start + "(object ClassDiagram \"Main\" items (list diagram_item_list))" +
                         diagram("UseCaseDiagram", "main") +
                         ") logical_models (list m (object Class_Category \"Sales\" logical_presentations (list l\n" +
                         diagram("ClassDiagram", "Main") + diagram("ClassDiagram", "Other") + ")))))");
        folder.write("other.txt", "{}");
        folder.write("kept.svg", "as it was");
    }

    [[nodiscard]] ProcessResult run(const Words& arguments, const std::string& input = "") const
    {
        Words all = {"draw"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return runProcess({PETAL_COMMAND, all, folder.path(), input, {}});
    }

    [[nodiscard]] std::set<std::string> namesIn(const std::string& name) const
    {
        std::set<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(folder.path() / name))
            names.insert(entry.path().filename().string());
        return names;
    }

    TemporaryFolder folder;
};

TEST_F(DrawCommand, EndsWithACodeAndAMessage)
{
    const struct {
        Words arguments;
        int exitCode;
        const char* output;
        const char* errors;
    } rows[] = {
        {{"two.mdl", "--list"}, 0, "class\tLogical View::Main\nthree-tier\tLogical View::Tiers\n", ""},
        {{"two.mdl", "--diagram", "Main", "-o", "-"}, 0, "<svg ", ""},
        {{"two.mdl", "--diagram", "Logical View::Tiers", "-o", "-", "--format", "pdf"}, 0, "%PDF", ""},
        {{"two.mdl", "--diagram", "Main", "-o", "main.PNG"}, 0, "", "main.PNG: 1 picture, "},
        {{"two.mdl", "--diagram", "Main", "-o", "main.png", "-q"}, 0, "", ""},
        {{"empty.mdl", "--list"}, 0, "class\tLogical View::Empty\n", ""},
        {{"two.mdl", "empty.mdl", "--list", "-q"}, 0, "two.mdl\tclass\tLogical View::Main\ntwo.mdl\t", ""},
        {{"empty.mdl"}, 0, "", "petal: empty.mdl: there are no diagrams in it but empty ones\n"},
        {{"empty.mdl", "--diagram", "Empty", "-o", "-"}, 0, "<svg ", ""},
        {{"some.mdl", "-o", "some/"}, 0, "", "some/: 1 picture, "},
        {{"some.mdl", "-o", "some"}, 0, "", "; left out: 1 empty diagram\n"},
        {{"two.mdl", "-o", "x.jpg"}, 2, "", "petal: x.jpg: a picture ends in .svg, .png or .pdf, the name of a folder"},
        {{"two.mdl", "-o", "x.jpg/", "-q"}, 0, "", ""},
        {{"two.mdl", "-o", "x.jpg", "-q"}, 0, "", ""},
        {{"two.mdl", "some.mdl", "-o", "x.svg"}, 2, "", "x.svg is one file for the pictures of 2; a folder takes them"},
        {{"two.mdl", "x.jpg/two.mdl"}, 2, "", "what is made of another file goes into the folder 'two' already"},
        {{"two.mdl", "--json"}, 2, "", "--list"},
        {{"two.mdl", "-o", "-"}, 2, "", "standard output takes one diagram, not 2; name it with --diagram"},
        {{"two.mdl", "-o", "kept.svg"}, 2, "", "kept.svg takes one diagram, not 2"},
        {{"names.mdl", "--diagram", "Main", "-o", "kept.svg"},
         2,
         "",
         "kept.svg takes one diagram, not 3; name it with --diagram:\n  Logical View::Main\n"},
        {{"mains.mdl", "--diagram", "Main", "-o", "the-one-that-is-not-empty.svg"}, 0, "", ": 1 picture, "},
        {{"mains.mdl", "--diagram", "Sales::Main", "-o", "-"}, 0, "<svg ", ""},
        {{"mains.mdl", "--diagram", "ales::Main"}, 2, "", "there is no diagram 'ales::Main'"},
        {{"two.mdl", "--diagram", "Mian"}, 2, "", "there is no diagram 'Mian'; did you mean 'Main'?"},
        {{"two.mdl", "--format", "gif"}, 2, "", "svg, png or pdf expected, found 'gif'"},
        {{"two.mdl", "--diagram", "Main", "-o", "other.txt/x"}, 1, "", "petal: other.txt/x"},
        {{"none.mdl"}, 0, "", "petal: none.mdl: there are no diagrams in it"},
        {{"other.txt"}, 3, "", "petal: other.txt: no petal file"},
        {{"missing.mdl"}, 3, "", "petal: missing.mdl: No such file"},
        {{"-"}, 3, "", "petal: standard input: no petal file"},
    };
    for (const auto& row : rows) {
        const ProcessResult result = run(row.arguments);
        EXPECT_EQ(result.exitCode, row.exitCode) << testing::PrintToString(row.arguments) << result.errors;
        EXPECT_THAT(result.output, StartsWith(row.output)) << testing::PrintToString(row.arguments);
        EXPECT_THAT(result.errors, HasSubstr(row.errors)) << testing::PrintToString(row.arguments);
        EXPECT_EQ(result.output.empty(), !*row.output) << testing::PrintToString(row.arguments);
        EXPECT_EQ(result.errors.empty(), !*row.errors) << result.errors << testing::PrintToString(row.arguments);
    }
    EXPECT_EQ(folder.read("kept.svg"), "as it was");
    EXPECT_THAT(folder.read("main.PNG"), StartsWith("\x89PNG"));
}

TEST_F(DrawCommand, MakesNamesThatAreSafeAndDiffer)
{
    EXPECT_EQ(run({"names.mdl", "-o", "pictures"}).exitCode, 0);
    EXPECT_EQ(
        namesIn("pictures"),
        (std::set<std::string>{"Main.svg", "MAIN (class).svg", "main (use case).svg", "Main (Logical View).svg",
                               "Main (Logical View) 2.svg", "class diagram.svg", "_.._.._etc_x.svg",
                               "class diagram (class).svg", "a.svg", "_Nul.svg", std::string(100, 'n') + ".svg"}));
}

TEST_F(DrawCommand, DrawsWhatTheExportWrites)
{
    const ProcessResult exported = runProcess(
        {PETAL_COMMAND, {"export", PETAL_SOURCE_DIR "/examples/orders.model.json", "-o", "-"}, folder.path(), "", {}});
    const ProcessResult drawn = run({"-", "-o", "pictures"}, exported.output);
    EXPECT_EQ(drawn.exitCode, 0);
    EXPECT_THAT(drawn.errors, testing::MatchesRegex("pictures/: 6 pictures, [0-9]+ kB; left out: 3 empty diagrams\n"));
    EXPECT_EQ(namesIn("pictures").size(), 6U);
}

TEST_F(DrawCommand, GivesEachOfSeveralFilesAFolder)
{
    folder.write("some.v1.mdl", folder.read("some.mdl"));
    EXPECT_EQ(run({"two.mdl", "missing.mdl", "some.v1.mdl", "-o", "all/"}).exitCode, 3);
    EXPECT_EQ(namesIn("all"), (std::set<std::string>{"two", "Main.svg", "Tiers.svg", "some.v1"}));
    EXPECT_EQ(namesIn("all/some.v1"), std::set<std::string>{"Main.svg"});
}

TEST_F(DrawCommand, ListsDiagramsAsJson)
{
    const ProcessResult result = run({"some.mdl", "missing.mdl", "--list", "--json"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.output, R"({
  "models": [
    {
      "file": "some.mdl",
      "diagrams": [
        {"kind": "class", "name": "Empty", "fullName": "Logical View::Empty", "quid": "", "items": 0},
        {"kind": "class", "name": "Main", "fullName": "Logical View::Main", "quid": "", "items": 1}
      ]
    }
  ]
}
)");
}

// Pictures are made by several threads, and come out as if there were one.
TEST_F(DrawCommand, DrawsManyInTheirOrder)
{
    constexpr std::size_t count = 40;
    std::string text =
        "\n(object Petal\n version 42\n charSet 0)\n(object Design \"Logical View\"\nroot_category (object "
        "Class_Category \"Logical View\" logical_presentations (list l\n";
    std::string warnings;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        text += "(object ClassDiagram \"D" + number + "\" items (list l (object Odd" + number +
                "View @1 location (9, 9))))";
        warnings += "petal: Logical View::D" + number + ": items of the kind Odd" + number +
                    "View are not known; drawn plainly\n";
    }
    folder.write("many.mdl", text + ")))");
    const ProcessResult drawn = run({"many.mdl", "-o", "all"});
    EXPECT_EQ(drawn.exitCode, 0);
    EXPECT_THAT(drawn.errors, StartsWith(warnings + "all/: 40 pictures, "));
    EXPECT_EQ(namesIn("all").size(), count);
    const ProcessResult alone = run({"many.mdl", "--diagram", "D7", "-o", "-"});
    EXPECT_EQ(folder.read("all/D7.svg"), alone.output);
    EXPECT_THAT(alone.output, HasSubstr("odd7view"));
}

} // namespace
