#include "JsonText.h"
#include "NearestName.h"

#include <gmock/gmock.h>
#include <string>
#include <string_view>

namespace {

TEST(JsonText, KnowsNumbersAsJsonDoes)
{
    for (const char* const number : {"0", "-0", "10", "-12", "0.5", "1.25e10", "1E+3", "1e-3", "-0.0e0"})
        EXPECT_TRUE(isJsonNumber(number)) << number;
    for (const char* const other : {"", "-", "+1", "01", "-01", "1.", ".5", "1e", "1e+", "0x1", "1 ", " 1", "1.5.2",
                                    "NaN", "--1", "1-", "Infinity"})
        EXPECT_FALSE(isJsonNumber(other)) << other;
}

TEST(JsonText, QuotesEveryByte)
{
    EXPECT_EQ(jsonQuoted("a\"b\\c\nd\r\t\x01\x1F/\x7F\u00e9"),
              "\"a\\\"b\\\\c\\nd\\u000d\\u0009\\u0001\\u001f/\x7F\u00e9\"");
    EXPECT_EQ(jsonQuoted(std::string_view("\0", 1)), R"("\u0000")");
    EXPECT_EQ(jsonQuoted(""), R"("")");
}

TEST(JsonText, CountsLinesAndCharacters)
{
    const std::string_view text = "a\u00e9\u20ac\r\nb";
    const struct {
        std::size_t offset;
        std::size_t line;
        std::size_t column;
    } rows[] = {{0, 1, 1}, {1, 1, 2}, {3, 1, 3}, {6, 1, 4}, {7, 1, 5}, {8, 2, 1}, {9, 2, 2}};
    for (const auto& row : rows) {
        const auto [line, column] = lineAndColumnAt(text, row.offset);
        EXPECT_EQ(line, row.line) << row.offset;
        EXPECT_EQ(column, row.column) << row.offset;
    }
}

TEST(NearestName, IsTheOneThatWasMeant)
{
    constexpr std::string_view known[] = {"name", "notes", "modelLevel", "stereotype"};
    const struct {
        const char* name;
        const char* nearest;
    } rows[] = {
        {"naem", "name"},           {"NAME", "name"}, {"nam", "name"}, {"note", "notes"}, {"modellevel", "modelLevel"},
        {"sterotype", "stereotype"}};
    for (const auto& row : rows)
        EXPECT_EQ(nearestName(row.name, known).value_or(""), row.nearest) << row.name;
    EXPECT_FALSE(nearestName("name", {}).has_value());
    EXPECT_TRUE(nearestName(std::string(10'000'000, 'n'), known).has_value()) << "and that at once";
}

} // namespace
