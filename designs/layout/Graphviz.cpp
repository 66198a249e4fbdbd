#include "designs/layout/LayoutLibrary.h"

#include <array>
#include <charconv>
#include <graphviz/gvc.h>
#include <memory>
#include <string>

namespace design {

namespace {

constexpr double pixelsInPoint = 96.0 / 72.0; // the library counts points
constexpr double pixelsInInch = 96;           // and takes sizes in inches

int saySilently(char* /*message*/)
{
    return 0;
}

struct ContextEnd {
    void operator()(GVC_t* context) const { gvFreeContext(context); }
};
struct GraphEnd {
    void operator()(Agraph_t* graph) const { agclose(graph); }
};

// The library takes its texts without const and does not change them.
char* asMutable(const char* text)
{
    return const_cast<char*>(text);
}

void declare(Agraph_t* graph, int kind, const char* name, const char* value)
{
    agattr(graph, kind, asMutable(name), asMutable(value));
}

void setInches(Agnode_t* node, const char* name, double pixels)
{
    std::array<char, 32> digits = {};
    std::to_chars(digits.data(), digits.data() + digits.size() - 1, pixels / pixelsInInch, std::chars_format::fixed, 3);
    agset(node, asMutable(name), digits.data());
}

void declareAttributes(Agraph_t* graph)
{
    declare(graph, AGRAPH, "rankdir", "BT");
    declare(graph, AGRAPH, "splines", "polyline"); // the library's own orthogonal lines end the process on some graphs
    declare(graph, AGRAPH, "nodesep", "0.5");
    declare(graph, AGRAPH, "ranksep", "0.8");
    declare(graph, AGNODE, "shape", "box");
    declare(graph, AGNODE, "fixedsize", "true");
    declare(graph, AGNODE, "label", "");
    declare(graph, AGNODE, "width", "1");
    declare(graph, AGNODE, "height", "1");
    declare(graph, AGEDGE, "label", "");
}

// The steps in which the library betters its rows, its places in rows, and the crossings of lines.
void limitSteps(Agraph_t* graph)
{
    declare(graph, AGRAPH, "nslimit1", "1");
    declare(graph, AGRAPH, "nslimit", "1");
    declare(graph, AGRAPH, "mclimit", "0.05");
}

// The library counts upward from the bottom.
class Reading {
public:
    explicit Reading(Agraph_t* graph) : top(GD_bb(graph).UR.y) {}

    [[nodiscard]] Point at(pointf point) const { return {point.x * pixelsInPoint, (top - point.y) * pixelsInPoint}; }

    [[nodiscard]] Points guideOf(Agedge_t* edge) const
    {
        Points guide;
        const splines* const lines = ED_spl(edge);
        for (std::size_t i = 0; lines && i < static_cast<std::size_t>(lines->size); ++i)
            for (std::size_t k = 0; k < static_cast<std::size_t>(lines->list[i].size); ++k)
                guide.push_back(at(lines->list[i].list[k]));
        return guide;
    }

private:
    double top;
};

bool placeByDot(Graph& graph, bool isBrief)
{
    agseterrf(saySilently);
    const std::unique_ptr<GVC_t, ContextEnd> context(gvContext());
    const std::unique_ptr<Agraph_t, GraphEnd> drawing(agopen(asMutable("diagram"), Agdirected, nullptr));
    if (!context || !drawing)
        return false;
    declareAttributes(drawing.get());
    if (isBrief)
        limitSteps(drawing.get());
    std::vector<Agnode_t*> nodes;
    for (const Graph::Node& node : graph.nodes) {
        nodes.push_back(agnode(drawing.get(), nullptr, 1));
        setInches(nodes.back(), "width", node.size.width);
        setInches(nodes.back(), "height", node.size.height);
    }
    std::vector<Agedge_t*> edges;
    for (const Graph::Edge& edge : graph.edges)
        edges.push_back(agedge(drawing.get(), nodes[edge.from], nodes[edge.to], nullptr, 1));
    if (gvLayout(context.get(), drawing.get(), "dot") != 0)
        return false;
    const Reading reading(drawing.get());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const Point centre = reading.at(ND_coord(nodes[i]));
        const Size size = graph.nodes[i].size;
        graph.nodes[i].place = {centre.x - size.width / 2, centre.y - size.height / 2, size.width, size.height};
    }
    for (std::size_t i = 0; i < edges.size(); ++i)
        graph.edges[i].guide = reading.guideOf(edges[i]);
    gvFreeLayout(context.get(), drawing.get());
    return true;
}

std::string versionOfGraphviz()
{
    const std::unique_ptr<GVC_t, ContextEnd> context(gvContext());
    return context ? std::string("Graphviz ") + gvcVersion(context.get()) : "Graphviz";
}

} // namespace

} // namespace design

const design::LayoutFunctions petalLayoutFunctions = {design::placeByDot, design::versionOfGraphviz};
