#include "render/scene/Scene.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace render {

namespace {

constexpr double gap = 120;    // between boxes that the file gives no place
constexpr double noteGap = 60; // between a note and what it is attached to
constexpr double usualLane = 600;
constexpr double clearance = 12; // around what is in a note's way
constexpr std::size_t mostWays = 300;
constexpr std::size_t mostComparisons = 20000000;
constexpr std::size_t mostNotes = 200; // that a free place is looked for; the others stand below

bool isText(const Node& node)
{
    return node.view->is("NoteView", "Label");
}

Rect united(const Rect& a, const Rect& b)
{
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right), std::max(a.bottom, b.bottom)};
}

} // namespace

Scene::Scene(const Context& context) : common(context), waysLeft(mostWays), comparisonsLeft(mostComparisons)
{
    std::set<std::string_view> unknown;
    std::size_t tooLong = 0;
    for (const Object* const view : context.diagram.object->objects("items")) {
        const bool isKnown = nodeKindOf(*view) || lineKindOf(*view) || isOther(*view);
        if (!isKnown && unknown.insert(view->kind()).second)
            context.warn("items of the kind " + cleanText(view->kind()) + " are not known; drawn plainly");
        if (lineKindOf(*view) && hasTooManyPoints(*view))
            ++tooLong;
        add(*view);
    }
    if (tooLong > 0)
        context.warn("lines of more than 1000 points: " + std::to_string(tooLong) +
                     "; what is between the thousandth and the last of them is left out");
    arrangeNodes();
    for (const Object* const view : otherViews)
        if (view->is("AssociationViewNew"))
            findJunction(*view);
    routeAll();
    arrangeNotes();
    arrangeRest();
    routeAll();
    arrangeLanes();
}

void Scene::add(const Object& view)
{
    const LineKind* const kind = lineKindOf(view);
    if (view.is("AssociationViewNew"))
        addRoles(view);
    if (isOther(view))
        otherViews.push_back(&view);
    else if (kind)
        addLine(view, *kind);
    else if (!nodeKindOf(view) && view.get("client").asReference() && view.get("supplier").asReference())
        addLine(view, {view.kind(), false, LineEnd::none});
    else
        addNode(view);
}

void Scene::addNode(const Object& view)
{
    Node& node = allNodes.emplace_back(render::nodeOf(common, view));
    nodeByView.emplace(&view, &node);
}

void Scene::addLine(const Object& view, const LineKind& kind)
{
    Line line;
    line.view = &view;
    line.element = common.index.element(view).element;
    line.stroke = strokeOf(view);
    line.stroke.isDashed = kind.isDashed;
    line.end = kind.end;
    lineByView.emplace(&view, allLines.size());
    allLines.push_back(std::move(line));
}

void Scene::addRoles(const Object& association)
{
    constexpr std::uint32_t black = 0;
    const std::uint32_t colour = association.has("line_color") ? strokeOf(association).line : black;
    for (const Object* const role : association.objects("roleview_list")) {
        addLine(*role, {role->kind(), false, LineEnd::none});
        allLines.back().stroke.line = colour;
    }
}

const Node* Scene::nodeOf(const Object& view, std::string_view key) const
{
    const auto found = nodeByView.find(common.index.view(view, key));
    return found == nodeByView.end() ? nullptr : found->second;
}

const Path* Scene::pathOf(const Object& view, std::string_view key) const
{
    const auto found = lineByView.find(common.index.view(view, key));
    return found == lineByView.end() ? nullptr : &allLines[found->second].path;
}

Rect Scene::room() const
{
    std::optional<Rect> result;
    for (const Node& node : allNodes)
        if (node.isPlaced)
            result = result ? united(*result, roomOf(node)) : roomOf(node);
    return result.value_or(Rect{});
}

