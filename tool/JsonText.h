#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Places in a JSON text, worked out only when there is an error to report.

/// Line and column as editors count them, from 1; a column is a character, not a byte.
struct LineAndColumn {
    std::size_t line;
    std::size_t column;
};

/// Where the byte at `offset` stands.
[[nodiscard]] LineAndColumn lineAndColumnAt(std::string_view text, std::size_t offset);

/// JSON pointer of the value or key that begins at `offset`; the text must be well formed up to there.
[[nodiscard]] std::string pointerAt(std::string_view text, std::size_t offset);

/// Offset of the first byte that no JSON text can hold where it stands: a byte that is not UTF-8, a control character
/// in a string, or the start of a string that never ends. Past the end when there is none.
[[nodiscard]] std::size_t firstStrayByte(std::string_view text);

/// Offset of the first closing bracket that closes nothing or something else, or of what follows the outermost closing
/// bracket; the end of the text when it is only that brackets stay open.
[[nodiscard]] std::size_t firstMisplacedByte(std::string_view text);

/// Whether `token` is a number in JSON's notation.
[[nodiscard]] bool isJsonNumber(std::string_view token);

/// `text` in JSON notation, with its double quotes.
[[nodiscard]] std::string jsonQuoted(std::string_view text);
