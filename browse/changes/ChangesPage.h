#pragma once

#include "browse/Packing.h"
#include "compare/changes/Changes.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace browse {

struct ChangesPageOptions {
    std::string oldName; ///< what the states are called: usually the names of their files
    std::string newName;
    /// The picture of a diagram of one of the states, as for `PageOptions::picture`.
    std::function<std::string(const compare::Snapshot& state, const reader::Diagram& diagram)> picture;
};

/// Writes what is different in two states of a model as one HTML page, complete in itself: all changes, each changed
/// sheet and each changed diagram as it was and as it is.
void writeChangesPage(const compare::Comparison& states, const std::vector<compare::Change>& changes,
                      const ChangesPageOptions& options, const Sink& sink);

} // namespace browse
