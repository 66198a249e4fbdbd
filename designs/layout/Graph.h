#pragma once

#include "designs/layout/Geometry.h"
#include "designs/layout/TextSize.h"

#include <cstddef>
#include <vector>

namespace design {

/// Boxes and the lines between them, as a layout sees them. Indexes are those of `nodes`.
struct Graph {
    struct Node {
        Size size;
        Rectangle place = {}; ///< set by a layout
    };
    struct Edge {
        std::size_t from = 0;
        std::size_t to = 0;
        bool sharesArrival = false; ///< lines of this kind may come together where they arrive
        Points guide = {};          ///< where a layout would lead the line; may be empty
    };
    std::vector<Node> nodes;
    std::vector<Edge> edges;
};

/// Places the nodes in rows so that lines lead upward, in much less time if `isBrief`. False when the layout library
/// could not do it; then nothing is placed. Throws std::runtime_error when there is no such library.
[[nodiscard]] bool placeInLayers(Graph& graph, bool isBrief);

/// Leads lines from box to box between the rows of a graph placed in layers, horizontally and vertically only.
[[nodiscard]] std::vector<Points> routeOrthogonally(const Graph& graph);

} // namespace design
