#include "PetalTexts.h"
#include "support/TemporaryFolder.h"

#include "reader/Index.h"

#include <filesystem>
#include <gmock/gmock.h>

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

} // namespace
