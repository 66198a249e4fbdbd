#pragma once

#include "compare/report/Report.h"

namespace compare {

/// Everything that somebody has said in a model, one fact a line, in an order that does not change when a tool orders
/// anew what has no order: what a textual comparison of two states can show.
void writeFullText(const Snapshot& state, const Sink& sink);

} // namespace compare