// Boxes without a place stand in rows below the others.
void Scene::arrangeNodes()
{
    std::vector<Node*> open;
    for (Node& node : allNodes)
        if (!node.isPlaced && !isText(node))
            open.push_back(&node);
    const Rect taken = room();
    const auto columns = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(open.size()))));
    double top = taken.bottom + gap;
    for (std::size_t first = 0; first < open.size(); first += columns) {
        double left = taken.left + gap;
        double height = 0;
        for (std::size_t i = first; i < std::min(first + columns, open.size()); ++i) {
            const Rect whole = roomOf(*open[i]);
            const Rect& box = open[i]->rect;
            moveTo(*open[i], {left + whole.width() / 2 + box.centre().x - whole.centre().x, top + box.height() / 2});
            left += whole.width() + gap;
            height = std::max(height, whole.height());
        }
        top += height + gap;
    }
}

// What the other end of a note's line is, when the note itself has no place.
std::optional<Rect> Scene::targetOf(const Object& attachment, const Node*& note)
{
    const End client = endOf(attachment, "client");
    const End supplier = endOf(attachment, "supplier");
    if (client.isKnown == supplier.isKnown)
        return std::nullopt;
    note = nodeOf(attachment, client.isKnown ? "supplier" : "client");
    const End& end = client.isKnown ? client : supplier;
    return end.node ? roomOf(*end.node) : rectAround(end.place, {});
}

bool Scene::isFree(const Rect& rect) const
{
    const Rect wanted = rect.grownBy(clearance);
    const auto isInTheWay = [&](const Node& node) { return node.isPlaced && roomOf(node).overlaps(wanted); };
    const auto crosses = [&](const Line& line) {
        return render::crosses(line.path, wanted) ||
               (!line.qualifiers.lines.empty() && line.qualifierRect.overlaps(wanted));
    };
    return std::none_of(allNodes.begin(), allNodes.end(), isInTheWay) &&
           std::none_of(allLines.begin(), allLines.end(), crosses);
}

// Right of it, left, below or above, as near as there is room.
std::optional<Point> Scene::freePlaceBeside(const Rect& target, Size size) const
{
    for (const double times : {1.0, 2.0, 4.0, 6.0, 9.0, 13.0, 18.0}) {
        const double x = target.width() / 2 + size.width / 2 + times * noteGap;
        const double y = target.height() / 2 + size.height / 2 + times * noteGap;
        const Point centre = target.centre();
        for (const Point place :
             {Point{centre.x + x, centre.y}, Point{centre.x - x, centre.y}, Point{centre.x, centre.y + y},
              Point{centre.x, centre.y - y}, Point{centre.x + x, centre.y + y}, Point{centre.x - x, centre.y - y}})
            if (isFree(rectAround(place, size)))
                return place;
    }
    return std::nullopt;
}

// Lanes stand where they say or beside each other, as high as what the diagram shows.
void Scene::arrangeLanes()
{
    Rect rect = {0, -laneTitle, 0, std::max(room().bottom, 0.0) + laneTitle};
    const Object* last = nullptr;
    for (const Object* const view : otherViews) {
        if (!view->is("Swimlane"))
            continue;
        const double width = sizeOf(*view).width;
        rect.left = view->has("location") ? locationOf(*view).x : rect.right;
        rect.right = boundedPlace(rect.left + (width > 0 ? width : usualLane));
        lanes.emplace(view, Lane{rect, last == nullptr, true});
        last = view;
    }
    if (last && nameOf(*last, common.index.element(*last).element).empty())
        lanes.at(last).isShown = false;
}

void Scene::arrangeNotes()
{
    std::size_t count = 0;
    for (const Line& line : allLines) {
        const Node* note = nullptr;
        const auto target = targetOf(*line.view, note);
        if (!target || !note || !isText(*note) || ++count > mostNotes)
            continue;
        const auto place = freePlaceBeside(*target, {note->rect.width(), note->rect.height()});
        if (place)
            moveTo(*nodeByView.at(note->view), *place);
    }
}

// Texts that are attached to nothing, and those that found no place, stand below.
void Scene::arrangeRest()
{
    const Rect taken = room();
    double top = taken.bottom + noteGap;
    for (Node& node : allNodes) {
        if (node.isPlaced)
            continue;
        moveTo(node, {taken.left + node.rect.width() / 2, top + node.rect.height() / 2});
        top += node.rect.height() + noteGap;
    }
}

} // namespace render
