#include "support/Process.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <string>
#include <vector>

namespace {

using testing::HasSubstr;
using testing::StartsWith;
using Words = std::vector<std::string>;

constexpr const char* petalFile = "(object Petal\nversion 42)\n(object Design \"Logical View\"\n"
                                  "root_category (object Class_Category \"Logical View\"\nquid \"3ABD90E80066\"\n"
                                  "logical_models (list l\n(object Class_Category \"U\"\nis_unit TRUE\n"
                                  "quid \"3ABD90E80067\"\nfile_name \"$LIB\\\\u.cat\"))))\n";

class BrowseCommand : public testing::Test {
protected:
    BrowseCommand()
    {
        folder.write("old.mdl", petalFile);
        folder.write("other.txt", "{}");
    }

    [[nodiscard]] ProcessResult run(Words arguments, const std::string& input = "") const
    {
        arguments.insert(arguments.begin(), "browse");
        return runProcess({PETAL_COMMAND, arguments, folder.path(), input, {}});
    }

    TemporaryFolder folder;
};

TEST_F(BrowseCommand, EndsWithACodeAMessageAndAPage)
{
    const struct {
        Words arguments;
        int exitCode;
        const char* errors;
        const char* page; // the file that must be there, or empty
    } rows[] = {
        {{"old.mdl"}, 0, "petal: $LIB\\u.cat: not loaded: ", "old.html"},
        {{"old.mdl", "-q", "-o", "quiet.html"}, 0, "", "quiet.html"},
        {{"old.mdl", "--no-units", "-o", "alone.html"}, 0, "alone.html: ", "alone.html"},
        {{"old.mdl", "-q", "-o", "pages/"}, 0, "", "pages/old.html"},
        {{"old.mdl", "-o", "none/x.html"}, 1, "none/x.html: No such file or directory", ""},
        {{"old.mdl", "-o", "old.mdl"}, 2, "would overwrite old.mdl", "old.mdl"},
        {{"old.mdl", "--charset", "none"}, 2, "there is no charset 'none'", ""},
        {{"other.txt"}, 3, "petal: other.txt: no petal file", ""},
        {{"none.mdl"}, 3, "petal: none.mdl: No such file or directory\n", ""},
        {{"-", "-o", "nothing.html"}, 3, "no petal file: it is empty", ""},
        {{}, 2, "FILE", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        const ProcessResult result = run(row.arguments);
        EXPECT_EQ(result.exitCode, row.exitCode);
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(result.errors, HasSubstr(row.errors));
        EXPECT_EQ(result.errors.empty(), row.errors[0] == '\0') << result.errors;
        EXPECT_TRUE(std::filesystem::exists(folder.path() / row.page));
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "other.html"));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "nothing.html"));
    EXPECT_THAT(folder.read("old.mdl"), StartsWith("(object Petal"));
}

TEST_F(BrowseCommand, GoesFromInputToOutput)
{
    const ProcessResult result = run({"-", "-q"}, petalFile);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.output, StartsWith("<!DOCTYPE html>"));
    EXPECT_THAT(result.output, HasSubstr("</html>"));
}

} // namespace
