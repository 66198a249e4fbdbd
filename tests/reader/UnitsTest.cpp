#include "PetalTexts.h"
#include "support/TemporaryFolder.h"

#include "reader/index/Index.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using reader::Document;

std::string unit(std::string_view name, std::string_view body = "")
{
    return std::string(petalHeader)
        .append("(object Class_Category \"")
        .append(name)
        .append("\"\nis_unit TRUE\nis_loaded TRUE\nquid \"0000000000C0\"\nlogical_models (list l\n")
        .append(body)
        .append("))\n");
}

std::string stub(std::string_view fileName)
{
    return std::string("(object Class_Category \"U\"\nis_unit TRUE\nis_loaded FALSE\nfile_name \"")
        .append(fileName)
        .append("\"\nquid \"0000000000C0\")");
}

TEST(Units, AreFoundByTheirPaths)
{
    const struct {
        const char* fileName;
        const char* file;   // where it lies below the folder of the test
        const char* reason; // why it is not read
    } rows[] = {
        {R"($curdir\\U.cat)", "m/U.cat", ""},
        {R"($CURDIR\\Sub\\u.CAT)", "m/sub/U.cat", ""},
        {R"($curdir\\..\\U.cat)", "U.cat", ""},
        {R"($LIB\\deep\\U.cat)", "lib/Deep/U.cat", ""},
        {R"($lib/deep/U.cat)", "lib/deep/U.cat", ""},
        {R"($LIB\\deep\\U.cat)", "m/U.cat", ""},
        {R"($OTHER\\deep\\U.cat)", "m/u.cat", ""},
        {R"(C:\\designs\\U.cat)", "m/U.cat", ""},
        {R"(sub\\U.cat)", "m/sub/U.cat", ""},
        {R"($curdir\\sub\\..)", "m/sub/U.cat", "there is no such file"},
        {R"($curdir\\none\\.\\..\\U.cat)", "m/U.cat", ""},
        {"$curdir", "m/U.cat", "there is no such file"},
        {"$", "m/U.cat", "there is no such file"},
        {"", "m/U.cat", "there is no such file"},
        {R"(/etc/passwd)", "m/U.cat", "there is no such file"},
        {R"($curdir\\V.cat)", "m/U.cat", "there is no such file"},
    };
    for (const auto& row : rows) {
        const TemporaryFolder folder;
        const fs::path& base = folder.path();
        fs::create_directories(base / "m" / "sub");
        fs::create_directories((base / row.file).parent_path());
        folder.write(row.file, unit("U", "(object Class \"Found\")"));
        folder.write("m/m.mdl", logicalView(stub(row.fileName)));
        reader::ReadOptions options;
        options.paths["LIB"] = base / "lib";
        const Document document((base / "m" / "m.mdl").string(), options);
        ASSERT_EQ(document.missingUnits().size(), *row.reason ? 1U : 0U) << row.fileName;
        if (*row.reason) {
            EXPECT_EQ(document.missingUnits().front().reason, row.reason) << row.fileName;
        }
        EXPECT_EQ(reader::Index(document).byName("Logical View::U::Found") != nullptr, !*row.reason) << row.fileName;
    }
}

TEST(Units, AreReadOnceWhateverNamesThem)
{
    const TemporaryFolder folder;
    folder.write("m.mdl", logicalView(stub("$curdir\\\\a.cat") + "\n" + stub("$curdir\\\\A.CAT")));
    folder.write("a.cat", unit("U", stub("b.cat") + stub("m.mdl") + stub("a.cat")));
    folder.write("b.cat", unit("U", stub("a.cat") + stub("broken.cat") + stub("other.sub")));
    folder.write("broken.cat", "no petal file");
    folder.write("other.sub", std::string(petalHeader) + "(object SubSystem \"S\")");
    const Document document(folder / "m.mdl");
    std::vector<std::string> reasons;
    for (const reader::MissingUnit& missing : document.missingUnits())
        reasons.push_back(missing.reason.substr(folder.path().string().size() + 1));
    EXPECT_THAT(reasons,
                testing::ElementsAre("a.cat is already part of this model", "m.mdl is already part of this model",
                                     "a.cat is already part of this model", "a.cat is already part of this model",
                                     "broken.cat: no petal file: it does not start with (object",
                                     "other.sub: expected (object Class_Category, found (object SubSystem"));
}

