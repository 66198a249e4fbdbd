#include "reader/PetalTexts.h"
#include "support/Process.h"
#include "support/TemporaryFolder.h"

#include <cstdlib>
#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::Not;
using Words = std::vector<std::string>;

namespace {

std::string orders(const std::string& attribute, const std::string& viewNumber)
{
    return logicalView(
        "(object Class \"Order\" quid \"B1\" class_attributes (list class_attribute_list " + attribute + "))\n",
        "(object ClassView \"Class\" \"Logical View::Order\" @" + viewNumber + " location (1, 1) quidu \"B1\")");
}

constexpr const char* total = "(object ClassAttribute \"total\" quid \"C1\" type \"Money\")";

// A repository with one Rose file in it, that no setting of the user reaches.
class GitCommand : public testing::Test {
protected:
    GitCommand()
    {
        git({"init", "-q"});
        folder.write("orders.mdl", orders("", "1"));
        folder.write("simulation.mdl", "Model {\n  Name \"x\"\n}\n");
        commit("first");
    }

    ProcessResult git(const Words& arguments)
    {
        return runProcess({"/usr/bin/env", environment("git", arguments), folder.path(), {}, {}});
    }
    ProcessResult petal(const Words& arguments)
    {
        return runProcess({"/usr/bin/env", environment(PETAL_COMMAND, arguments), folder.path(), {}, {}});
    }
    void commit(const std::string& message)
    {
        git({"add", "."});
        const ProcessResult result = git({"commit", "-q", "-m", message});
        ASSERT_EQ(result.exitCode, 0) << result.errors;
    }

    TemporaryFolder folder;

private:
    static Words environment(const std::string& program, const Words& arguments)
    {
        Words words = {
            "GIT_CONFIG_GLOBAL=/dev/null", "GIT_CONFIG_SYSTEM=/dev/null", "GIT_AUTHOR_NAME=a", "GIT_AUTHOR_EMAIL=a@b",
            "GIT_COMMITTER_NAME=a",        "GIT_COMMITTER_EMAIL=a@b",     "GIT_PAGER=cat",     program};
        words.insert(words.end(), arguments.begin(), arguments.end());
        return words;
    }
};

} // namespace

TEST_F(GitCommand, ComparesInTheWordsOfTheModel)
{
    const ProcessResult enabled = petal({"git", "--enable"});
    ASSERT_EQ(enabled.exitCode, 0) << enabled.errors;
    EXPECT_THAT(enabled.output, HasSubstr(".git/info/attributes"));
    EXPECT_THAT(enabled.output, HasSubstr("diff.petal.command"));

    folder.write("orders.mdl", orders(total, "7777777"));
    const ProcessResult diff = git({"diff"});
    EXPECT_EQ(diff.exitCode, 0) << diff.errors;
    EXPECT_EQ(diff.output, "petal diff a/orders.mdl b/orders.mdl\n"
                           "package Logical View\n  class Order\n    + attribute total : Money\n");
    commit("second");
    const ProcessResult log = git({"log", "-p", "-1"});
    EXPECT_EQ(log.exitCode, 0) << log.errors;
    EXPECT_THAT(log.output, HasSubstr("\n+      attribute total\n+        type: Money\n"));
    EXPECT_THAT(log.output, Not(HasSubstr("7777777")));

    folder.write("orders.mdl", orders(total, "5"));
    EXPECT_THAT(git({"diff"}).output, HasSubstr("nothing but what Rose changes by itself"));
}

TEST_F(GitCommand, FilesThatAreNotRoseStayReadable)
{
    ASSERT_EQ(petal({"git", "--enable"}).exitCode, 0);
    folder.write("simulation.mdl", "Model {\n  Name \"y\"\n}\n");
    folder.write("new.mdl", orders("", "1"));
    git({"add", "new.mdl"});
    const ProcessResult diff = git({"diff", "HEAD"});
    EXPECT_EQ(diff.exitCode, 0) << diff.errors;
    EXPECT_THAT(diff.output, HasSubstr("git diff --no-ext-diff shows the lines"));
    EXPECT_THAT(diff.output, HasSubstr("b/new.mdl\nnew file\n"));
    commit("second");
    EXPECT_THAT(git({"show"}).output, HasSubstr("-  Name \"x\"\n+  Name \"y\"\n"));
}

TEST_F(GitCommand, UndoesWhatItHasDoneAndNothingElse)
{
    folder.write(".git/info/attributes", "*.txt text");
    ASSERT_EQ(petal({"git", "--enable"}).exitCode, 0);
    ASSERT_EQ(petal({"git", "--enable"}).exitCode, 0);
    EXPECT_THAT(folder.read(".git/info/attributes"), testing::StartsWith("*.txt text\n"));
    EXPECT_EQ(git({"check-attr", "diff", "a.MDL"}).output, "a.MDL: diff: petal\n");
    ASSERT_EQ(petal({"git", "--disable"}).exitCode, 0);
    EXPECT_EQ(folder.read(".git/info/attributes"), "*.txt text\n");
    EXPECT_EQ(git({"config", "--get-regexp", "diff.petal"}).output, "");
    EXPECT_EQ(petal({"git", "--disable"}).output, "");
}

TEST_F(GitCommand, SaysWhyItCannot)
{
    const Words cases[] = {{"git"}, {"git", "--enable", "--disable"}, {"git", "--diff"}, {"git", "file.mdl"}};
    for (const Words& arguments : cases) {
        const ProcessResult result = petal(arguments);
        EXPECT_EQ(result.exitCode, 2) << testing::PrintToString(arguments);
        EXPECT_NE(result.errors, "") << testing::PrintToString(arguments);
    }
    std::filesystem::remove_all(folder.path() / ".git");
    const ProcessResult outside = petal({"git", "--enable"});
    EXPECT_EQ(outside.exitCode, 1);
    EXPECT_THAT(outside.errors, HasSubstr("not a git repository"));
}
