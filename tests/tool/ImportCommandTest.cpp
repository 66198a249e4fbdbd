#include "support/ModelTexts.h"
#include "support/Process.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using Words = std::vector<std::string>;

std::string design()
{
    return json("{'_type':'Project','name':'Shop','ownedElements':[{'_type':'UMLModel','_id':'m','name':'Model',"
                "'ownedElements':[{'_type':'UMLClass','_id':'a','name':'Order'},{'_type':'UMLUseCase','_id':'u',"
                "'name':'Buy\\u001b'}]}]}");
}

class ImportCommand : public testing::Test {
protected:
    ImportCommand()
    {
        folder.write("shop.mdj", design());
        folder.write("broken.mdj", with(design(), "\"Order\"", "\n<<<<<<< HEAD\n"));
        folder.write("empty.mdj", with(design(), "UMLClass", "UMLNode"));
        folder.write("m.json", model(""));
        folder.write("some.xml", "<html/>");
        folder.write("kept.json", "kept");
    }

    [[nodiscard]] ProcessResult run(const Words& arguments, const std::string& input = "") const
    {
        return runProcess({PETAL_COMMAND, arguments, folder.path(), input});
    }

    TemporaryFolder folder;
};

TEST_F(ImportCommand, EndsWithACodeAndAMessageAndLeavesTheOutputAlone)
{
    const struct {
        Words arguments;
        int exitCode;
        const char* message;
    } rows[] = {
        {{"import", "broken.mdj", "-o", "kept.json"}, 3, "petal: broken.mdj:2:1: expected a value, found a mark"},
        {{"export", "broken.mdj", "-o", "kept.json"}, 3, "petal: broken.mdj:2:1: expected a value, found a mark"},
        {{"import", "empty.mdj", "-o", "kept.json"},
         3,
         "petal: empty.mdj: nothing to import was found; looked for UML"},
        {{"import", "some.xml", "-o", "kept.json"}, 3, "petal: some.xml: this is of no format that can be imported"},
        {{"export", "some.xml", "-o", "kept.json"}, 3, "petal: some.xml: this is of no format that can be imported"},
        {{"import", "m.json", "-o", "kept.json"},
         3,
         "petal: m.json: this is a model file already; petal export takes it, and --layout places what has no "
         "place\n"},
        {{"import", "none.mdj", "-o", "kept.json"}, 3, "petal: none.mdj: No such file or directory\n"},
        {{"import", "some.xml", "--from", "staruml", "-o", "kept.json"},
         3,
         "petal: some.xml:1:1: expected a value, found <html/>"},
        {{"import", "shop.mdj", "-o", "none/x"}, 1, "petal: none/x: No such file or directory\n"},
        {{"import", "shop.mdj", "-o", "kept.json", "--report", "none/x"}, 1, "petal: none/x: No such file"},
        {{"import", "shop.mdj", "-o", "shop.mdj"},
         2,
         "petal: shop.mdj: the output would overwrite shop.mdj, which was"},
        {{"import", "shop.mdj", "-o", "x", "--report", "x"}, 2, "petal: x: the report would overwrite the output\n"},
        {{"import", "shop.mdj", "-o", "-", "--report", "-"},
         2,
         "petal: standard output: the report would be mixed with the output"},
        {{"import", "shop.mdj", "--from", "starulm"}, 2, "did you mean staruml?"},
        {{"import"}, 2, "petal: DESIGN is required"},
    };
    for (const auto& row : rows) {
        const ProcessResult result = run(row.arguments);
        const std::string words = testing::PrintToString(row.arguments);
        EXPECT_EQ(result.exitCode, row.exitCode) << words;
        EXPECT_THAT(result.errors, HasSubstr(row.message)) << words;
        EXPECT_EQ(result.output, "") << words;
    }
    EXPECT_EQ(folder.read("kept.json"), "kept");
    EXPECT_THAT(folder.names(), ElementsAre("broken.mdj", "empty.mdj", "kept.json", "m.json", "shop.mdj", "some.xml"));
}

TEST_F(ImportCommand, WritesAModelFileThatExportsToWhatTheDesignDoes)
{
    EXPECT_EQ(run({"import", "-q", "shop.mdj"}).errors, "");
    EXPECT_EQ(run({"export", "-q", "shop.model.json", "-o", "by-model.mdl"}).exitCode, 0);
    EXPECT_EQ(run({"export", "-q", "shop.mdj"}).exitCode, 0);
    EXPECT_THAT(folder.read("shop.mdl"), HasSubstr("(object ClassView \"Class\" \"Order\""));
    EXPECT_EQ(folder.read("shop.mdl"), folder.read("by-model.mdl"));
    EXPECT_EQ(run({"export", "-q", "-"}, design()).output, folder.read("shop.mdl"));
    EXPECT_EQ(run({"import", "-q", "-"}, design()).output, folder.read("shop.model.json"));
}

TEST_F(ImportCommand, LeavesTheLayoutOutWhenTold)
{
    for (const char* const command : {"import", "export"}) {
        const std::string word = std::string(command) == "import" ? "Overview" : "ClassView";
        EXPECT_THAT(run({command, "-q", "shop.mdj", "-o", "-"}).output, HasSubstr(word)) << command;
        EXPECT_THAT(run({command, "-q", "shop.mdj", "-o", "-", "--no-layout"}).output, testing::Not(HasSubstr(word)))
            << command;
    }
}

// What the design contains cannot speak to the terminal.
TEST_F(ImportCommand, SaysWhatWasTakenAndWhatWasLeft)
{
    for (const char* const command : {"import", "export"}) {
        const ProcessResult result = run({command, "shop.mdj", "-o", "out", "--report", "-"});
        EXPECT_THAT(result.errors, StartsWith("shop.mdj (staruml): 1 package, 1 class, 1 diagram, 1 box\n")) << command;
        EXPECT_THAT(result.errors, HasSubstr("left out: 1 x use case (nothing of this kind is taken)\n")) << command;
        EXPECT_THAT(result.output, HasSubstr(json("{'kind': 'use case', 'id': 'u', 'name': 'Buy\\u001b', "
                                                  "'reason': 'nothing of this kind is taken'}")))
            << command << result.output;
    }
    EXPECT_THAT(run({"export", "m.json", "-o", "out", "--report", "-"}).output, HasSubstr("\"model file\""));
}

TEST_F(ImportCommand, ListsTheFormats)
{
    EXPECT_THAT(run({"import", "--list-formats"}).output, StartsWith("staruml"));
}

} // namespace
