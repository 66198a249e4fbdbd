#include "support/ModelTexts.h"
#include "support/Process.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <string>
#include <vector>

namespace {

using testing::HasSubstr;
using testing::StartsWith;
using Words = std::vector<std::string>;

constexpr const char* roseFile = "(object Petal version 42)\n(object Design \"D\" root_category (object Class_Category "
                                 "\"Logical View\" logical_models "
                                 "(list l (object Class \"Order\" quid \"1\") (object UseCase \"Buy\" quid \"2\"))))";

class ConvertCommand : public testing::Test {
protected:
    ConvertCommand()
    {
        folder.write("shop.mdl", roseFile);
        folder.write("broken.mdl", "(object Petal version 42)\n(object Design \"D\" root_category (object ");
        folder.write("m.model.json", model("'childPackages':[{'name':'Sales','modelElements':[{'kind':'class','id':'a',"
                                           "'name':'Customer'}]}]"));
        folder.write("kept.ecore", "kept");
    }

    [[nodiscard]] ProcessResult run(const Words& arguments, const std::string& input = "") const
    {
        return runProcess({PETAL_COMMAND, arguments, folder.path(), input});
    }

    TemporaryFolder folder;
};

TEST_F(ConvertCommand, TellsTheFormatByNamesAndContents)
{
    const struct {
        Words arguments;
        const char* file;
        const char* expected;
    } rows[] = {
        {{"convert", "shop.mdl", "-o", "a.ecore"}, "a.ecore", "name=\"Order\""},
        {{"convert", "shop.mdl", "-o", "A.ECORE"}, "A.ECORE", "name=\"Order\""},
        {{"convert", "shop.mdl", "--to", "ecore"}, "shop.ecore", "name=\"Order\""},
        {{"convert", "shop.mdl", "--to", "ecore", "-o", "new/"}, "new/shop.ecore", "name=\"Order\""},
        {{"convert", "m.model.json", "-o", "b.ecore"}, "b.ecore", "name=\"Customer\""},
        {{"convert", "shop.mdl", "-o", "c.model.json"}, "c.model.json", "\"name\": \"Order\""},
        {{"convert", "m.model.json", "-o", "d.mdl"}, "d.mdl", "(object Class \"Customer\""},
        {{"convert", "shop.mdl", "-o", "e.mdl"}, "e.mdl", "(object Class \"Order\""},
    };
    for (const auto& row : rows) {
        const ProcessResult result = run(row.arguments);
        EXPECT_EQ(result.exitCode, 0) << row.file << result.errors;
        EXPECT_THAT(folder.read(row.file), HasSubstr(row.expected)) << row.file;
    }
    EXPECT_THAT(run({"convert", "-", "--to", "ecore", "-o", "-", "-q"}, roseFile).output, HasSubstr("name=\"Order\""));
    EXPECT_THAT(run({"convert", "-", "--to", "ecore", "-q"}, roseFile).output, HasSubstr("name=\"Order\""));
}

TEST_F(ConvertCommand, EndsWithACodeAndAMessageAndLeavesTheOutputAlone)
{
    const struct {
        Words arguments;
        int exitCode;
        const char* message;
    } rows[] = {
        {{"convert", "broken.mdl", "-o", "kept.ecore"}, 3, "petal: broken.mdl:2:"},
        {{"convert", "nowhere.mdl", "-o", "kept.ecore"}, 3, "petal: nowhere.mdl: No such file or directory"},
        {{"convert", "shop.mdl"}, 2, "petal: the format to write is not known; give it with --to"},
        {{"convert", "shop.mdl", "-o", "x.jpg"},
         2,
         "petal: x.jpg: no format is known by this ending; give one with --to"},
        {{"convert", "shop.mdl", "--to", "ecor", "-o", "kept.ecore"},
         2,
         "petal: --to: there is no format 'ecor' to write; did you mean ecore?"},
        {{"convert", "shop.mdl", "--to", "umbrello", "-o", "kept.ecore"},
         2,
         "petal: --to: there is no format 'umbrello' to write"},
        {{"convert", "shop.mdl", "--to", "ecore", "-o", "shop.mdl"}, 2, "petal: shop.mdl"},
        {{"convert", "--to", "ecore"}, 2, "petal: IN is required"},
    };
    for (const auto& row : rows) {
        const ProcessResult result = run(row.arguments);
        EXPECT_EQ(result.exitCode, row.exitCode) << testing::PrintToString(row.arguments);
        EXPECT_THAT(result.errors, StartsWith(row.message));
        EXPECT_EQ(folder.read("kept.ecore"), "kept");
        EXPECT_EQ(folder.read("shop.mdl"), roseFile);
    }
}

TEST_F(ConvertCommand, TellsWhatDoesNotArrive)
{
    const ProcessResult result = run({"convert", "shop.mdl", "-o", "a.ecore", "--report", "report.json"});
    EXPECT_THAT(result.errors, StartsWith("shop.mdl (rose): 1 package, 1 class, 1 use case\n"));
    EXPECT_THAT(result.errors, HasSubstr("left out: 1 x use case (Ecore has none)\n"));
    EXPECT_THAT(result.errors, HasSubstr("a.ecore: 1 file, "));
    EXPECT_THAT(folder.read("report.json"), HasSubstr("\"name\": \"Buy\", \"reason\": \"Ecore has none\""));
    EXPECT_EQ(run({"convert", "shop.mdl", "-o", "a.ecore", "-q"}).errors, "");
}

} // namespace
