#include "support/ModelTexts.h"
#include "support/Process.h"
#include "support/TemporaryFolder.h"
#include "Terminal.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <string>
#include <vector>

// What a newcomer reads when a model file has mistakes, or says what is surely not meant.

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using Words = std::vector<std::string>;

class ModelMessages : public testing::Test {
protected:
    [[nodiscard]] ProcessResult run(const Words& arguments, const std::function<void()>& prepare = {}) const
    {
        return runProcess({PETAL_COMMAND, arguments, folder.path(), "", prepare});
    }
    [[nodiscard]] std::string onTerminal(const Words& arguments, unsigned short columns) const
    {
        return shownOnTerminal({PETAL_COMMAND, arguments, folder.path(), "", [] { setenv("NO_COLOR", "1", 1); }},
                               columns);
    }

    TemporaryFolder folder;
};

TEST_F(ModelMessages, ShowTheLineOnATerminal)
{
    folder.write("m.json", json("{'format':'kiv-model',\n\t'version': 2}"));
    const std::string message = "m.json:2:13: error: /version: expected the version 1, found the number 2\n";
    EXPECT_EQ(onTerminal({"export", "-q", "m.json"}, 80), message + " 2 |  \"version\": 2}\n   |             ^\n");
    EXPECT_EQ(run({"export", "m.json"}).errors, message) << "and nowhere else";
    EXPECT_EQ(run({"export", "m.json"}).exitCode, 3);

    const std::string long1(200, 'a');
    const std::string long2(200, 'b');
    folder.write("long.json", model("'name':'" + long1 + "','types':5,'description':'" + long2 + "\xE2\x80\xAE'"));
    const std::string shown = onTerminal({"export", "-q", "long.json"}, 40);
    EXPECT_THAT(shown, AllOf(HasSubstr("\n 1 | ...aaa"), HasSubstr("\"types\":5,\"des"), HasSubstr("...\n   |    ")));
    const std::string excerpt = shown.substr(shown.find('\n') + 1);
    const std::size_t lineEnd = excerpt.find('\n');
    EXPECT_LE(lineEnd, 40U);
    EXPECT_EQ(excerpt[excerpt.find('^', lineEnd) - lineEnd - 1], '5') << excerpt;

    folder.write("hostile.json", model("'name':'\xE2\x80\xAE\x7F','types':5"));
    EXPECT_THAT(onTerminal({"export", "-q", "hostile.json"}, 120),
                AllOf(HasSubstr("\"name\":\"??\""), Not(HasSubstr("\x7F"))));
}

TEST_F(ModelMessages, WarnOfWhatIsSurelyNotMeant)
{
    folder.write("m.json", model("\n'modelElements':[{'kind':'class','name':'Account'},{'kind':'class'}],\n"
                                 "'types':[{'name':'Money','dataType':'NUMBER'}]"));
    const std::string warnings =
        "m.json:2:17: warning: /modelElements: 2 classes are not written, for only what is in a package is\n"
        "m.json:2:52: warning: /modelElements/1: a class outside of all packages has no name\n"
        "m.json:3:37: warning: /types/0/dataType: the type \"Money\" has the data type \"NUMBER\", which is none of "
        "the "
        "known ones\n";
    const ProcessResult result = run({"export", "m.json", "--report", "report.json"});
    EXPECT_THAT(result.errors, AllOf(StartsWith(warnings), HasSubstr("\nm.mdl: 0 classes, 0 diagrams, ")));
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(run({"export", "m.json", "-q"}).errors, "");
    EXPECT_THAT(folder.read("report.json"),
                AllOf(HasSubstr(R"("kind": "not-written", "line": 2, "column": 17, "pointer": "/modelElements")"),
                      HasSubstr("unknown-data-type")));
    folder.write("m.mdl", "old");
    const ProcessResult strict = run({"export", "m.json", "--strict"});
    EXPECT_EQ(strict.errors, warnings + "petal: m.json: nothing is written, since there are warnings (--strict)\n");
    EXPECT_EQ(strict.exitCode, 1);
    EXPECT_EQ(folder.read("m.mdl"), "old");
}

