#pragma once

#include "compare/changes/Changes.h"

#include <cstdint>
#include <map>
#include <vector>

namespace browse {

/// What happened to the views of a diagram, by their numbers.
using Marks = std::map<std::uint32_t, compare::Sort>;

/// A diagram whose picture is different.
struct ChangedDiagram {
    std::uint32_t old = compare::nobody;
    std::uint32_t fresh = compare::nobody;
    std::vector<const compare::Change*> changes;
    Marks before; ///< in the old picture
    Marks after;
};

/// The diagrams of which something is told, and those that show what is gone. In their pictures what shows a changed
/// element is marked, too.
[[nodiscard]] std::vector<ChangedDiagram> changedDiagrams(const compare::Comparison& states,
                                                          const std::vector<compare::Change>& changes);

} // namespace browse
