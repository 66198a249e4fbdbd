#include "render/scene/LabelPlaces.h"

#include <algorithm>
#include <cmath>

namespace render {

namespace {

// Ways in all directions, the shortest first.
const std::vector<Point>& smallSteps()
{
    static const std::vector<Point> steps = [] {
        constexpr int across = 160;
        constexpr int down = 120;
        constexpr int grid = 8;
        std::vector<Point> all;
        for (int x = -across; x <= across; x += grid)
            for (int y = -down; y <= down; y += grid)
                all.push_back({static_cast<double>(x), static_cast<double>(y)});
        std::stable_sort(all.begin(), all.end(),
                         [](const Point& a, const Point& b) { return std::hypot(a.x, a.y) < std::hypot(b.x, b.y); });
        return all;
    }();
    return steps;
}

} // namespace

void LabelPlaces::partChosen(const Scene& scene)
{
    for (const Node& node : scene.nodes()) {
        if (!node.view->is("Label", "InterObjView"))
            boxes.addRect(Obstacles::Kind::box, node.rect);
        if (node.isNamedOutside && !node.blocks.empty())
            boxes.addRect(Obstacles::Kind::box, lettersIn(node.nameRect, node.blocks.back().font));
    }
    for (const Line& line : scene.lines())
        if (!line.qualifiers.lines.empty())
            boxes.addRect(Obstacles::Kind::box, line.qualifierRect);
    std::vector<const Wanted*> open;
    for (const Wanted& wanted : labels) {
        if (!isPlaced(*wanted.label))
            continue;
        const Rect rect = clearOfEdges(rectOfLabel(*wanted.label, wanted.size), wanted.font);
        const Rect letters = lettersIn(rect, wanted.font);
        if (!isLegible(letters, *wanted.path)) {
            open.push_back(&wanted);
            continue;
        }
        obstacles.addRect(Obstacles::Kind::label, letters);
        rects.emplace(wanted.label, rect);
    }
    for (const Wanted* const wanted : open)
        step(*wanted);
}

Rect LabelPlaces::clearOfEdges(const Rect& rect, const Font& font)
{
    constexpr Size most = {6, 12};
    const Rect letters = lettersIn(rect, font);
    Point least = {most.width, most.height};
    bool isFound = false;
    for (const Obstacles::Obstacle& box : boxes.in(letters)) {
        for (const Point step : {Point{0, box.rect.bottom - letters.top}, Point{0, box.rect.top - letters.bottom},
                                 Point{box.rect.right - letters.left, 0}, Point{box.rect.left - letters.right, 0}}) {
            const bool isSmall = std::abs(step.x) <= most.width && std::abs(step.y) <= most.height;
            if (!isSmall || std::hypot(step.x, step.y) >= std::hypot(least.x, least.y) ||
                !boxes.in(letters.movedBy(step.x, step.y).grownBy(-0.1)).empty())
                continue;
            least = step;
            isFound = true;
        }
    }
    return isFound ? rect.movedBy(least.x, least.y) : rect;
}

// A box in which the whole line runs, as a state around others, lies behind it and its labels.
bool LabelPlaces::isLegible(const Rect& letters, const Path& path)
{
    constexpr double touch = 5; // between letters that are not read as one
    const Rect core = letters.grownBy(-touch);
    const auto hides = [&](const Obstacles::Obstacle& box) {
        const Rect inner = box.rect.grownBy(-1);
        return !inner.contains(path.front()) || !inner.contains(path.back());
    };
    const std::vector<Obstacles::Obstacle> there = boxes.in(core);
    return std::none_of(there.begin(), there.end(), hides) && obstacles.in(core).empty();
}

// To the nearest place where it can be read; none that is far is better than what somebody chose.
void LabelPlaces::step(const Wanted& wanted)
{
    const Rect rect = rectOfLabel(*wanted.label, wanted.size);
    for (const Point& way : smallSteps()) {
        const Rect there = rect.movedBy(way.x, way.y);
        const Rect letters = lettersIn(there, wanted.font);
        if (obstacles.isExhausted() || boxes.isExhausted())
            break;
        if (!isLegible(letters, *wanted.path))
            continue;
        obstacles.addRect(Obstacles::Kind::label, letters);
        rects.emplace(wanted.label, there);
        return;
    }
    obstacles.addRect(Obstacles::Kind::label, lettersIn(rect, wanted.font));
}

} // namespace render
