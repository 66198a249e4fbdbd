#include "render/scene/Detour.h"
#include "render/scene/Scene.h"

#include <algorithm>
#include <cmath>

namespace render {

namespace {

constexpr double nearEnough = 60; // of a line's end to its box
constexpr double loopWidth = 120; // of a line that ends where it starts
constexpr double loopHeight = 90;
constexpr double loopReach = 57;  // of a transition to the same state, to each side
constexpr double treeHeight = 90; // of an inheritance tree that the file gives no place
constexpr LineKind lineKinds[] = {
    {"AnchorView", true, LineEnd::none},
    {"AssocAttachView", true, LineEnd::none},
    {"AttachView", true, LineEnd::none},
    {"ConnectionView", false, LineEnd::none},
    {"DependencyView", true, LineEnd::openArrow},
    {"ImportView", true, LineEnd::openArrow},
    {"InheritTreeView", false, LineEnd::triangle},
    {"InheritView", false, LineEnd::triangle},
    {"InstantiateView", true, LineEnd::openArrow},
    {"LinkSelfView", false, LineEnd::none},
    {"LinkView", false, LineEnd::none},
    {"ModVisView", true, LineEnd::openArrow},
    {"ObjectFlowView", true, LineEnd::openArrow},
    {"RealizeView", true, LineEnd::triangle},
    {"RoleView", false, LineEnd::none},
    {"SelfTransView", false, LineEnd::openArrow},
    {"TransView", false, LineEnd::openArrow},
    {"UsesView", true, LineEnd::openArrow},
};

// Starts `path` at the border of what its first point is in or near.
void attachStart(Path& path, const Node& node, bool isByCentre)
{
    while (path.size() > 2 && isCovered(node, path[1]))
        path.erase(path.begin());
    Point inside = node.rect.centre();
    if (!isByCentre && !isCovered(node, path.front()))
        inside = clampedInto(node.rect.grownBy(-1), path.front());
    else if (!isByCentre)
        inside = path.front();
    if (!isByCentre && distance(inside, path.front()) > nearEnough)
        path.insert(path.begin(), inside);
    if (!isCovered(node, path[1]))
        path.front() = exitOf(node, inside, path[1]);
}

void attachEnd(Path& path, const Node& node, bool isByCentre)
{
    std::reverse(path.begin(), path.end());
    attachStart(path, node, isByCentre);
    std::reverse(path.begin(), path.end());
}

enum class Side : std::uint8_t { above, below, left, right };

Side sideOf(const Rect& rect, Point place)
{
    if (place.y < rect.top || place.y > rect.bottom)
        return place.y < rect.top ? Side::above : Side::below;
    if (place.x < rect.left || place.x > rect.right)
        return place.x < rect.left ? Side::left : Side::right;
    return Side::above;
}

// Half of a line from a box to itself that passes `place` outside of it, from there; `step` says which half.
Path halfLoop(const Rect& rect, Point place, double step)
{
    const Side side = sideOf(rect, place);
    if (side == Side::above || side == Side::below) {
        const double edge = side == Side::above ? rect.top : rect.bottom;
        const double x = std::clamp(place.x + step, rect.left, rect.right);
        return {place, {x, place.y}, {x, edge}};
    }
    const double edge = side == Side::left ? rect.left : rect.right;
    const double y = std::clamp(place.y + step, rect.top, rect.bottom);
    return {place, {place.x, y}, {edge, y}};
}

// Half an ellipse from a side of a box to that side again, over `place`.
Path loop(const Rect& rect, Point place)
{
    constexpr int pieces = 24;
    constexpr double pi = 3.14159265358979323846;
    if (rect.contains(place))
        place = {rect.centre().x, rect.top - loopHeight};
    const Side side = sideOf(rect, place);
    const bool isUpright = side == Side::above || side == Side::below;
    const Point foot = clampedInto(rect, place);
    const Point middle = isUpright ? Point{place.x, foot.y} : Point{foot.x, place.y};
    Path path;
    for (int i = 0; i <= pieces; ++i) {
        const double angle = pi * i / pieces;
        const double along = -std::cos(angle) * loopReach;
        const double up = std::sin(angle);
        path.push_back(isUpright ? Point{middle.x + along, middle.y + up * (place.y - middle.y)}
                                 : Point{middle.x + up * (place.x - middle.x), middle.y + along});
    }
    return path;
}

// The tree that an inheritance ends in, or null.
const Object* treeOf(const reader::Index& index, const Object& view)
{
    const Object* const tree = index.view(view, "drawSupplier");
    return tree && tree->is("InheritTreeView") ? tree : nullptr;
}

// Trees stand below or above their supertype, rarely beside it.
bool isBeside(const Object& tree)
{
    const Path points = pointsOf(tree);
    return points.size() >= 2 && points[0].y == points[1].y && points[0].x != points[1].x;
}

bool isLollipop(const Node* node)
{
    return node && node->icon == "interface";
}

// A realization of an interface that is drawn as a circle is a plain line.
void simplifyRealization(Line& line, const Node* supplier)
{
    if (!line.view->is("RealizeView") || !isLollipop(supplier))
        return;
    line.end = LineEnd::none;
    line.stroke.isDashed = false;
}

const Object* otherRole(const Object& role)
{
    const reader::List* const roles = role.parent() ? role.parent()->get("roles").asList() : nullptr;
    if (roles)
        for (const reader::Value& each : roles->values())
            if (each.asObject() && each.asObject() != &role)
                return each.asObject();
    return nullptr;
}

LineEnd endOfRole(const Object& role)
{
    const Object* const other = otherRole(role);
    const auto isByValue = [](const Object* object) { return object && object->text("Containment") == "By Value"; };
    if (role.flag("is_aggregate"))
        return isByValue(&role) || isByValue(other) ? LineEnd::filledDiamond : LineEnd::diamond;
    const bool isOnlyWay = role.flag("is_navigable") && other && !other->flag("is_navigable");
    return isOnlyWay ? LineEnd::openArrow : LineEnd::none;
}

} // namespace

const LineKind* lineKindOf(const Object& view)
{
    const auto* const found = std::find_if(std::begin(lineKinds), std::end(lineKinds),
                                           [&](const LineKind& kind) { return view.is(kind.keyword); });
    return found == std::end(lineKinds) ? nullptr : found;
}

// Lines that end at lines come after those.
void Scene::routeAll()
{
    for (int pass = 0; pass < 2; ++pass)
        for (Line& line : allLines)
            if (line.path.empty())
                route(line);
}

void Scene::route(Line& line)
{
    line.path = pathOf(line);
    if (line.path.empty())
        return;
    simplifyRealization(line, nodeOf(*line.view, "supplier"));
    if (treeOf(common.index, *line.view))
        line.end = LineEnd::none;
    if (line.view->is("RoleView") && line.element) {
        line.end = endOfRole(*line.element);
        addQualifiers(line);
    }
}

Scene::End Scene::endOf(const Object& view, std::string_view key) const
{
    const Object* const target = common.index.view(view, key);
    if (!target)
        return {};
    if (const Node* const node = nodeOf(view, key))
        return {node, node->rect.centre(), node->isPlaced};
    if (target->is("AssociationViewNew"))
        return {nullptr, junctionOf(*target), true};
    const Path* const path = pathOf(view, key);
    return path && !path->empty() ? End{nullptr, placeOn(*path, 0.5).point, true} : End{};
}

// Between the boxes of the roles when the file gives no place, or one that a box of theirs covers, or if it is computed
// any box.
void Scene::findJunction(const Object& association)
{
    std::vector<const Node*> nodes;
    for (const Object* const role : association.objects("roleview_list"))
        if (const Node* const node = nodeOf(*role, "supplier"))
            nodes.push_back(node);
    Junction& junction = junctions[&association];
    junction.place = locationOf(association);
    const auto isCovered = [&](const Node* node) { return node->rect.contains(junction.place); };
    junction.isPlaced = isPlaced(association) && std::none_of(nodes.begin(), nodes.end(), isCovered) &&
                        !isComputedOnBox(junction.place);
    if (nodes.empty())
        return;
    const Node& first = *nodes.front();
    junction.isLoop = nodes.size() > 1 && std::count(nodes.begin(), nodes.end(), &first) == std::ssize(nodes);
    junction.firstRole = association.objects("roleview_list").front();
    if (junction.isPlaced)
        return;
    junction.place = {first.rect.centre().x, first.rect.top - loopHeight};
    if (nodes.size() == 1 || junction.isLoop)
        return;
    const Node& second = *nodes[1];
    const Point a = first.rect.centre();
    const Point b = second.rect.centre();
    junction.way = wayAround(a, b, &first, &second);
    if (!junction.way.empty())
        junction.place = placeOn(junction.way, 0.5).point;
    else
        junction.place = between(exitOf(first, a, b), exitOf(second, b, a), 0.5);
}

bool Scene::isComputedOnBox(Point place) const
{
    if (!common.isComputed || comparisonsLeft < allNodes.size())
        return false;
    comparisonsLeft -= allNodes.size();
    return std::any_of(allNodes.begin(), allNodes.end(),
                       [&](const Node& node) { return node.isPlaced && node.rect.contains(place); });
}

const Scene::Junction* Scene::junctionAt(const Object& association) const
{
    const auto found = junctions.find(&association);
    return found == junctions.end() ? nullptr : &found->second;
}

Point Scene::junctionOf(const Object& association) const
{
    const Junction* const junction = junctionAt(association);
    return junction ? junction->place : locationOf(association);
}

Path Scene::pathOf(const Line& line) const
{
    const Object& view = *line.view;
    if (view.is("InheritTreeView"))
        return treePath(view);
    const End client = endOf(view, "client");
    const End supplier = endOf(view, "supplier");
    const Object* const tree = treeOf(common.index, view);
    if (tree && client.node)
        return branchPath(view, *client.node, *tree);
    const Junction* const junction = view.is("RoleView") && view.parent() ? junctionAt(*view.parent()) : nullptr;
    Path path = junction && !junction->isPlaced ? Path() : pointsOf(view);
    bool isByCentre = path.empty();
    if (isByCentre && (!client.isKnown || !supplier.isKnown))
        return path;
    if (isByCentre && client.node && client.node == supplier.node)
        return loop(client.node->rect, locationOf(view));
    if (isByCentre && junction && junction->isLoop && supplier.node)
        return selfRolePath(view, *supplier.node, *junction);
    if (isByCentre && junction && !junction->way.empty())
        path = junction->firstRole == &view ? reversed(partOf(junction->way, 0, 0.5)) : partOf(junction->way, 0.5, 1);
    else if (isByCentre)
        path = wayAround(client.place, supplier.place, client.node, supplier.node);
    isByCentre = isByCentre && path.empty();
    if (isByCentre)
        path = {client.place, supplier.place};
    if (client.node)
        attachStart(path, *client.node, isByCentre);
    if (supplier.node)
        attachEnd(path, *supplier.node, isByCentre);
    return path;
}

Path Scene::wayAround(Point from, Point to, const Node* first, const Node* second) const
{
    if (!common.isComputed || waysLeft == 0 || comparisonsLeft < allNodes.size())
        return {};
    comparisonsLeft -= allNodes.size();
    std::vector<Rect> boxes;
    bool isCrossed = false;
    for (const Node& node : allNodes) {
        if (&node == first || &node == second || !node.isPlaced || node.rect.contains(from) || node.rect.contains(to))
            continue;
        boxes.push_back(roomOf(node));
        isCrossed = isCrossed || crosses({from, to}, boxes.back());
    }
    if (!isCrossed)
        return {};
    --waysLeft;
    return detour(boxes, from, to);
}

Path Scene::wholePathOf(const Object& association) const
{
    Path whole;
    for (const Object* const role : association.objects("roleview_list")) {
        const auto found = lineByView.find(role);
        if (found == lineByView.end())
            continue;
        const Path& path = allLines[found->second].path;
        if (whole.empty())
            whole.assign(path.rbegin(), path.rend());
        else
            whole.insert(whole.end(), path.begin(), path.end());
    }
    return whole;
}

Path Scene::selfRolePath(const Object& role, const Node& node, const Junction& junction)
{
    return halfLoop(node.rect, junction.place, (junction.firstRole == &role ? -1 : 1) * loopWidth / 2);
}

Point Scene::treePoint(const Object& tree) const
{
    if (isPlaced(tree))
        return locationOf(tree);
    const Node* const supplier = nodeOf(tree, "supplier");
    return supplier ? Point{supplier->rect.centre().x, supplier->rect.bottom + treeHeight} : Point{};
}

Path Scene::treePath(const Object& tree) const
{
    const Node* const supplier = nodeOf(tree, "supplier");
    if (!supplier)
        return {};
    const Point start = treePoint(tree);
    const Point inside = clampedInto(supplier->rect.grownBy(-1), start);
    return {start, exitOf(*supplier, inside, start)};
}

// From a subtype straight to the line that the tree's branches share, and along it to the tree's point.
Path Scene::branchPath(const Object& view, const Node& client, const Object& tree) const
{
    const Point root = treePoint(tree);
    const Path points = pointsOf(view);
    const Rect inner = client.rect.grownBy(-1);
    Point inside = inner.centre();
    Point corner;
    if (isBeside(tree)) {
        inside.y = std::clamp(points.empty() ? inside.y : points.front().y, inner.top, inner.bottom);
        corner = {root.x, inside.y};
    } else {
        inside.x = std::clamp(points.empty() ? inside.x : points.front().x, inner.left, inner.right);
        corner = {inside.x, root.y};
    }
    if (isCovered(client, corner))
        return {exitOf(client, inner.centre(), root), root};
    return {exitOf(client, inside, corner), corner, root};
}

// The qualifiers by which objects of a role are found stand at the other end, in a box between the class and the line.
void Scene::addQualifiers(Line& line) const
{
    const Node* const node = nodeOf(*line.view, "supplier");
    const Object* const other = otherRole(*line.element);
    if (!node || !other || line.path.size() < 2)
        return;
    line.qualifiers.font = fontOf(*line.view, common.defaultFont);
    addLines(common, line.qualifiers, other->objects("keys"), [](const Object& key) {
        const std::string type = lineOf(key, "type");
        return cleanText(key.name()) + (type.empty() ? type : " : " + type);
    });
    if (line.qualifiers.lines.empty())
        return;
    const Size text = line.qualifiers.size(common.measure);
    const Size size = {text.width + 2 * padding, text.height + padding};
    const Point at = line.path.back();
    const bool isAtSide = at.x <= node->rect.left + 1 || at.x >= node->rect.right - 1;
    const double x = isAtSide ? std::copysign(size.width / 2, at.x - node->rect.centre().x) : 0;
    const double y = isAtSide ? 0 : std::copysign(size.height / 2, at.y - node->rect.centre().y);
    line.qualifierRect = rectAround({at.x + x, at.y + y}, size);
    Point& previous = line.path[line.path.size() - 2];
    line.path.back() = clipped(line.qualifierRect, Outline::rectangle, line.qualifierRect.centre(), previous);
}

} // namespace render
