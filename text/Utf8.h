#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// UTF-8: walking through it, cutting it, and making something harmless of texts that come from outside.

namespace text {

inline constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
inline constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD"; // U+FFFD

/// Whether a byte goes on with a character that an earlier byte began.
[[nodiscard]] constexpr bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// Whether all of it is UTF-8: without overlong forms, surrogates, and what lies past U+10FFFF.
[[nodiscard]] bool isUtf8(std::string_view text);

/// Number of bytes of the character at the start of a text that is not empty; 0 when there is none.
[[nodiscard]] std::size_t characterLength(std::string_view text);

/// The code point of a whole character.
[[nodiscard]] char32_t codePoint(std::string_view character);

/// Appends a character. `codePoint` must be one: no surrogate, and at most U+10FFFF.
void appendCharacter(std::string& text, char32_t codePoint);

/// Number of characters; each byte that is none counts as one.
[[nodiscard]] std::size_t countCharacters(std::string_view text);

/// The beginning of a text, of at most `mostBytes`, without cutting a character.
[[nodiscard]] std::string_view beginningOf(std::string_view text, std::size_t mostBytes);

/// The same with "..." behind it where something was left out.
[[nodiscard]] std::string shortened(std::string_view text, std::size_t mostBytes);

/// Whether it is UTF-8 without U+0000, as most files that hold text demand.
[[nodiscard]] bool isWellFormed(std::string_view text);

/// The text with every byte that is not UTF-8 taken as Windows-1252, and U+0000 left out.
[[nodiscard]] std::string mended(std::string_view text);

/// What a character does to a terminal or a picture.
enum class CharacterKind : std::uint8_t {
    Shown,
    Blank,   ///< a tab, a line end, a separator of lines or paragraphs
    Hostile, ///< a control character, a mark that turns the direction of writing, or a code point that is no character
};
[[nodiscard]] CharacterKind kindOf(char32_t codePoint);

/// A text from outside as a message, a log or a terminal may hold it: one line of UTF-8 that steers nothing. Line ends
/// and tabs become blanks, what is hostile a question mark, and bytes that are not UTF-8 are taken as Windows-1252.
[[nodiscard]] std::string onOneLine(std::string_view text);

} // namespace text
