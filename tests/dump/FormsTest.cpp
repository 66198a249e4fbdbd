#include "Dumping.h"

#include "dump/forms/Csv.h"
#include "dump/forms/Json.h"
#include "dump/forms/Sqlite.h"
#include "support/TemporaryFolder.h"

#include <array>
#include <fstream>
#include <gmock/gmock.h>
#include <memory>
#include <simdjson.h>
#include <sqlite3.h>
#include <system_error>

namespace {

using dump::TableName;
using testing::ElementsAre;
using testing::HasSubstr;

std::string csvOf(const Dumping& dumping, TableName table)
{
    std::string result;
    dump::writeCsv(dumping.source(), [&](TableName name, std::string_view piece) {
        if (name == table)
            result += piece;
    });
    return result;
}

TEST(DumpAsCsv, QuotesWhatNeedsIt)
{
    const struct {
        const char* value;
        const char* field;
    } rows[] = {
        {R"("plain")", "plain"},    {R"("")", R"("")"},       {R"("a,b")", R"("a,b")"}, {R"("\"q\"")", R"("""q""")"},
        {"\n|a\n|b\n", "\"a\nb\""}, {"(1, 2)", "\"(1, 2)\""}, {"(list)", ""},
    };
    for (const auto& row : rows) {
        const std::string text =
            csvOf(Dumping(read(model(std::string("k ").append(row.value)))), TableName::properties);
        EXPECT_THAT(text, testing::StartsWith("property,object,list,position,key,kind,type,value,target,state,line,"
                                              "column,byte,length\r\n1,1,,,version,number,,42,,,3,5,19,11\r\n"));
        EXPECT_THAT(text, HasSubstr(std::string(",,").append(row.field).append(",,,7,1,"))) << row.value;
        EXPECT_TRUE(text.ends_with("\r\n"));
    }
    const std::string withNul = model(std::string("k \"a\0b\"", 7));
    EXPECT_THAT(csvOf(Dumping(read(withNul)), TableName::properties), HasSubstr(",\"a\xEF\xBF\xBD"
                                                                                "b\","));
}

TEST(DumpAsCsv, WritesNumbersInFull)
{
    const Dumping dumping(read(logicalView("", "(object V @4294967295 location (0.1, -7) width 1e300)")));
    EXPECT_THAT(csvOf(dumping, TableName::views), HasSubstr(",V,4294967295,,,none,,0.1,-7,1e+300,,"));
}

std::string jsonOf(const Dumping& dumping)
{
    std::string result;
    dump::writeJson(dumping.source(), [&](std::string_view piece) { result += piece; });
    return result;
}

TEST(DumpAsJson, HasValuesAsJsonHasThem)
{
    const struct {
        const char* value;
        const char* json;
    } rows[] = {
        {R"("a \"b\"")", R"("kind":"text","value":"a \"b\"")"},
        {"\n|one\n|two\n", R"("kind":"block","value":"one\ntwo")"},
        {"0.250000", R"("kind":"number","value":0.250000)"},
        {"-17", R"("kind":"number","value":-17)"},
        {"+17", R"("kind":"number","value":"+17")"},
        {"007", R"("kind":"number","value":"007")"},
        {".5", R"("kind":"number","value":".5")"},
        {"5.", R"("kind":"number","value":"5.")"},
        {"1e5", R"("kind":"number","value":1e5)"},
        {"1e999", R"("kind":"number","value":"1e999")"},
        {"9223372036854775807", R"("kind":"number","value":9223372036854775807)"},
        {"9223372036854775808", R"("kind":"number","value":"9223372036854775808")"},
        {"TRUE", R"("kind":"boolean","value":true)"},
        {"Plain", R"("kind":"word","value":"Plain")"},
        {"@7", R"("kind":"reference","value":7,"state":"missing")"},
        {"@99999999999", R"("kind":"reference","value":"99999999999","state":"missing")"},
        {"( 1 , -2.5)", R"("kind":"point","value":[1,-2.5])"},
        {"(+1, 2)", "\"kind\":\"point\",\"value\":\"(+1, 2)\""},
        {"(1, 9223372036854775808)", "\"kind\":\"point\",\"value\":\"(1, 9223372036854775808)\""},
        {"(1e999, 2)", "\"kind\":\"point\",\"value\":\"(1e999, 2)\""},
        {R"((value Text "x"))", R"("kind":"text","type":"Text","value":"x")"},
    };
    for (const auto& row : rows) {
        const std::string text = jsonOf(Dumping(read(model(std::string("k ").append(row.value).append("\n")))));
        EXPECT_THAT(text, HasSubstr(std::string("\n{\"key\":\"k\",").append(row.json).append(",\"place\":[7,1,")));
        simdjson::dom::parser parser;
        EXPECT_EQ(parser.parse(text).error(), simdjson::SUCCESS) << text;
    }
}

// The objects of a tree of JSON, in its order: what the table of objects has of them.
void collectObjects(simdjson::dom::element element, std::vector<std::string>& rows)
{
    if (element.is_array())
        for (const simdjson::dom::element each : element.get_array())
            collectObjects(each, rows);
    if (!element.is_object())
        return;
    if (std::int64_t number = 0; element["object"].get(number) == simdjson::SUCCESS) {
        const simdjson::dom::array place = element["place"];
        std::string row = std::to_string(number);
        row.append(" ").append(std::string_view(element["keyword"]));
        for (const std::int64_t each : place)
            row.append(" ").append(std::to_string(each));
        rows.push_back(row);
    }
    for (const auto& [key, value] : element.get_object())
        collectObjects(value, rows);
}

TEST(DumpAsJson, HasTheObjectsOfTheTables)
{
    const TemporaryFolder folder;
    folder.write("m.mdl", logicalView(R"((object Class_Category "U" is_unit TRUE file_name "u.cat" quid "0C")
(object Class "Odd" a (list L (object B) (list M (object C)) (value V (object D)))))"));
    folder.write("u.cat", std::string(petalHeader).append(R"((object Class_Category "U" quid "0C" x (object Inner)))"));
    const Dumping dumping{reader::Document(folder / "m.mdl")};
    const std::string text = jsonOf(dumping);
    simdjson::dom::parser parser;
    const simdjson::dom::element tree = parser.parse(text);
    std::vector<std::string> found;
    collectObjects(tree["model"], found);
    EXPECT_EQ(found, dumping.rows(TableName::objects, {"object", "keyword", "line", "column", "byte", "length"}));
    EXPECT_EQ(std::int64_t(tree["schema_version"]), dump::schemaVersion);
    EXPECT_EQ(std::int64_t(tree["files"].at(1)["unit_of"]), 4);
    EXPECT_THAT(text, HasSubstr(R"("unit":{"file":2,)"));
}

// All of a table as lines.
std::vector<std::string> queried(const std::string& path, const std::string& query)
{
    sqlite3* opened = nullptr;
    EXPECT_EQ(sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> database(opened, sqlite3_close);
    sqlite3_stmt* prepared = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(opened, query.c_str(), -1, &prepared, nullptr), SQLITE_OK) << sqlite3_errmsg(opened);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(prepared, sqlite3_finalize);
    std::vector<std::string> rows;
    while (sqlite3_step(prepared) == SQLITE_ROW) {
        std::string row;
        for (int i = 0; i < sqlite3_column_count(prepared); ++i) {
            const void* const text = sqlite3_column_blob(prepared, i); // ends where its length says
            const auto length = static_cast<std::size_t>(sqlite3_column_bytes(prepared, i));
            const bool isNull = sqlite3_column_type(prepared, i) == SQLITE_NULL;
            row.append(i == 0 ? "" : " ").append(isNull ? "-" : std::string(static_cast<const char*>(text), length));
        }
        rows.push_back(row);
    }
    return rows;
}

std::vector<std::string> columnsOf(const dump::Table& table)
{
    std::vector<std::string> names;
    for (const dump::Column& column : table.columns)
        if (column.type != dump::ColumnType::real) // which are written in more than one way
            names.emplace_back(column.name);
    return names;
}

TEST(DumpAsSqlite, ReadsBackAsItWasGiven)
{
    const TemporaryFolder folder;
    const Dumping dumping(read(shop()));
    folder.write("shop.db", "");
    dump::writeSqlite(dumping.source(), folder / "shop.db", "shop.db");
    EXPECT_THAT(queried(folder / "shop.db", "PRAGMA integrity_check"), ElementsAre("ok"));
    EXPECT_THAT(queried(folder / "shop.db", "PRAGMA user_version"), ElementsAre(std::to_string(dump::schemaVersion)));
    for (std::size_t i = 0; i < dump::tables().size(); ++i) {
        const dump::Table& table = dump::tables()[i];
        std::string columns;
        for (const std::string& name : columnsOf(table))
            columns.append(columns.empty() ? "\"" : ", \"").append(name).append("\"");
        EXPECT_EQ(queried(folder / "shop.db", "SELECT " + columns + " FROM " + std::string(table.name)),
                  dumping.rows(static_cast<TableName>(i), columnsOf(table)))
            << table.name;
    }
    EXPECT_THAT(queried(folder / "shop.db", "SELECT x + 0.5 FROM views WHERE x IS NOT NULL"), ElementsAre("100.5"));
    EXPECT_EQ(folder.names(), std::vector<std::string>{"shop.db"}); // and nothing beside it
}

TEST(DumpAsSqlite, IsTheSameTwice)
{
    const TemporaryFolder folder;
    const Dumping dumping(read(shop()));
    for (const char* const name : {"a.db", "b.db"}) {
        folder.write(name, "");
        dump::writeSqlite(dumping.source(), folder / name, name);
    }
    EXPECT_EQ(folder.read("a.db"), folder.read("b.db"));
    EXPECT_FALSE(folder.read("a.db").empty());
}

TEST(DumpAsSqlite, TellsWhyItCannotBeWritten)
{
    const Dumping dumping(read(shop()));
    const std::pair<const char*, std::errc> rows[] = {{"/dev/full", std::errc::no_space_on_device},
                                                      {"/no/such/folder/a.db", std::errc::no_such_file_or_directory}};
    for (const auto& [path, reason] : rows) {
        try {
            dump::writeSqlite(dumping.source(), path, "shop.db");
            ADD_FAILURE() << path << " was written";
        } catch (const std::system_error& error) {
            EXPECT_EQ(error.code(), reason) << path;
            EXPECT_THAT(error.what(), testing::StartsWith("shop.db: "));
        }
    }
}

TEST(DumpAsSqlite, HasTextsBehindNul)
{
    const TemporaryFolder folder;
    folder.write("a.db", "");
    dump::writeSqlite(Dumping(read(model(std::string("k \"a\0b\"", 7)))).source(), folder / "a.db", "a.db");
    EXPECT_THAT(queried(folder / "a.db", "SELECT value FROM properties WHERE key = 'k'"), ElementsAre("a\xEF\xBF\xBD"
                                                                                                      "b"));
}

} // namespace
