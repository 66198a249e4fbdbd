#pragma once

#include <cstdint>

/// The places of what the lists of the page of changes say, for its script, too.

namespace browse {

enum class LineField : std::uint8_t { sort, kind, text, sheet };
enum class SheetField : std::uint8_t { title, owner, icon, group, sort, lines, rows };
enum class RowField : std::uint8_t { sort, isInside, label, before, after };
enum class PairField : std::uint8_t { title, icon, sort, lines, before, after, marksBefore, marksAfter };

} // namespace browse
