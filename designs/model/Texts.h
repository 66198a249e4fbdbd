#pragma once

#include "designs/model/Design.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Pieces of text that several formats write alike.

namespace design {

/// "1", "0..*", "1..n", "*", with or without brackets and blanks. The numbers of a text that is none of these are those
/// of "0..*", and `text` keeps it. Empty text: none.
[[nodiscard]] std::optional<Multiplicity> parseMultiplicity(std::string_view text);

/// As diagrams show it: "1", "0..1", "*", or the text of the file.
[[nodiscard]] std::string textOf(const Multiplicity& multiplicity);

/// "#rrggbb" or "#rgb"; none for anything else.
[[nodiscard]] std::optional<std::uint32_t> parseColour(std::string_view text);

/// Without blanks at both ends.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// Whether it is UTF-8 without U+0000.
[[nodiscard]] bool isWellFormed(std::string_view text);

/// The text with every byte that is not UTF-8 taken as Windows-1252, and U+0000 left out.
[[nodiscard]] std::string mended(std::string_view text);

} // namespace design
