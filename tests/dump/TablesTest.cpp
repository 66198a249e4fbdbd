#include "Dumping.h"

#include "reader/notation/Scanner.h"
#include "support/TemporaryFolder.h"

#include <fstream>
#include <gmock/gmock.h>
#include <iterator>

namespace {

using dump::TableName;
using reader::TokenKind;
using testing::Contains;
using testing::ElementsAre;

TEST(DumpTables, HaveElementsWithTheirOwners)
{
    const Dumping dumping(read(shop()));
    EXPECT_THAT(dumping.rows(TableName::elements,
                             {"element", "owner", "category", "kind", "qualified_name", "documentation", "type"}),
                ElementsAre("2 - model model - - -", "3 2 package package Logical View - -",
                            "4 3 package package Logical View::Orders - -",
                            "5 4 classifier class Logical View::Orders::Order What is \"asked\" for -",
                            "6 5 feature operation Logical View::Orders::Order::pay - Money",
                            "7 6 feature parameter Logical View::Orders::Order::pay::by - Card",
                            "8 5 relation generalization - - -", "9 4 classifier class Logical View::Orders::Money - -",
                            "10 4 relation association - - -", "11 10 feature role Logical View::Orders::whole - -",
                            "12 10 feature role - - -", "13 3 classifier class Logical View::Thing - -",
                            "14 3 other - Logical View::New - -", "15 3 diagram class diagram Logical View::Main - -"));
}

TEST(DumpTables, HaveRelationsWithBothEnds)
{
    const Dumping dumping(read(shop()));
    EXPECT_THAT(dumping.rows(TableName::relations, {"relation", "key", "source_name", "target", "target_name", "state",
                                                    "source_role", "source_multiplicity", "target_end"}),
                ElementsAre("6 result Logical View::Orders::Order::pay 9 Logical View::Orders::Money found - - -",
                            "8 supplier Logical View::Orders::Order 13 Logical View::Thing found - - -",
                            "10 roles Logical View::Orders::Order - Logical View::Gone missing whole 1 12"));
}

TEST(DumpTables, HaveWhatStandsOnDiagrams)
{
    const Dumping dumping(read(shop()));
    EXPECT_THAT(dumping.rows(TableName::views, {"view", "diagram", "container", "keyword", "view_number", "element",
                                                "element_name", "text", "x", "y", "width", "source", "target"}),
                ElementsAre("16 15 15 ClassView 1 5 Logical View::Orders::Order Order 100 250 300 - -",
                            "17 15 16 ItemLabel 2 - - Order - - - - -",
                            "18 15 15 ClassView 3 13 Logical View::Thing - - - - - -",
                            "19 15 15 InheritView 4 8 - - - - - 16 18", "20 15 15 NoteView 5 - - see - - - - -"));
}

TEST(DumpTables, TellWhereReferencesLead)
{
    const struct {
        const char* text;
        const char* row; // key, value, target, state
    } rows[] = {
        {R"(x (object Class "A" quid "01") y (object Uses_Relationship supplier "A" quidu "01"))", "quidu 01 3 found"},
        {R"(x (object Class "A" quid "01") y (object Uses_Relationship supplier "A" quidu "02"))",
         "quidu 02 3 by name"},
        {R"(x (object Class "A" quid "01") y (object Uses_Relationship supplier "B" quidu "02"))",
         "quidu 02 - missing"},
        {R"(y (object Message "m" quidu "000000000000"))", "quidu 000000000000 - none"},
        {R"(y (object State_Transition supplier_quidu "02" supplier "A") x (object Class "A"))",
         "supplier_quidu 02 4 by name"},
        {R"(y (object State_Transition client "A" client_quidu "02") x (object State "A"))",
         "client_quidu 02 - missing"},
        {R"(x (object ClassDiagram items (list diagram_item_list (object V @1) (object W @2 client @1))))",
         "client 1 4 found"},
        {R"(x (object ClassDiagram items (list diagram_item_list (object W @2 client @1))))", "client 1 - missing"},
        {R"(m (object Mechanism @1) d (object ObjectDiagram mechanism_ref @1 items (list l (object V @1))))",
         "mechanism_ref 1 3 found"},
        {"v (object V other @99999999999)", "other 99999999999 - missing"},
    };
    for (const auto& row : rows)
        EXPECT_THAT(Dumping(read(model(row.text))).rows(TableName::properties, {"key", "value", "target", "state"}),
                    Contains(row.row))
            << row.text;
}

TEST(DumpTables, KeepEveryKindOfValue)
{
    const struct {
        const char* text;
        std::vector<std::string> rows; // property, list, position, key, kind, type, value
    } rows[] = {
        {R"("a \"b\" C:\\d")", {R"(4 - - k text - a "b" C:\d)"}},
        {"\n|one\n|two\n", {"4 - - k block - one\ntwo"}},
        {"0.250000", {"4 - - k number - 0.250000"}},
        {"123456789012345678901234567890", {"4 - - k number - 123456789012345678901234567890"}},
        {"FALSE", {"4 - - k boolean - FALSE"}},
        {"Plain", {"4 - - k word - Plain"}},
        {"(1, -2)", {"4 - - k point - (1, -2)"}},
        {R"((value Text "x"))", {"4 - - k text Text x"}},
        {R"((value Text (list L)))", {"4 - - k value Text -", "5 4 0 - list L -"}},
        {"(list)", {"4 - - k list - -"}},
        {R"(("Set" 201))", {"4 - - k tuple - -", "5 4 0 - text - Set", "6 4 1 - number - 201"}},
        {"(list L (list M 1) 2)", {"4 - - k list L -", "5 4 0 - list M -", "6 5 0 - number - 1", "7 4 1 - number - 2"}},
        {R"((object O "a" "b" "c" "d"))", {"4 - 2 - name - c", "5 - 3 - name - d"}},
    };
    for (const auto& row : rows) {
        const Dumping dumping(read(model(std::string("a 1\nk ").append(row.text).append("\nz 2"))));
        std::vector<std::string> found =
            dumping.rows(TableName::properties, {"property", "list", "position", "key", "kind", "type", "value"});
        ASSERT_GE(found.size(), 4U) << row.text;
        EXPECT_EQ(found.back().substr(found.back().find(' ')), " - - z number - 2") << row.text;
        EXPECT_EQ(std::vector<std::string>(found.begin() + 3, found.end() - 1), row.rows) << row.text;
    }
}

TEST(DumpTables, SayWhereEverythingStands)
{
    const std::string text = model("a \"\xc3\xa4\" b (object O \"n\"\n c (list L\n  1 (2,\n3)))\n");
    const Dumping dumping(read(text));
    const auto pieces = [&](TableName table) {
        std::vector<std::string> result;
        for (const std::string& row : dumping.rows(table, {"line", "column", "byte", "length"})) {
            std::size_t line = 0;
            std::size_t column = 0;
            std::size_t byte = 0;
            std::size_t length = 0;
            std::istringstream(row) >> line >> column >> byte >> length;
            result.push_back(std::to_string(line) + ":" + std::to_string(column) + " " + text.substr(byte, length));
        }
        return result;
    };
    EXPECT_THAT(pieces(TableName::objects), ElementsAre("2:1 (object Petal\n    version \t42\n    charSet \t0)",
                                                        testing::StartsWith("6:1 (object Design"),
                                                        "7:9 (object O \"n\"\n c (list L\n  1 (2,\n3)))"));
    EXPECT_THAT(pieces(TableName::properties), ElementsAre("3:5 version \t42", "4:5 charSet \t0", "7:1 a \"\xc3\xa4\"",
                                                           "8:2 c (list L\n  1 (2,\n3))", "9:3 1", "9:5 (2,\n3)"));
}

// Every token of a file that says something is in a row.
TEST(DumpTables, HaveEverythingOfAFile)
{
    std::ifstream file(PETAL_SOURCE_DIR "/tests/render/models/everything.mdl", std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    std::size_t tokens = 0;
    reader::Scanner scanner(text);
    for (reader::Token token = scanner.next(); token.kind != TokenKind::end; token = scanner.next()) {
        const bool isNotation = token.text == "object" || token.text == "list" || token.text == "value";
        if (token.kind != TokenKind::open && token.kind != TokenKind::close && token.kind != TokenKind::comma)
            tokens += isNotation && token.kind == TokenKind::word ? 0 : 1;
    }
    ASSERT_GT(tokens, 1000U);
    std::size_t found = 0;
    const Dumping dumping(read(text));
    const auto count = [&](TableName table, const std::string& column, const char* valueOfTwo) {
        for (const std::string& row : dumping.rows(table, {column, "key"}))
            found += row.starts_with("- ") ? 0 : row.starts_with(valueOfTwo) ? 2 : 1;
    };
    for (const char* const column : {"keyword", "name", "second_name", "view_number", "key"})
        count(TableName::objects, column, "no value is two tokens");
    for (const char* const column : {"type", "value", "key"})
        count(TableName::properties, column, "(");
    EXPECT_EQ(found, tokens);
}

TEST(DumpTables, HaveUnitsInTheObjectsThatNameThem)
{
    const TemporaryFolder folder;
    folder.write("m.mdl", logicalView(R"((object Class_Category "U" is_unit TRUE file_name "$curdir\\u.cat" quid "0C")
(object Class_Category "V" is_unit TRUE file_name "none.cat" quid "0D"))"));
    folder.write("u.cat", std::string(petalHeader).append(R"((object Class_Category "U" quid "0C" logical_models (list l
(object Class "A" quid "0E"))))"));
    const Dumping dumping{reader::Document(folder / "m.mdl")};
    EXPECT_THAT(dumping.rows(TableName::files, {"file", "unit_of"}), ElementsAre("1 -", "2 4"));
    EXPECT_THAT(dumping.rows(TableName::missingUnits, {"object", "file_name"}), ElementsAre("8 none.cat"));
    EXPECT_THAT(dumping.rows(TableName::objects, {"object", "parent", "keyword", "name", "file"}),
                ElementsAre("1 - Petal - 1", "2 - Design Logical View 1", "3 2 Class_Category Logical View 1",
                            "4 3 Class_Category U 1", "5 4 Petal - 2", "6 4 Class_Category U 2", "7 6 Class A 2",
                            "8 3 Class_Category V 1", "9 3 ClassDiagram Main 1"));
    EXPECT_THAT(dumping.rows(TableName::elements, {"element", "owner", "qualified_name"}),
                ElementsAre("2 - -", "3 2 Logical View", "6 3 Logical View::U", "7 6 Logical View::U::A",
                            "8 3 Logical View::V", "9 3 Logical View::Main"));
    EXPECT_THAT(dumping.rows(TableName::properties, {"object", "key", "value"}),
                Contains("4 file_name $curdir\\u.cat"));
}

TEST(DumpTables, TellWhatIsWrongWithAFile)
{
    const Dumping dumping(read("(object Design \"D\" a (list l 1"));
    EXPECT_THAT(dumping.rows(TableName::findings, {"severity", "kind", "file", "line", "column"}),
                ElementsAre("warning header 1 1 1", "error syntax 1 1 31"));
    EXPECT_THAT(dumping.rows(TableName::properties, {"object", "list", "value"}), ElementsAre("1 - -", "1 1 1"));
}

// Names of all that is in something long would be long together.
TEST(DumpTables, HaveNoLongQualifiedNames)
{
    const std::string longest(dump::Elements::longestName - 3, 'n');
    for (const bool isTooLong : {false, true}) {
        const std::string name = longest + (isTooLong ? "n" : "");
        const Dumping dumping(read(model("x (object Class_Category \"" + name + "\" y (object Class \"C\"))")));
        EXPECT_THAT(dumping.rows(TableName::elements, {"qualified_name"}),
                    ElementsAre("-", name, isTooLong ? "-" : name + "::C"));
    }
}

} // namespace
