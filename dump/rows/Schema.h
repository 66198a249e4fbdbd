#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <variant>

/// The tables of a dump. docs/dump.md describes them to those who ask; what changes here changes there, and what
/// breaks a query gets a new version.

namespace dump {

inline constexpr std::int64_t schemaVersion = 1;

enum class TableName : std::uint8_t {
    dump,
    files,
    missingUnits,
    findings,
    objects,
    properties,
    elements,
    relations,
    views,
};

enum class ColumnType : std::uint8_t { integer, real, text };

struct Column {
    std::string_view name;
    ColumnType type;
    bool isNumberOfRow = false; ///< each row has its own, and later rows have greater ones
    bool isLookedUp = false;    ///< rows are often asked for by it
};

struct Table {
    std::string_view name;
    std::span<const Column> columns;
};

/// All tables, in the order of `TableName`.
[[nodiscard]] std::span<const Table> tables();
[[nodiscard]] const Table& table(TableName name);

/// One value of a row; the first alternative is that there is none. Texts are UTF-8.
using Cell = std::variant<std::monostate, std::int64_t, double, std::string_view>;

/// Takes a row, with a cell for each column of its table. Texts need not stay.
using RowSink = std::function<void(TableName, std::span<const Cell>)>;

} // namespace dump