TEST_F(ModelMessages, TellTwentyWarningsAndHowManyMore)
{
    std::string classes = "{'kind':'class'}";
    for (int i = 1; i < 30; ++i)
        classes += ",{'kind':'class'}";
    folder.write("m.json", model("'childPackages':[{'name':'p','modelElements':[" + classes + "]}]"));
    const std::string errors = run({"export", "m.json"}).errors;
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 22);
    EXPECT_THAT(errors, HasSubstr("m.json: 10 more warnings are not shown\nm.mdl: 30 classes, "));
}

// Two boxes without places, one with, and a line.
std::string drawnModel()
{
    return model("'childPackages':[{'name':'Lending','modelElements':[{'kind':'class','id':'a','name':'Book'},"
                 "{'kind':'class','id':'b','name':'Loan'},{'kind':'class','id':'c','name':'Reader','projections':["
                 "{'diagram':'placed','x':900,'y':700,'width':300,'height':200}]},"
                 "{'kind':'dependency','id':'d','client':'a','supplier':'b'}],"
                 "'diagrams':[{'id':'whole','name':'Whole','elements':['a','b','d']},"
                 "{'id':'placed','name':'Placed','elements':['a','c']}]}]");
}

TEST_F(ModelMessages, OfferToPlaceBoxes)
{
    folder.write("m.model.json", drawnModel());
    const ProcessResult asItStands = run({"export", "m.model.json", "-o", "plain.mdl"});
    EXPECT_THAT(asItStands.errors,
                AllOf(HasSubstr("2 boxes of \"Whole\" have no place and lie on each other; --layout places them"),
                      HasSubstr("1 box of \"Placed\" has no place; --layout places it\n")));
    EXPECT_THAT(run({"export", "m.model.json", "--no-geometry"}).errors, StartsWith("m.mdl: 3 classes, 2 diagrams, "))
        << "where nothing has a place";
    EXPECT_THAT(run({"export", "m.model.json", "--layout", "-o", "laid.mdl"}).errors, StartsWith("laid.mdl: "));
    EXPECT_NE(folder.read("plain.mdl"), folder.read("laid.mdl"));

    EXPECT_EQ(run({"import", "--layout", "m.model.json", "-o", "placed.model.json"}).exitCode, 0);
    const std::string placed = folder.read("placed.model.json");
    EXPECT_THAT(placed, AllOf(HasSubstr(R"("id": "whole")"), HasSubstr(R"("x": 900, "y": 700)"),
                              HasSubstr(R"("width": 300, "height": 200)"), HasSubstr("\"vertices\"")));
    EXPECT_THAT(run({"export", "placed.model.json", "--strict"}).errors, StartsWith("placed.mdl: "));
    EXPECT_EQ(folder.read("placed.mdl"), folder.read("laid.mdl"));
}

TEST_F(ModelMessages, SayWhichCommandTakesAFile)
{
    folder.write("m.model.json", model(""));
    folder.write("shop.mdj", R"({"_type": "Project", "_id": "x", "name": "Shop"})");
    folder.write("m.mdl", "\n(object Petal\n    version \t43)\n");
    const struct {
        Words arguments;
        const char* message;
    } rows[] = {
        {{"check", "m.model.json"}, "m.model.json: this is a model file; petal export makes a Rose file of it"},
        {{"tree", "m.model.json"}, "m.model.json: this is a model file; petal export makes a Rose file of it"},
        {{"draw", "m.model.json"}, "m.model.json: this is a model file; petal export makes a Rose file of it"},
        {{"browse", "shop.mdj"}, "shop.mdj: this is a design (staruml); petal export makes a Rose file of it"},
        {{"export", "m.mdl"}, "m.mdl:4:1: expected the object of a model or of a unit"},
        {{"import", "m.mdl"}, "m.mdl:4:1: expected the object of a model or of a unit"},
        {{"import", "m.model.json"}, "m.model.json: this is a model file already; petal export takes it, and --layout"},
        {{"exprot", "m.model.json"}, "there is no command 'exprot'; did you mean 'export'?"},
    };
    for (const auto& row : rows) {
        const ProcessResult result = run(row.arguments);
        EXPECT_THAT(result.errors, StartsWith(std::string("petal: ") + row.message)) << row.arguments[0];
        EXPECT_NE(result.exitCode, 0) << row.arguments[0];
    }
}

} // namespace
