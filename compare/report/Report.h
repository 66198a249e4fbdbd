#pragma once

#include "compare/changes/Changes.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace compare {

/// Takes what was written, piece by piece.
using Sink = std::function<void(std::string_view piece)>;

/// The changes as lines, below the packages, classes and diagrams they belong to; see docs/diff.md. `inColours` is for
/// terminals.
void writeText(const Comparison& states, const std::vector<Change>& changes, bool inColours, const Sink& sink);

/// How many elements of each kind came, went, changed and moved.
void writeCounts(const Comparison& states, const std::vector<Change>& changes, const Sink& sink);

/// The changes and the counts as JSON.
void writeJson(const Comparison& states, const std::vector<Change>& changes, const Sink& sink);

} // namespace compare
