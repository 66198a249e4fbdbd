#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// Pieces of PlantUML. Its texts are markup, so whatever stands in a name and means something there goes out as
/// `<U+0022>`: quotes, backslashes, calls of the preprocessor, tags, what makes letters bold, what ends a note.

namespace design::plantuml {

/// A text within a line; line ends become `\n`, other control characters blanks.
[[nodiscard]] std::string escaped(std::string_view text);
/// The same in quotes.
[[nodiscard]] std::string inQuotes(std::string_view text);
/// A text that a line begins with.
[[nodiscard]] std::string escapedStart(std::string_view text);
/// An escaped text without angle brackets of its own, for between such.
[[nodiscard]] std::string withoutBrackets(std::string_view escapedText);
/// ` <<entity>>`, or nothing.
[[nodiscard]] std::string stereotyped(std::string_view stereotype);
/// ` : text`, or nothing.
[[nodiscard]] std::string labelled(std::string_view text);
/// `#FF8000`
[[nodiscard]] std::string colour(std::uint32_t rgb);
/// ` #FF8000`, or nothing for none and for the usual one.
[[nodiscard]] std::string ownColour(std::optional<std::uint32_t> rgb, std::optional<std::uint32_t> usual);

/// Comments, a line each, which nobody sees in the picture. An empty text has none.
void addComment(std::string& out, std::string_view indentation, std::string_view text);
/// The lines of a note, without the words around them.
void addNoteText(std::string& out, std::string_view text);

/// Names that a line would be taken for something else with, in small letters.
[[nodiscard]] std::span<const std::string_view> reservedWords();

/// What a line ends with.
enum class Head : std::uint8_t {
    None,
    Arrow,
    Triangle,
    Diamond,
    FilledDiamond,
};

} // namespace design::plantuml
