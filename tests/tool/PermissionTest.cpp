#include "CommandFixture.h"

#include <cstdint>
#include <filesystem>
#include <grp.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

// Who may do what with a file stays as it was, and a new file is as its folder says.

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr uid_t colleague = 60001;
constexpr uid_t me = 60002;
constexpr gid_t team = 60003;
constexpr gid_t strangers = 60004;

constexpr const char* ofAccess = "system.posix_acl_access";
constexpr const char* ofFolder = "system.posix_acl_default";

// Read and write for the owner and a colleague, `group` for the group, nothing for others, in the form of the kernel.
std::string accessList(std::uint16_t group)
{
    struct Entry {
        std::uint16_t tag;
        std::uint16_t rights;
        std::uint32_t id;
    };
    constexpr std::uint32_t none = 0xFFFFFFFF;
    const Entry entries[] = {{1, 6, none}, {2, 6, colleague}, {4, group, none}, {16, 6, none}, {32, 0, none}};
    const std::uint32_t version = 2;
    return std::string(reinterpret_cast<const char*>(&version), sizeof version) +
           std::string(reinterpret_cast<const char*>(entries), sizeof entries);
}

std::string attribute(const std::string& path, const char* name)
{
    std::string value(1000, '\0');
    const ssize_t size = getxattr(path.c_str(), name, value.data(), value.size());
    value.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return value;
}

bool setAttribute(const std::string& path, const char* name, const std::string& value)
{
    return setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
}

struct stat statusOf(const std::string& path)
{
    struct stat status = {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status;
}

class Permissions : public Command {
protected:
    [[nodiscard]] ProcessResult exportTo(const std::string& name, const std::function<void()>& prepare = {}) const
    {
        return run({"export", "m.json", "-o", name, "-q"}, prepare);
    }

    // In a folder that everybody may write, `name` belongs to a colleague and the team.
    void giveAway(const std::string& name, mode_t mode, gid_t group = team) const
    {
        chmod(folder.path().c_str(), 0777);
        folder.write(name, "old");
        ASSERT_EQ(chown((folder / name).c_str(), colleague, group), 0);
        ASSERT_EQ(chmod((folder / name).c_str(), mode), 0);
    }

