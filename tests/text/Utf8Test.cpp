#include "text/Utf8.h"
#include "text/Words.h"

#include <gmock/gmock.h>
#include <string>
#include <string_view>

namespace {

// Whether the text is UTF-8, told by walking through it.
bool canBeWalked(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t length = text::characterLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

TEST(Utf8, IsWalkedAsItIsChecked)
{
    EXPECT_TRUE(text::isUtf8({})) << "nothing at all";
    // Every pair of bytes, in front of what could make it whole.
    for (unsigned first = 0; first < 0x100; ++first) {
        for (unsigned second = 0; second < 0x100; ++second) {
            const std::string pair = {static_cast<char>(first), static_cast<char>(second)};
            for (const char* const rest : {"", "\x80", "\x80\x80", "\xBF\xBF", "\xBFx", "x"})
                EXPECT_EQ(canBeWalked(pair + rest), text::isUtf8(pair + rest)) << first << ' ' << second << rest;
        }
    }
}

TEST(Utf8, TakesCharactersApartAndPutsThemTogether)
{
    for (char32_t codePoint = 0; codePoint <= 0x10FFFF; codePoint += codePoint < 0x3000 ? 1 : 37) {
        if (codePoint >= 0xD800 && codePoint < 0xE000)
            continue;
        std::string character;
        text::appendCharacter(character, codePoint);
        ASSERT_EQ(text::characterLength(character), character.size()) << static_cast<unsigned>(codePoint);
        ASSERT_EQ(text::codePoint(character), codePoint);
    }
}

TEST(Utf8, IsCutBetweenCharacters)
{
    const std::string_view text = "a\u00e9\u20ac\U0001F600z";
    const std::size_t whole[] = {0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10, 11, 11};
    for (std::size_t most = 0; most < std::size(whole); ++most)
        EXPECT_EQ(text::beginningOf(text, most).size(), whole[most]) << most;
    EXPECT_EQ(text::shortened(text, 2), "a...");
    EXPECT_EQ(text::shortened(text, 11), text);
    EXPECT_EQ(text::countCharacters(text), 5U);
}

TEST(Utf8, IsMendedWhereItIsNone)
{
    const struct {
        std::string_view text;
        std::string_view mended;
    } rows[] = {
        {"caf\xE9", "caf\u00e9"},
        {"caf\u00e9", "caf\u00e9"},
        {"\x80 \x93x\x94", "\u20ac \u201cx\u201d"},
        {"\x81\x8D\x8F\x90\x9D", "\u0081\u008d\u008f\u0090\u009d"},
        {"a\xE2\x82", "a\u00e2\u201a"},
        {std::string_view("a\0b", 3), "ab"},
        {"\xED\xA0\x80", "\u00ed\u00a0\u20ac"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(text::mended(row.text), row.mended);
}

TEST(Utf8, BecomesALineThatSteersNothing)
{
    const struct {
        const char* what;
        std::string_view text;
        std::string_view line;
    } rows[] = {
        {"lines", "a\r\nb\tc", "a  b c"},
        {"separators", "a\u2028b\u2029c", "a b c"},
        {"escape", "\x1b[31mred", "?[31mred"},
        {"later controls", "a\u009bb\u0085c", "a?b?c"},
        {"direction", "a\u202eb\u2066c\u200fd\u061ce", "a?b?c?d?e"},
        {"no characters", "a\ufffeb\uffffc\ufdd0d\U0001FFFFe", "a?b?c?d?e"},
        {"null", std::string_view("a\0b", 3), "a?b"},
        {"other encoding", "caf\xE9 \x9b", "caf\u00e9 \u203a"},
        {"ordinary", "Caf\u00e9 \u4e2d\u6587 \U0001F600", "Caf\u00e9 \u4e2d\u6587 \U0001F600"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(text::onOneLine(row.text), row.line) << row.what;
}

TEST(Words, LoseWhatSurroundsThem)
{
    EXPECT_EQ(text::trimmed(" \t\r\na b\f\v"), "a b");
    EXPECT_EQ(text::trimmed(" \n "), "");
    EXPECT_EQ(text::lowerCase("AZ\u00c9z-1"), "az\u00c9z-1");
}

} // namespace
