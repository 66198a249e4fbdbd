#include "text/JsonFault.h"
#include "text/JsonPointer.h"
#include "text/JsonWriter.h"
#include "text/NearestName.h"
#include "text/Places.h"

#include <gmock/gmock.h>
#include <string>
#include <string_view>

namespace {

TEST(Json, KnowsNumbersAsJsonDoes)
{
    for (const char* const number : {"0", "-0", "10", "-12", "0.5", "1.25e10", "1E+3", "1e-3", "-0.0e0"})
        EXPECT_TRUE(text::isJsonNumber(number)) << number;
    for (const char* const other : {"", "-", "+1", "01", "-01", "1.", ".5", "1e", "1e+", "0x1", "1 ", " 1", "1.5.2",
                                    "NaN", "--1", "1-", "Infinity"})
        EXPECT_FALSE(text::isJsonNumber(other)) << other;
}

TEST(Json, QuotesEveryByte)
{
    EXPECT_EQ(text::jsonQuoted("a\"b\\c\nd\r\t\x01\x1F/\x7F\u00e9"),
              "\"a\\\"b\\\\c\\nd\\u000d\\u0009\\u0001\\u001f/\\u007f\u00e9\"");
    EXPECT_EQ(text::jsonQuoted(std::string_view("\0", 1)), R"("\u0000")");
    EXPECT_EQ(text::jsonQuoted(""), R"("")");
}

TEST(Places, CountLinesAndCharacters)
{
    const std::string_view text = "a\u00e9\u20ac\r\nb";
    const struct {
        std::size_t offset;
        std::size_t line;
        std::size_t column;
    } rows[] = {{0, 1, 1}, {1, 1, 2}, {3, 1, 3}, {6, 1, 4}, {7, 1, 5}, {8, 2, 1}, {9, 2, 2}};
    for (const auto& row : rows) {
        const auto [line, column] = text::lineAndColumnAt(text, row.offset);
        EXPECT_EQ(line, row.line) << row.offset;
        EXPECT_EQ(column, row.column) << row.offset;
    }
}

TEST(Places, AreTheSameFromAnIndex)
{
    std::string text;
    while (text.size() < 200000)
        text += "a\u00e9\u20ac b\n\n" + std::string(text.size() % 211, 'x');
    const text::PlaceIndex index(text);
    for (std::size_t offset = 0; offset <= text.size(); offset += 4093) {
        const text::LineAndColumn expected = text::lineAndColumnAt(text, offset);
        EXPECT_EQ(index.at(offset).asText(), expected.asText()) << offset;
    }
    EXPECT_EQ(text::PlaceIndex("").at(0).asText(), "1:1");
}

std::string writtenWith(const text::JsonLayout& layout)
{
    std::string result;
    text::JsonWriter json(result, layout);
    json.beginObject();
    json.member("a", 1);
    json.beginList("b");
    json.value(true);
    json.beginObject();
    json.member("c", "<\n");
    json.endObject();
    json.endList();
    json.beginList("d");
    json.endList();
    json.member("e", 0.5);
    json.key("f");
    json.written("null");
    json.endObject();
    return result;
}

TEST(Json, IsLaidOutAsWanted)
{
    EXPECT_EQ(writtenWith({}), R"({"a": 1, "b": [true, {"c": "<\n"}], "d": [], "e": 0.500000, "f": null})");
    EXPECT_EQ(writtenWith({.isDense = true, .isInPage = true}),
              R"({"a":1,"b":[true,{"c":"\u003c\n"}],"d":[],"e":0.500000,"f":null})");
    EXPECT_EQ(writtenWith({.deepestLine = 2, .indentation = 2}),
              "{\n  \"a\": 1,\n  \"b\": [\n    true,\n    {\"c\": \"<\\n\"}\n  ],\n  \"d\": [],\n  \"e\": 0.500000,\n"
              "  \"f\": null\n}\n");
}

TEST(Json, IsToldWhyItIsNone)
{
    const struct {
        std::string_view json;
        std::size_t offset;
        std::string_view message;
    } rows[] = {
        {"", 0, "expected a value, found the end of the text"},
        {"[1, 2", 5, "expected a comma or ], found the end of the text (the [ of 1:1 is open)"},
        {"{\"a\": [1,\n{", 11,
         "expected a key in double quotes or }, found the end of the text (the { of 2:1 is open)"},
        {"[1 2]", 3, "expected a comma or ], found the number 2"},
        {"{\"a\" 1}", 5, "expected a colon, found the number 1"},
        {"{\"a\": 1 \"b\": 2}", 8, "expected a comma or }, found \""},
        {"[1, ]", 4, "expected a value, found ] behind a comma"},
        {"{\"a\": 1,}", 8, "expected a key in double quotes, found } behind a comma"},
        {"{\"a\": 1]", 7, "expected a comma or }, found ]"},
        {"[] []", 3, "expected the end of the text, found ["},
        {"[1] // one", 4, "expected the end of the text, found a comment, which JSON does not have"},
        {"[/* one */ 1]", 1, "expected a value or ], found a comment, which JSON does not have"},
        {"['a']", 1, "expected a value or ], found a single quote; texts stand in double quotes"},
        {"{a: 1}", 1, "expected a key in double quotes or }, found a"},
        {"[True]", 1, "expected a value or ], found True; JSON has it in small letters"},
        {"[080]", 1, "expected a value or ], found 080, which is no number in JSON"},
        {"[+1]", 1, "expected a value or ], found +1, which is no number in JSON"},
        {"[\"a\nb\"]", 3, "expected a closing double quote in the same line, found the end of the line"},
        {"[\"a", 1, "expected a closing double quote, found none up to the end of the text"},
        {"[\"a\x01\"]", 3, "expected a text without control characters, found the control character 0x01"},
        {"[\"a\xff\"]", 3, "expected UTF-8, found the byte 0xFF"},
        {"[\xff]", 1, "expected a value or ], found the byte 0xFF, which is not UTF-8"},
        {R"(["\x"])", 2,
         R"(expected one of the escapes \" \\ \/ \b \f \n \r \t and \u with four hexadecimal digits, found \x)"},
        {R"(["\u12"])", 2,
         R"(expected one of the escapes \" \\ \/ \b \f \n \r \t and \u with four hexadecimal digits, found \u12)"},
        {"[\n<<<<<<< HEAD", 2, "expected a value or ], found a mark of a merge conflict that was not resolved"},
        {"[[[[1]]]]", 3, "expected values that lie in each other at most 3 deep, found one more"},
    };
    for (const auto& row : rows) {
        const std::optional<text::JsonFault> fault = text::findJsonFault(row.json, 3);
        ASSERT_TRUE(fault) << row.json;
        EXPECT_EQ(fault->offset, row.offset) << row.json;
        EXPECT_EQ(fault->message(row.json), row.message) << row.json;
    }
    for (const std::string_view json :
         {"null", " [ ] ", R"({"a": [1, -2.5e3, "\u00e9\n", true], "": {}})", "\"\u00e9\""})
        EXPECT_FALSE(text::findJsonFault(json, 3)) << json;
}

TEST(Json, PointsToValuesAndKeys)
{
    const std::string_view json = R"({"a": [1, {"b/~\n": "x, [", "c": 2}], "d": 3})";
    const struct {
        std::string_view at;
        std::string_view pointer;
    } rows[] = {{"{", ""}, {"1", "/a/0"}, {"{\"b", "/a/1"}, {"\"x", "/a/1/b~1~0\\n"}, {"2", "/a/1/c"}, {"\"d", "/d"}};
    for (const auto& row : rows)
        EXPECT_EQ(text::jsonPointerAt(json, json.find(row.at)), row.pointer) << row.at;
}

TEST(Json, FindsMembersOfAnObject)
{
    const std::string_view json = R"(x{ "a" : [1, {"b": 2}], "b" : "}" ,"c": {"d": []} })";
    const struct {
        std::string_view key;
        std::string_view value;
    } rows[] = {{"a", "[1, {\"b\": 2}]"}, {"b", "\"}\""}, {"c", "{\"d\": []}"}};
    for (const auto& row : rows) {
        const auto member = text::findJsonMember(json, 1, row.key);
        ASSERT_TRUE(member) << row.key;
        EXPECT_EQ(json.substr(member->key + 1, 1), row.key);
        EXPECT_EQ(json.substr(member->value, text::endOfJsonValue(json, member->value) - member->value), row.value);
    }
    EXPECT_FALSE(text::findJsonMember(json, 1, "d"));
    EXPECT_FALSE(text::findJsonMember("{}", 0, "a"));
}

TEST(NearestName, IsTheOneThatWasMeant)
{
    constexpr std::string_view known[] = {"name", "notes", "modelLevel", "stereotype", "ea"};
    const struct {
        const char* name;
        const char* nearest;
    } rows[] = {{"naem", "name"},
                {"NAME", "name"},
                {"nam", "name"},
                {"note", "notes"},
                {"private", ""},
                {"zzz", ""},
                {"x", ""},
                {"eb", ""},
                {"EA", "ea"},
                {"modellevel", "modelLevel"},
                {"mdolLevel", "modelLevel"},
                {"sterotype", "stereotype"},
                {"notez", "notes"},
                {"namee", "name"}};
    for (const auto& row : rows)
        EXPECT_EQ(text::nearestName(row.name, known).value_or(""), row.nearest) << row.name;
    EXPECT_FALSE(text::nearestName("name", {}).has_value());
    EXPECT_FALSE(text::nearestName(std::string(10'000'000, 'n'), known).has_value()) << "and that at once";
}

} // namespace
