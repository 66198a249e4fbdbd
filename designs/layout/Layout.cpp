#include "designs/layout/Layout.h"

#include "designs/layout/Detours.h"
#include "designs/layout/Graph.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace design {

namespace {

constexpr double margin = 40;
constexpr double gap = 50;

using NodeOfElement = std::unordered_map<std::string_view, std::size_t>;

Size sizeFor(const Box& box, const Catalogue& catalogue)
{
    constexpr Size symbol = {32, 32}; // of an association that joins more than two classes
    if (const Package* const package = catalogue.package(box.elementId))
        return boxSize(*package, box);
    const Classifier* const classifier = catalogue.classifier(box.elementId);
    return classifier ? boxSize(*classifier, box, catalogue) : symbol;
}

// Rows of about as much width as height, beginning at the given corner.
void placeInRows(const std::vector<Graph::Node*>& nodes, Point corner)
{
    double area = 0;
    for (const Graph::Node* const node : nodes)
        area += (node->size.width + gap) * (node->size.height + gap);
    const double widest = std::sqrt(area) * 1.3;
    Point at = corner;
    double rowHeight = 0;
    for (Graph::Node* const node : nodes) {
        if (at.x > corner.x && at.x + node->size.width > corner.x + widest) {
            at = {corner.x, at.y + rowHeight + gap};
            rowHeight = 0;
        }
        node->place = {at.x, at.y, node->size.width, node->size.height};
        at.x += node->size.width + gap;
        rowHeight = std::max(rowHeight, node->size.height);
    }
}

// The two boxes that a line joins; false when it joins none of them.
bool findEnds(const Line& line, const Catalogue& catalogue, const NodeOfElement& nodes, Graph::Edge& edge)
{
    std::string_view from;
    std::string_view to;
    if (const Association* const association = catalogue.association(line.elementId)) {
        from = association->ends[0].participant.id;
        to = association->ends[1].participant.id;
    } else if (const Relationship* const relationship = catalogue.relationship(line.elementId)) {
        from = relationship->client.id;
        to = relationship->supplier.id;
        edge.sharesArrival = relationship->kind == RelationshipKind::Generalization;
    }
    const auto fromNode = nodes.find(from);
    const auto toNode = nodes.find(to);
    if (fromNode == nodes.end() || toNode == nodes.end())
        return false;
    edge.from = fromNode->second;
    edge.to = toNode->second;
    return true;
}

// Lays out those that lines join, and sets the others in rows below.
class WholeLayout {
public:
    WholeLayout(Diagram& theDiagram, const Catalogue& theCatalogue) : diagram(theDiagram), catalogue(theCatalogue) {}

    // False when not even those that lines join are laid out.
    bool run(LayoutBudget& budget)
    {
        std::vector<Graph::Node> places = collectNodes();
        Graph joined = collectJoined(places);
        std::vector<Graph::Node*> others;
        for (std::size_t i = 0; i < places.size(); ++i)
            if (joinedIndex[i] == none)
                others.push_back(&places[i]);
        Point corner = {margin, margin};
        const bool isLayered = placeJoined(joined, budget);
        if (isLayered) {
            corner.y += takeOver(joined, places) + gap;
            routeLines(joined);
        } else {
            others.clear();
            for (Graph::Node& node : places)
                others.push_back(&node);
        }
        placeInRows(others, corner);
        for (std::size_t i = 0; i < places.size(); ++i)
            diagram.boxes[i].bounds = places[i].place;
        return isLayered || joined.nodes.empty();
    }

private:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    std::vector<Graph::Node> collectNodes()
    {
        std::vector<Graph::Node> nodes;
        for (const Box& box : diagram.boxes) {
            nodeOfElement.emplace(box.elementId, nodes.size());
            nodes.push_back({sizeFor(box, catalogue)});
        }
        joinedIndex.assign(nodes.size(), none);
        return nodes;
    }

    Graph collectJoined(const std::vector<Graph::Node>& nodes)
    {
        Graph joined;
        const auto join = [&](std::size_t& node) {
            if (joinedIndex[node] == none) {
                joinedIndex[node] = joined.nodes.size();
                joined.nodes.push_back(nodes[node]);
            }
            node = joinedIndex[node];
        };
        for (Line& line : diagram.lines) {
            Graph::Edge edge;
            if (!findEnds(line, catalogue, nodeOfElement, edge))
                continue;
            join(edge.from);
            join(edge.to);
            joined.edges.push_back(std::move(edge));
            joinedLines.push_back(&line);
        }
        return joined;
    }

    static bool placeJoined(Graph& joined, LayoutBudget& budget)
    {
        if (joined.nodes.empty())
            return false;
        const LayoutCare care = budget.take(joined.nodes.size(), joined.edges.size());
        return care != LayoutCare::none && placeInLayers(joined, care == LayoutCare::brief);
    }

    // Height of what is taken over.
    double takeOver(const Graph& joined, std::vector<Graph::Node>& places)
    {
        double height = 0;
        for (std::size_t i = 0; i < places.size(); ++i) {
            if (joinedIndex[i] == none)
                continue;
            Rectangle place = joined.nodes[joinedIndex[i]].place;
            place.left += margin;
            place.top += margin;
            places[i].place = place;
            height = std::max(height, place.top + place.height - margin);
        }
        return height;
    }

