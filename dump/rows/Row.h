#pragma once

#include "dump/facts/Elements.h"
#include "dump/rows/Schema.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace dump {

/// Cells one after the other, and the texts in them. Used for one row after the other.
class Row {
public:
    Row() = default;
    Row(const Row&) = delete;
    Row& operator=(const Row&) = delete;
    ~Row() = default;

    Row& number(std::size_t value) { return add(static_cast<std::int64_t>(value)); }
    /// An object by its number; 0 is none.
    Row& object(Elements::Number number) { return number == 0 ? none() : this->number(number); }
    Row& real(std::optional<double> value) { return value ? add(*value) : none(); }
    /// A text that stays until the row is given.
    Row& text(std::string_view text) { return add(text); }
    Row& text(std::string text)
    {
        texts[count] = std::move(text);
        return add(std::string_view(texts[count]));
    }
    /// The same, but an empty text is none.
    Row& nonEmpty(std::string_view text) { return text.empty() ? none() : this->text(text); }
    Row& nonEmpty(std::string text) { return text.empty() ? none() : this->text(std::move(text)); }
    Row& none() { return add(std::monostate()); }

    /// Gives the row to `sink`; the next one begins.
    void give(const RowSink& sink, TableName table) { sink(table, {cells.data(), std::exchange(count, 0)}); }

private:
    static constexpr std::size_t mostCells = 19;

    Row& add(Cell cell)
    {
        cells.at(count++) = cell;
        return *this;
    }

    std::array<Cell, mostCells> cells;
    std::array<std::string, mostCells> texts;
    std::size_t count = 0;
};

} // namespace dump
