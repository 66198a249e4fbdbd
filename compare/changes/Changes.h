#pragma once

#include "compare/facts/Snapshot.h"

#include <cstdint>
#include <string>
#include <vector>

namespace compare {

enum class Sort : std::uint8_t {
    added,   ///< an element, a diagram, or a view (it is shown)
    removed, ///< the same (it is hidden)
    changed, ///< a fact, a name, size, course or looks of a view
    moved,   ///< to another owner, to another place in a list or on a diagram
};

/// One thing that is different.
struct Change {
    Sort sort = Sort::changed;
    bool isOfDiagram = false;     ///< it concerns pictures, not the model
    std::uint32_t old = nobody;   ///< the element or diagram in the old state, if it is there
    std::uint32_t fresh = nobody; ///< the same in the new one
    std::string view;             ///< what the view shows, if it is a view that is different
    std::string what;             ///< "name", "owner", "order", key of a fact, or "shown", "moved" ... of a view
    std::string before;           ///< value in the old state, if it has one
    std::string after;
    const reader::Object* oldView = nullptr; ///< the view in the old state, if one is different and was there
    const reader::Object* freshView = nullptr;
};

struct Comparison {
    const Snapshot& before;
    const Snapshot& after;
    Depth depth;
    std::int64_t nearness = 0; ///< how far places may differ and still be the same, in the units of the file
};

[[nodiscard]] inline bool isView(const Change& change)
{
    return !change.view.empty();
}

/// Whether an element or a diagram is new.
[[nodiscard]] inline bool isComing(const Change& change)
{
    return change.old == nobody;
}

/// Whether it is gone.
[[nodiscard]] inline bool isGoing(const Change& change)
{
    return change.fresh == nobody;
}

/// The object in the new state, or in the old one if it is gone.
[[nodiscard]] inline const reader::Object& objectOf(const Comparison& states, const Change& change)
{
    return *(isGoing(change) ? states.before[change.old] : states.after[change.fresh]).object;
}

/// All changes in the order of the new state; what is gone stands behind what is said of its owner itself. The elements
/// must be paired. What follows from another change is left out: all that belongs to what is added or removed, the
/// views of what is removed, the ends of lines at boxes that have moved.
[[nodiscard]] std::vector<Change> changesOf(const Comparison& states);

/// The node of the new state below which a change is told.
[[nodiscard]] std::uint32_t placeOf(const Change& change, const Comparison& states);

} // namespace compare