    void routeLines(const Graph& joined)
    {
        std::vector<Points> ways = routeOrthogonally(joined);
        for (std::size_t i = 0; i < ways.size(); ++i) {
            for (Point& point : ways[i])
                point = {point.x + margin, point.y + margin};
            joinedLines[i]->points = std::move(ways[i]);
            joinedLines[i]->hasEnds = true;
        }
    }

    Diagram& diagram;
    const Catalogue& catalogue;
    NodeOfElement nodeOfElement;
    std::vector<std::size_t> joinedIndex; // of each box, in the graph of those that lines join
    std::vector<Line*> joinedLines;
};

// The place is the left upper corner, or the centre in files that have that.
void giveSize(Rectangle& bounds, Size size, bool isAboutCentre)
{
    if (bounds.width <= 0) {
        bounds.width = size.width;
        bounds.left -= isAboutCentre ? size.width / 2 : 0;
    }
    if (bounds.height <= 0) {
        bounds.height = size.height;
        bounds.top -= isAboutCentre ? size.height / 2 : 0;
    }
}

void placeBelow(Diagram& diagram, const Catalogue& catalogue, const Rectangle& rest)
{
    std::vector<Graph::Node> nodes;
    std::vector<Box*> boxes;
    for (Box& box : diagram.boxes) {
        if (box.bounds)
            continue;
        boxes.push_back(&box);
        nodes.push_back({sizeFor(box, catalogue)});
    }
    std::vector<Graph::Node*> pointers(nodes.size());
    std::transform(nodes.begin(), nodes.end(), pointers.begin(), [](Graph::Node& node) { return &node; });
    placeInRows(pointers, {rest.left, rest.top + rest.height + gap});
    for (std::size_t i = 0; i < boxes.size(); ++i)
        boxes[i]->bounds = nodes[i].place;
}

// Limits a box that nobody sized where it would cover others, unless its corner lies in one of them.
void keepClear(Rectangle& box, const std::vector<Box>& others)
{
    constexpr double least = 20;
    for (const Box& other : others) {
        if (!other.bounds || &*other.bounds == &box || !overlaps(box, *other.bounds))
            continue;
        const double width = other.bounds->left - box.left;
        const double height = other.bounds->top - box.top;
        if (width >= least && width / box.width >= height / box.height)
            box.width = width;
        else if (height >= least)
            box.height = height;
    }
}

// Gives boxes a size that have a place alone.
void sizePlaced(std::vector<Box>& boxes, bool isAboutCentre, const Catalogue& catalogue)
{
    std::size_t comparisonsLeft = 20000000; // so many take less than a second
    std::vector<Box*> sized;
    for (Box& box : boxes) {
        if (!box.bounds || (box.bounds->width > 0 && box.bounds->height > 0))
            continue;
        const Size size = sizeFor(box, catalogue);
        giveSize(*box.bounds, size, isAboutCentre);
        sized.push_back(&box);
    }
    for (Box* const box : sized) {
        if (comparisonsLeft < boxes.size())
            return;
        comparisonsLeft -= boxes.size();
        keepClear(*box->bounds, boxes);
    }
}

} // namespace

void sizeAboutCentres(Diagram& diagram, const Catalogue& catalogue)
{
    const auto isNowhere = [](const Box& box) {
        return box.bounds && box.bounds->width <= 0 && box.bounds->height <= 0 && box.bounds->left == 0 &&
               box.bounds->top == 0;
    };
    if (std::all_of(diagram.boxes.begin(), diagram.boxes.end(), isNowhere))
        for (Box& box : diagram.boxes)
            box.bounds.reset();
    sizePlaced(diagram.boxes, true, catalogue);
}

void leadAround(Diagram& diagram, const Catalogue& catalogue)
{
    NodeOfElement nodes;
    std::vector<Rectangle> places;
    for (const Box& box : diagram.boxes) {
        nodes.emplace(box.elementId, places.size());
        places.push_back(*box.bounds);
    }
    Detours detours(places);
    std::erase_if(diagram.lines, [&](Line& line) {
        Graph::Edge edge;
        if (findEnds(line, catalogue, nodes, edge))
            line.points = detours.between(edge.from, edge.to);
        line.hasEnds = true;
        return line.points.empty();
    });
}

bool layOut(Diagram& diagram, const Catalogue& catalogue, LayoutBudget& budget)
{
    if (!diagram.keepsPlaces)
        sizePlaced(diagram.boxes, false, catalogue);
    std::optional<Rectangle> placed;
    std::size_t count = 0;
    for (const Box& box : diagram.boxes) {
        if (!box.bounds)
            continue;
        placed = placed ? unite(*placed, *box.bounds) : *box.bounds;
        ++count;
    }
    if (!placed)
        return diagram.boxes.empty() || WholeLayout(diagram, catalogue).run(budget);
    if (count < diagram.boxes.size())
        placeBelow(diagram, catalogue, *placed);
    return true;
}

} // namespace design