TEST(Units, AreLeftAloneWhenNotWanted)
{
    const TemporaryFolder folder;
    folder.write("m.mdl", logicalView(stub("a.cat")));
    folder.write("a.cat", unit("U"));
    reader::ReadOptions options;
    options.readsUnits = false;
    const Document document(folder / "m.mdl", options);
    EXPECT_EQ(document.files().size(), 1U);
    ASSERT_EQ(document.missingUnits().size(), 1U);
    EXPECT_TRUE(document.missingUnits().front().isUnwanted);
}

TEST(Units, StandInThePlaceOfWhatNamesThem)
{
    const TemporaryFolder folder;
    folder.write("m.mdl", logicalView("(object Class \"Before\")" + stub("a.cat") + "(object Class \"Behind\")"));
    folder.write("a.cat", unit("U", "(object Class \"In\"\nquid \"0000000000C1\")"));
    const Document document(folder / "m.mdl");
    const reader::Object* const view = document.root().object("root_category");
    ASSERT_TRUE(view);
    const auto models = view->objects("logical_models");
    ASSERT_EQ(models.size(), 3U);
    EXPECT_EQ(models[1], document.files()[1].root);
    EXPECT_EQ(models[1]->parent(), view);
    const reader::Object* const inside = reader::Index(document).byQuid("0000000000C1");
    ASSERT_TRUE(inside);
    EXPECT_EQ(reader::Index(document).path(*inside), "Logical View::U::In");
    EXPECT_THAT(document.place(*inside).file, testing::EndsWith("a.cat"));
}

// Units of units may be called alike: each is the one beside the file that names it.
TEST(Units, AreLookedForBesideWhatNamesThem)
{
    const TemporaryFolder folder;
    fs::create_directories(folder.path() / "one");
    fs::create_directories(folder.path() / "two");
    folder.write("m.mdl", logicalView(stub("one/a.cat") + stub("two/b.cat")));
    folder.write("one/a.cat", unit("U", stub("deep.cat")));
    folder.write("two/b.cat", unit("V", stub("deep.cat")));
    folder.write("one/deep.cat", unit("W", "(object Class \"First\")"));
    folder.write("two/deep.cat", unit("W", "(object Class \"Second\")"));
    const Document document(folder / "m.mdl");
    const reader::Index index(document);
    EXPECT_TRUE(index.byName("Logical View::U::W::First"));
    EXPECT_TRUE(index.byName("Logical View::V::W::Second"));
    EXPECT_TRUE(document.missingUnits().empty());
}

TEST(Units, AreKnownByWhatStandsForThem)
{
    const TemporaryFolder folder;
    folder.write("m.mdl", logicalView(stub("a.cat") + stub("none.cat")));
    folder.write("a.cat", unit("U"));
    const Document document(folder / "m.mdl");
    ASSERT_EQ(document.files().size(), 2U);
    EXPECT_FALSE(document.files()[0].stub);
    ASSERT_TRUE(document.files()[1].stub);
    EXPECT_EQ(document.files()[1].stub->text("file_name"), "a.cat");
    EXPECT_FALSE(document.missingUnit(*document.files()[1].stub));
    ASSERT_EQ(document.missingUnits().size(), 1U);
    EXPECT_EQ(document.missingUnit(*document.missingUnits().front().stub), &document.missingUnits().front());
}

std::vector<std::string> reasonsFor(const TemporaryFolder& folder, const std::vector<std::string>& names,
                                    const reader::ReadOptions& options = {})
{
    std::string stubs;
    for (const std::string& name : names)
        stubs += stub(name) + "\n";
    folder.write("m/m.mdl", logicalView(stubs));
    const Document document(folder / "m/m.mdl", options);
    std::vector<std::string> reasons;
    for (const reader::MissingUnit& missing : document.missingUnits())
        reasons.push_back(missing.reason);
    return reasons;
}

// To open a pipe or a device may wait for ever or do something; what the system makes up has no end.
TEST(Units, AreRegularFilesBySize)
{
    const TemporaryFolder folder;
    fs::create_directories(folder.path() / "m" / "folder.cat");
    ASSERT_EQ(mkfifo((folder / "m/pipe.cat").c_str(), 0600), 0);
    folder.write("m/long.cat", "");
    fs::resize_file(folder / "m/long.cat", (std::uintmax_t{1} << 30U) + 1);
    folder.write("m/sparse.cat", unit("U"));
    fs::resize_file(folder / "m/sparse.cat", (std::uintmax_t{1} << 30U) - 1);
    std::string upToRoot;
    for (int i = 0; i < 100; ++i)
        upToRoot += "/..";
    const std::string base = (folder.path() / "m").string();
    const struct {
        std::string name;
        std::string reason; // behind the file's name
    } rows[] = {
        {"pipe.cat", base + "/pipe.cat: it is no regular file"},
        {"folder.cat", "there is no such file"},
        {"long.cat", base + "/long.cat: the file is larger than 1 GiB"},
        {"sparse.cat", base + "/sparse.cat: parts of it were never written"},
        {"$curdir" + upToRoot + "/dev/zero", base + upToRoot + "/dev/zero: it is no regular file"},
        {"$curdir" + upToRoot + "/proc/self/pagemap",
         base + upToRoot + "/proc/self/pagemap: no petal file: it is empty"},
        {"$curdir/" + std::string(4096, 'a'), "the name is longer than 4096 bytes"},
        {"$curdir/" + std::string(300, 'a'), base + "/" + std::string(300, 'a') + ": File name too long"},
    };
    for (const auto& row : rows)
        EXPECT_THAT(reasonsFor(folder, {row.name}), testing::ElementsAre(row.reason)) << row.name;
}

