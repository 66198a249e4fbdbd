#pragma once

#include "compare/facts/Snapshot.h"

namespace compare {

/// What a reference leads to, as a number that is the same in both states when it is the same element. Elements must be
/// paired before. `isNew` says which state `from` is in.
[[nodiscard]] std::uint64_t targetKey(const Snapshot& state, bool isNew, const reader::Object& from);

/// Finds out which elements of two states are the same, and sets `Node::partner`. Names come before quids, since an
/// export may number all elements anew; what has another name or another owner is known by its quid, or else by what
/// is in it. Takes hardly longer than sorting.
void pair(Snapshot& before, Snapshot& after);

} // namespace compare
