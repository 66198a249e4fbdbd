#include "Dumping.h"

#include "support/Process.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using Words = std::vector<std::string>;

class DumpCommand : public testing::Test {
protected:
    DumpCommand()
    {
        folder.write("shop.mdl", shop());
        folder.write("broken.mdl", model("a \"open"));
        folder.write("other.uml", "<?xml version=\"1.0\"?>\n<uml:Model xmi:version=\"2.1\" "
                                  "xmlns:xmi=\"http://schema.omg.org/spec/XMI/2.1\" "
                                  "xmlns:uml=\"http://www.eclipse.org/uml2/3.0.0/UML\"/>");
        folder.write("old.json", "old");
        folder.write("twice.db", "old");
        fs::create_hard_link(folder / "twice.db", folder / "again.db");
        fs::create_directory(folder / "is.db");
    }

    [[nodiscard]] ProcessResult run(const Words& arguments, const std::string& input = "") const
    {
        return runProcess({PETAL_COMMAND, arguments, folder.path(), input, {}});
    }

    TemporaryFolder folder;
};

TEST_F(DumpCommand, EndsWithACodeAndAMessage)
{
    const struct {
        Words arguments;
        int exitCode;
        const char* output;
        const char* errors;
    } rows[] = {
        {{"shop.mdl", "--json"}, 0, "{\"format\":\"petal-dump\"", ""},
        {{"shop.mdl", "--json", "-o", "a.json"}, 0, "", "a.json: 20 objects, "},
        {{"shop.mdl", "--json", "-q", "-o", "a.json"}, 0, "", ""},
        {{"shop.mdl", "--sqlite", "a.db"}, 0, "", "a.db: 20 objects, "},
        {{"shop.mdl", "--sqlite", "-"}, 0, "SQLite format 3", ""},
        {{"shop.mdl", "--csv", "new/tables"}, 0, "", "new/tables/: 20 objects, "},
        {{"broken.mdl", "--json"}, 0, "\"findings\":[", "broken.mdl:7:3: error: expected a second \""},
        {{"broken.mdl", "--json", "-q"}, 0, "\"findings\":[", ""},
        {{"shop.mdl"}, 2, "", "--json, --csv DIR or --sqlite FILE"},
        {{"shop.mdl", "--json", "--csv", "x"}, 2, "", "excludes"},
        {{"shop.mdl", "-o", "x.db", "--sqlite", "x.db"}, 2, "", "excludes"},
        {{"shop.mdl", "--json", "-o", "shop.mdl"},
         2,
         "",
         "shop.mdl: the dump would overwrite shop.mdl, which was read"},
        {{"shop.mdl", "--sqlite", "shop.mdl"}, 2, "", "the database would overwrite shop.mdl"},
        {{"shop.mdl", "--sqlite", "twice.db"}, 1, "", "twice.db: the file has 2 names"},
        {{"shop.mdl", "--sqlite", "is.db"}, 1, "", "is.db: Is a directory"},
        {{"shop.mdl", "--csv", "shop.mdl"}, 1, "", "shop.mdl"},
        {{"other.uml", "--json"}, 3, "", "other.uml: this is a design (xmi); petal export makes a Rose file of it"},
        {{"none.mdl", "--json"}, 3, "", "none.mdl: No such file or directory"},
        {{"shop.mdl", "--json", "--charset", "none"}, 2, "", "there is no charset 'none'"},
    };
    for (const auto& row : rows) {
        Words arguments = {"dump"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        const ProcessResult result = run(arguments);
        EXPECT_EQ(result.exitCode, row.exitCode) << testing::PrintToString(row.arguments) << result.errors;
        EXPECT_THAT(result.output, HasSubstr(row.output)) << testing::PrintToString(row.arguments);
        EXPECT_THAT(result.errors, HasSubstr(row.errors)) << testing::PrintToString(row.arguments);
        EXPECT_EQ(result.output.empty(), !*row.output) << testing::PrintToString(row.arguments);
        EXPECT_EQ(result.errors.empty(), !*row.errors) << testing::PrintToString(row.arguments) << result.errors;
    }
    EXPECT_EQ(folder.read("shop.mdl"), shop());
    EXPECT_EQ(folder.read("twice.db"), "old");
}

TEST_F(DumpCommand, WritesAFileForEachTable)
{
    ASSERT_EQ(run({"dump", "-", "--csv", "t"}, shop()).exitCode, 0);
    std::vector<std::string> names;
    for (const dump::Table& table : dump::tables()) {
        names.push_back(std::string(table.name).append(".csv"));
        EXPECT_THAT(folder.read("t/" + names.back()), testing::StartsWith(std::string(table.columns[0].name)));
    }
    std::ranges::sort(names);
    std::vector<std::string> found;
    for (const auto& entry : fs::directory_iterator(folder.path() / "t"))
        found.push_back(entry.path().filename().string());
    std::ranges::sort(found);
    EXPECT_EQ(found, names);
}

TEST_F(DumpCommand, LeavesEverythingAsItWasWhenOneFileCannotBeWritten)
{
    fs::create_directories(folder.path() / "t" / "views.csv");
    folder.write("t/objects.csv", "old");
    const ProcessResult result = run({"dump", "shop.mdl", "--csv", "t"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.errors, HasSubstr("t/views.csv: Is a directory"));
    EXPECT_EQ(folder.read("t/objects.csv"), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path() / "t"), fs::directory_iterator()), 2);
}

TEST_F(DumpCommand, TellsThatADiskIsFull)
{
    for (const char* const form : {"--json", "--sqlite"}) {
        const ProcessResult result = form == std::string("--json") ? run({"dump", "shop.mdl", form, "-o", "/dev/full"})
                                                                   : run({"dump", "shop.mdl", form, "/dev/full"});
        EXPECT_EQ(result.exitCode, 1) << form;
        EXPECT_EQ(result.errors, "petal: /dev/full: No space left on device\n") << form;
    }
}

} // namespace
