#include "render/scene/Loops.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace render {

namespace {

constexpr double loopReach = 57; // of a transition to the same state, to each side

enum class Side : std::uint8_t { above, below, left, right };

Side sideOf(const Rect& rect, Point place)
{
    if (place.y < rect.top || place.y > rect.bottom)
        return place.y < rect.top ? Side::above : Side::below;
    if (place.x < rect.left || place.x > rect.right)
        return place.x < rect.left ? Side::left : Side::right;
    return Side::above;
}

} // namespace

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

Path loop(const Rect& rect, Point place)
{
    constexpr int pieces = 24;
    if (rect.contains(place))
        place = {rect.centre().x, rect.top - loopHeight};
    const Side side = sideOf(rect, place);
    const bool isUpright = side == Side::above || side == Side::below;
    const Point foot = clampedInto(rect, place);
    const Point middle = isUpright ? Point{place.x, foot.y} : Point{foot.x, place.y};
    Path path;
    for (int i = 0; i <= pieces; ++i) {
        const double angle = std::numbers::pi * i / pieces;
        const double along = -std::cos(angle) * loopReach;
        const double up = std::sin(angle);
        path.push_back(isUpright ? Point{middle.x + along, middle.y + up * (place.y - middle.y)}
                                 : Point{middle.x + up * (place.x - middle.x), middle.y + along});
    }
    return path;
}

} // namespace render
