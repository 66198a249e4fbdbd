#pragma once

#include <span>
#include <string>
#include <string_view>

/// Pieces of Mermaid. What stands in a name and means something to it goes out as `#60;`, which it shows as the
/// character with that number.

namespace design::mermaid {

/// A text within a line; line ends become `lineEnd`, other control characters blanks.
[[nodiscard]] std::string escaped(std::string_view text, std::string_view lineEnd = " ");
/// The same in quotes, with a blank for nothing.
[[nodiscard]] std::string inQuotes(std::string_view text, std::string_view lineEnd = " ");
/// ` : text`, or nothing.
[[nodiscard]] std::string labelled(std::string_view text);

/// A comment, a line each.
void addComment(std::string& out, std::string_view indentation, std::string_view text);

/// ---
/// title: "Main"
/// ---
/// and a line with the kind of the diagram.
[[nodiscard]] std::string headOf(std::string_view title, std::string_view owner, std::string_view kind);

/// Names that a line would be taken for something else with, in small letters.
[[nodiscard]] std::span<const std::string_view> reservedWords();

} // namespace design::mermaid
