#pragma once

#include "designs/model/Design.h"

#include <utility>
#include <vector>

namespace design {

[[nodiscard]] Point centreOf(const Rectangle& box);
[[nodiscard]] bool contains(const Rectangle& box, Point point);

/// The point of the box that is nearest to `point`.
[[nodiscard]] Point nearestIn(const Rectangle& box, Point point);
[[nodiscard]] double distance(Point a, Point b);

/// Whether the straight line from `a` to `b` runs through the box.
[[nodiscard]] bool crosses(Point a, Point b, const Rectangle& box);

[[nodiscard]] bool overlaps(const Rectangle& a, const Rectangle& b);

/// The smallest box around both.
[[nodiscard]] Rectangle unite(const Rectangle& a, const Rectangle& b);

using Points = std::vector<Point>;

/// The way from box to box through the bends, or along a whole way that may begin or end inside of them or short of
/// them; begins at the border of the first and ends at the border of the second.
[[nodiscard]] Points fromBorderToBorder(Points way, bool hasEnds, const Rectangle& first, const Rectangle& second);

/// The way that a line takes from a box back to it when nobody has drawn one.
[[nodiscard]] Points loopAt(const Rectangle& box);

/// The point half way along, and the ways from there back to the first and on to the last point.
struct SplitLine {
    Point middle;
    Points toFirst;
    Points toLast;
};
[[nodiscard]] SplitLine splitInTheMiddle(const Points& way);

} // namespace design
