#pragma once

#include "compare/facts/Snapshot.h"

namespace compare {

/// Finds out which elements of two states are the same, and sets `Node::partner`. What has its kind, name and owner is
/// the same; what has another name or another owner is known by its quid, or else by what is in it. Quids come last
/// where the bridge wrote both files, since it numbers all elements anew each time. Takes hardly longer than
/// sorting.
void pair(Snapshot& before, Snapshot& after);

} // namespace compare
