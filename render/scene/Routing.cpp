#include "render/scene/Detour.h"
#include "render/scene/Loops.h"
#include "render/scene/Scene.h"

#include <algorithm>
#include <cmath>

namespace render {

namespace {

constexpr double nearEnough = 60; // of a line's end to its box
constexpr double loopWidth = 120; // of a line that ends where it starts
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
    std::size_t covered = 0; // points behind which the line has not left the box
    while (path.size() - covered > 2 && isCovered(node, path[covered + 1]))
        ++covered;
    path.erase(path.begin(), path.begin() + static_cast<std::ptrdiff_t>(covered));
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
    if (line.view->is("RoleView") && line.element)
        addRoleTo(line);
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

} // namespace render
