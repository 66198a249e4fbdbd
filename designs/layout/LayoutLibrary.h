#pragma once

#include "designs/layout/Graph.h"

namespace design {

/// What libpetal-layout.so does.
struct LayoutFunctions {
    bool (*placeInLayers)(Graph& graph, bool isBrief);
};

} // namespace design

/// Its only name. It is opened by that, not linked.
extern "C" [[gnu::visibility("default")]] const design::LayoutFunctions petalLayoutFunctions;
