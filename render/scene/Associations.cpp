#include "render/scene/Loops.h"
#include "render/scene/Scene.h"

#include <algorithm>
#include <cmath>

namespace render {

namespace {

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

// The qualifiers by which objects of a role are found stand at the other end, in a box between the class and the line.
void Scene::addRoleTo(Line& line) const
{
    line.end = endOfRole(*line.element);
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
