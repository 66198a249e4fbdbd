#pragma once

#include "compare/changes/Changes.h"

#include <cstdint>
#include <string>
#include <vector>

namespace browse {

/// What happened to a line of a sheet: as `compare::Sort`, or nothing.
enum class RowSort : std::uint8_t { added, removed, changed, moved, same };

/// A line of two sheets that stand side by side.
struct ChangedRow {
    RowSort sort = RowSort::same;
    bool isInside = false; ///< it tells something of the line above it
    std::string label;     ///< what the values are called; empty where they say it themselves
    std::string before;
    std::string after;
};

/// An element with a sheet of its own of which something is different. What belongs to it and has none, as attributes
/// and relations, is told on its sheet.
struct ChangedSheet {
    std::uint32_t old = compare::nobody;
    std::uint32_t fresh = compare::nobody;
    std::vector<const compare::Change*> changes; ///< of it, and of what is told on its sheet
};

/// The sheets in the order in which the changes are told. Changes of diagrams are on none.
[[nodiscard]] std::vector<ChangedSheet> changedSheets(const compare::Comparison& states,
                                                      const std::vector<compare::Change>& changes);

/// What both sheets say, line by line. Properties of tools that are the same are left out.
[[nodiscard]] std::vector<ChangedRow> rowsOf(const compare::Comparison& states, const ChangedSheet& sheet);

} // namespace browse
