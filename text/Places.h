#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace text {

/// Line and column as editors count them, from 1; a column is a character, not a byte.
struct LineAndColumn {
    std::size_t line = 1;
    std::size_t column = 1;

    /// "12:5"
    [[nodiscard]] std::string asText() const;
};

/// Where the byte at `offset` stands.
[[nodiscard]] LineAndColumn lineAndColumnAt(std::string_view text, std::size_t offset);

/// The same for a text that is asked for many places: what lies before a page of it is counted once.
class PlaceIndex {
public:
    /// The bytes of `text` must stay.
    explicit PlaceIndex(std::string_view theText);

    [[nodiscard]] LineAndColumn at(std::size_t offset) const;

private:
    std::string_view text;
    std::vector<LineAndColumn> pages; // where each begins
};

/// The same for places that are asked for in the order of the text, which is then walked through once.
class PlaceCursor {
public:
    /// The bytes of `text` must stay.
    explicit PlaceCursor(std::string_view theText) : text(theText) {}

    /// Where the byte at `offset` stands, which is none before that of the call before.
    [[nodiscard]] LineAndColumn at(std::size_t offset);

private:
    std::string_view text;
    std::size_t last = 0;
    LineAndColumn place; // of the byte at `last`
};

} // namespace text