    [[nodiscard]] bool canBecomeMe() const { return geteuid() == 0 && run({"--version"}, becomeMe).exitCode == 0; }
    static void becomeMe()
    {
        const gid_t groups[] = {team};
        if (setgroups(1, groups) != 0 || setgid(me) != 0 || setuid(me) != 0)
            _exit(126);
    }
};

TEST_F(Permissions, ListsAndAttributesAreKept)
{
    folder.write("kept.mdl", "old");
    if (!setAttribute(folder / "kept.mdl", ofAccess, accessList(0)) ||
        !setAttribute(folder / "kept.mdl", "user.origin", "scanner") ||
        !setAttribute(folder / "kept.mdl", "user.empty", ""))
        GTEST_SKIP() << "the file system keeps no access control lists or attributes";
    const mode_t mode = statusOf(folder / "kept.mdl").st_mode;
    EXPECT_EQ(exportTo("kept.mdl").errors, "");
    EXPECT_NE(folder.read("kept.mdl"), "old");
    EXPECT_EQ(attribute(folder / "kept.mdl", ofAccess), accessList(0));
    EXPECT_EQ(attribute(folder / "kept.mdl", "user.origin"), "scanner");
    EXPECT_EQ(statusOf(folder / "kept.mdl").st_mode, mode);
    char names[100];
    const ssize_t size = listxattr((folder / "kept.mdl").c_str(), names, sizeof names);
    EXPECT_THAT(std::string(names, static_cast<std::size_t>(std::max<ssize_t>(size, 0))), HasSubstr("user.empty"));
}

TEST_F(Permissions, FoldersHandTheirListOnToNewFilesOnly)
{
    folder.write("plain.mdl", "old");
    chmod((folder / "plain.mdl").c_str(), 0640);
    if (!setAttribute(folder.path(), ofFolder, accessList(4)))
        GTEST_SKIP() << "the file system keeps no access control lists";
    folder.write("by-others", "");
    for (const char* const name : {"new.mdl", "plain.mdl"})
        EXPECT_EQ(exportTo(name).errors, "");
    EXPECT_EQ(attribute(folder / "new.mdl", ofAccess), attribute(folder / "by-others", ofAccess));
    EXPECT_NE(attribute(folder / "new.mdl", ofAccess), "");
    EXPECT_EQ(statusOf(folder / "new.mdl").st_mode, statusOf(folder / "by-others").st_mode);
    EXPECT_EQ(attribute(folder / "plain.mdl", ofAccess), "") << "as before, though the folder hands one on";
    EXPECT_EQ(statusOf(folder / "plain.mdl").st_mode & 07777U, 0640U);
}

TEST_F(Permissions, NewFilesTakeTheGroupOfTheirFolder)
{
    if (chown(folder.path().c_str(), 0, team) != 0 || chmod(folder.path().c_str(), 02775) != 0)
        GTEST_SKIP() << "only the administrator can set this up";
    EXPECT_EQ(exportTo("new.mdl").errors, "");
    EXPECT_EQ(statusOf(folder / "new.mdl").st_gid, team);
}

TEST_F(Permissions, OfAColleaguesFileStayWithTheTeam)
{
    if (!canBecomeMe())
        GTEST_SKIP() << "only the administrator can set this up, with a command that all can run";
    giveAway("shared.mdl", 04660);
    EXPECT_EQ(exportTo("shared.mdl", becomeMe).errors, "");
    EXPECT_NE(folder.read("shared.mdl"), "old");
    EXPECT_EQ(statusOf(folder / "shared.mdl").st_uid, me);
    EXPECT_EQ(statusOf(folder / "shared.mdl").st_gid, team);
    EXPECT_EQ(statusOf(folder / "shared.mdl").st_mode & 07777U, 0660U);
    EXPECT_EQ(exportTo("closed.mdl",
                       [] {
                           becomeMe();
                           umask(0777);
                       })
                  .errors,
              "");
    EXPECT_EQ(statusOf(folder / "closed.mdl").st_mode & 07777U, 0U);
    giveAway("by-root.mdl", 0640);
    EXPECT_EQ(exportTo("by-root.mdl").errors, "");
    EXPECT_EQ(statusOf(folder / "by-root.mdl").st_uid, colleague) << "the administrator keeps the owner";
}

TEST_F(Permissions, ThatCannotBeKeptRefuseTheExport)
{
    if (!canBecomeMe())
        GTEST_SKIP() << "only the administrator can set this up, with a command that all can run";
    giveAway("mine.mdl", 0644);
    giveAway("stranger.mdl", 0666, strangers);
    fs::create_directory(folder / "closed");
    fs::create_directory(folder / "sticky");
    chmod((folder / "sticky").c_str(), 01777);
    for (const char* const name : {"closed/open.mdl", "sticky/theirs.mdl"}) {
        folder.write(name, "old");
        chmod((folder / name).c_str(), 0666);
    }
    ASSERT_EQ(chown((folder / "sticky/theirs.mdl").c_str(), colleague, team), 0);
    folder.write("linked.mdl", "old");
    fs::create_hard_link(folder / "linked.mdl", folder / "second");
    fs::create_hard_link(folder / "linked.mdl", folder / "third");
    chmod((folder / "linked.mdl").c_str(), 0666);
    const struct {
        const char* name;
        const char* message;
    } rows[] = {
        {"mine.mdl", "petal: mine.mdl: Permission denied\n"},
        {"stranger.mdl", "petal: stranger.mdl: the group of the file cannot be kept: Operation not permitted\n"},
        {"closed/open.mdl", "petal: closed/open.mdl: the folder closed cannot be written: Permission denied\n"},
        {"closed/new.mdl", "petal: closed/new.mdl: the folder closed cannot be written: Permission denied\n"},
        {"sticky/theirs.mdl", "petal: sticky/theirs.mdl: the folder sticky cannot be written: Operation not"},
        {"linked.mdl", "petal: linked.mdl: the file has 3 names (hard links), and only one of them would be"},
    };
    const Words names = folder.names();
    for (const auto& row : rows) {
        const ProcessResult result = exportTo(row.name, becomeMe);
        EXPECT_EQ(result.exitCode, 1) << row.name;
        EXPECT_THAT(result.errors, HasSubstr(row.message));
        EXPECT_EQ(folder.read(row.name), std::string(row.name) == "closed/new.mdl" ? "" : "old") << row.name;
    }
    EXPECT_EQ(folder.names(), names);
    EXPECT_FALSE(fs::exists(folder / "closed/new.mdl"));
}

} // namespace
