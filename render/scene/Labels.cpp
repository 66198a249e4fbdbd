#include "render/scene/Labels.h"

#include <algorithm>
#include <cmath>

namespace render {

namespace {

constexpr double tolerance = 8;     // labels may overlap that far
constexpr double longestStep = 120; // of a label that is moved away from a box
constexpr std::size_t mostKept = 2000;

} // namespace

Labels::Labels(const Scene& scene, Svg& svg) : scene(scene), svg(svg), places(scene) {}

void Labels::draw(const Object& view, const Path& path, const std::vector<std::string>& numbers)
{
    if (path.empty())
        return;
    std::size_t next = 0;
    for (const reader::Attribute& attribute : view.attributes())
        if (const Object* const label = attribute.value.asObject(); label && isLineLabel(*label)) {
            drawOne(view, *label, path, next < numbers.size() ? numbers[next] : std::string());
            ++next;
        }
}

void Labels::drawOne(const Object& view, const Object& label, const Path& path, const std::string& number)
{
    const Context& context = scene.context();
    const TextBlock block = blockOfLabel(context, view, label, number);
    if (block.lines.empty())
        return;
    const auto found = places.of(label);
    const Rect rect = found ? *found : rectOf(view, label, path, block);
    if (taken.size() < mostKept)
        taken.push_back(rect);
    if (context.hasGrounds)
        svg.ground(rect);
    svg.text(block, rect, Align::centre, context.measure);
}

Rect Labels::rectOf(const Object& view, const Object& label, const Path& path, const TextBlock& block)
{
    const Size size = block.size(scene.context().measure);
    if (isPlaced(label) && !scene.context().isComputed)
        return places.clearOfEdges(rectOfLabel(label, size), block.font);
    return moved(clearOfEnds(view, rectBeside(label, path, size)));
}

// Below the labels that are already there.
Rect Labels::moved(Rect rect) const
{
    constexpr int mostTimes = 4;
    for (int times = 0; times < mostTimes; ++times) {
        const Rect core = rect.grownBy(-tolerance);
        const auto other =
            std::find_if(taken.begin(), taken.end(), [&](const Rect& each) { return each.overlaps(core); });
        if (other == taken.end())
            break;
        rect = rect.movedBy(0, other->bottom - rect.top);
    }
    return rect;
}

// Without covering the boxes at the ends of the line, if a small step is enough for that.
Rect Labels::clearOfEnds(const Object& view, Rect rect) const
{
    for (const std::string_view key : {"client", "supplier"}) {
        const Node* const node = scene.nodeOf(view, key);
        if (!node || !node->rect.overlaps(rect))
            continue;
        const double right = node->rect.right - rect.left;
        const double left = rect.right - node->rect.left;
        const double down = node->rect.bottom - rect.top;
        const double up = rect.bottom - node->rect.top;
        const double step = std::min({right, left, down, up});
        if (step > longestStep)
            continue;
        if (step == right || step == left)
            rect = rect.movedBy(step == right ? step + 2 : -step - 2, 0);
        else
            rect = rect.movedBy(0, step == down ? step + 2 : -step - 2);
    }
    return rect;
}

} // namespace render
