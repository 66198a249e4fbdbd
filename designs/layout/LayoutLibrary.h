#pragma once

#include "designs/layout/Graph.h"

#include <string>

namespace design {

/// What libpetal-layout.so does.
struct LayoutFunctions {
    bool (*placeInLayers)(Graph& graph, bool isBrief);
    std::string (*versions)(); ///< of what it calls: `Graphviz 2.42.4`
};

/// Opens the library at the first call. Throws std::runtime_error when there is none.
[[nodiscard]] const LayoutFunctions& layoutLibrary();

} // namespace design

/// Its only name. It is opened by that, not linked.
extern "C" [[gnu::visibility("default")]] const design::LayoutFunctions petalLayoutFunctions;