// A file that cannot be seen is not the same as one that is not there, and none of the same name is taken instead.
TEST(Units, ThatCannotBeSeenSayWhy)
{
    const TemporaryFolder folder;
    fs::create_directories(folder.path() / "m");
    folder.write("m/U.cat", unit("U"));
    fs::create_symlink("loop", folder.path() / "m" / "loop");
    EXPECT_THAT(reasonsFor(folder, {"loop/U.cat"}),
                testing::ElementsAre(folder / "m/loop: Too many levels of symbolic links"));
}

TEST(Units, AreLookedUpNoMoreThanSoOften)
{
    const TemporaryFolder folder;
    fs::create_directories(folder.path() / "m");
    std::vector<std::string> names;
    for (int i = 0; i < 50000; ++i)
        names.push_back("none" + std::to_string(i));
    const auto reasons = reasonsFor(folder, names);
    ASSERT_EQ(reasons.size(), names.size());
    EXPECT_EQ(reasons.front(), "there is no such file");
    EXPECT_EQ(reasons.back(), "there are too many names of units to look all of them up");
}

TEST(Units, AreReadFromTheFoldersThatAreAllowed)
{
    const TemporaryFolder folder;
    fs::create_directories(folder.path() / "m" / "sub");
    fs::create_directories(folder.path() / "m2");
    fs::create_directories(folder.path() / "lib");
    for (const char* const name : {"m/sub/U.cat", "m2/V.cat", "lib/W.cat", "m/X.cat", "m2/X.cat"})
        folder.write(name, unit("U"));
    fs::create_symlink(folder / "lib/W.cat", folder.path() / "m" / "link.cat");
    fs::create_symlink(folder / "lib/none.cat", folder.path() / "m" / "nowhere.cat");
    fs::create_directory_symlink(folder / "lib", folder.path() / "m" / "elsewhere");
    fs::create_directory_symlink(folder / "m/sub", folder.path() / "m" / "inside");
    const std::string refused = "there is no such file in a folder that units may be read from";
    const struct {
        std::string name;
        std::vector<std::string> allowed; // besides the folder of the model
        bool isRead;
    } rows[] = {
        {"sub/U.cat", {}, true},
        {"inside/u.cat", {}, true},
        {"$curdir/../m/sub/U.cat", {}, false}, // the way leads outside
        {"$curdir/sub/../X.cat", {}, true},
        {"$curdir/../m2/V.cat", {}, false}, // begins with the name of the allowed folder
        {"$curdir/../m2/none.cat", {}, false},
        {"$curdir/../m2/X.cat", {}, true}, // that beside the model, as if there were none in the other folder
        {"$curdir/../none/X.cat", {}, true},
        {"link.cat", {}, false},
        {"link.cat", {"lib"}, true},
        {"nowhere.cat", {}, false},
        {"elsewhere/W.cat", {}, false},
        {"elsewhere/w.cat", {}, false},
        {"elsewhere/w.cat", {"lib"}, true},
        {"elsewhere/none.cat", {}, false},
        {"$LIB/W.cat", {}, false},
        {"$LIB/W.cat", {"none", "lib"}, true},
        {"$curdir/../../../../../../../../dev/zero", {}, false},
    };
    for (const auto& row : rows) {
        reader::ReadOptions options;
        options.paths["LIB"] = folder.path() / "lib";
        options.unitsWithin = {folder.path() / "m"};
        for (const std::string& each : row.allowed)
            options.unitsWithin.push_back(folder.path() / each);
        const auto reasons = reasonsFor(folder, {row.name}, options);
        const std::vector<std::string> expected(row.isRead ? 0 : 1, refused);
        EXPECT_EQ(reasons, expected) << row.name;
    }
}

} // namespace
