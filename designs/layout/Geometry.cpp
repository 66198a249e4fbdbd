#include "designs/layout/Geometry.h"

#include <algorithm>
#include <cmath>

namespace design {

namespace {

Point between(Point a, Point b, double share)
{
    return {a.x + (b.x - a.x) * share, a.y + (b.y - a.y) * share};
}

// Where the way from a point inside the box to one outside of it leaves the box.
Point exitPoint(const Rectangle& box, Point inside, Point outside)
{
    double share = 1;
    const auto limit = [&](double from, double to, double low, double high) {
        if (to > high)
            share = std::min(share, (high - from) / (to - from));
        else if (to < low)
            share = std::min(share, (low - from) / (to - from));
    };
    limit(inside.x, outside.x, box.left, box.left + box.width);
    limit(inside.y, outside.y, box.top, box.top + box.height);
    return between(inside, outside, std::max(share, 0.0));
}

// Makes a way that begins short of the box begin at it: a first piece that leads straight to it is made longer.
void extendStart(Points& way, const Rectangle& box)
{
    constexpr double hardlyShort = 4;
    const Point start = way.front();
    const Point nearest = nearestIn(box, start);
    const bool isAbove = nearest.x == start.x && way[1].x == start.x;
    const bool isBeside = nearest.y == start.y && way[1].y == start.y;
    if (isAbove || isBeside || distance(start, nearest) < hardlyShort)
        way.front() = nearest;
    else
        way.insert(way.begin(), nearest);
}

// Makes a way begin at the border of the box when it begins inside, or short of it.
void clipStart(Points& way, const Rectangle& box)
{
    const auto firstOutside = std::find_if(way.begin(), way.end(), [&](Point point) { return !contains(box, point); });
    if (firstOutside == way.begin())
        return extendStart(way, box);
    if (firstOutside == way.end())
        return;
    const auto lastInside = firstOutside - 1;
    *lastInside = exitPoint(box, *lastInside, *firstOutside);
    way.erase(way.begin(), lastInside);
}

} // namespace

double distance(Point a, Point b)
{
    return std::hypot(b.x - a.x, b.y - a.y);
}

Point centreOf(const Rectangle& box)
{
    return {box.left + box.width / 2, box.top + box.height / 2};
}

bool contains(const Rectangle& box, Point point)
{
    return point.x >= box.left && point.x <= box.left + box.width && point.y >= box.top &&
           point.y <= box.top + box.height;
}

bool crosses(Point a, Point b, const Rectangle& box)
{
    double first = 0; // of the line, in shares of its length
    double last = 1;
    const auto limit = [&](double from, double to, double low, double high) {
        if (from == to) {
            last = from > low && from < high ? last : first;
            return;
        }
        const auto [enter, leave] = std::minmax({(low - from) / (to - from), (high - from) / (to - from)});
        first = std::max(first, enter);
        last = std::min(last, leave);
    };
    limit(a.x, b.x, box.left, box.left + box.width);
    limit(a.y, b.y, box.top, box.top + box.height);
    return first < last;
}

bool overlaps(const Rectangle& a, const Rectangle& b)
{
    return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + b.height &&
           b.top < a.top + a.height;
}

Point nearestIn(const Rectangle& box, Point point)
{
    return {std::clamp(point.x, box.left, std::max(box.left, box.left + box.width)),
            std::clamp(point.y, box.top, std::max(box.top, box.top + box.height))};
}

Rectangle unite(const Rectangle& a, const Rectangle& b)
{
    const double left = std::min(a.left, b.left);
    const double top = std::min(a.top, b.top);
    return {left, top, std::max(a.left + a.width, b.left + b.width) - left,
            std::max(a.top + a.height, b.top + b.height) - top};
}

Points fromBorderToBorder(Points way, bool hasEnds, const Rectangle& first, const Rectangle& second)
{
    if (!hasEnds || way.size() < 2) {
        way.insert(way.begin(), centreOf(first));
        way.push_back(centreOf(second));
    }
    clipStart(way, first);
    std::reverse(way.begin(), way.end());
    clipStart(way, second);
    std::reverse(way.begin(), way.end());
    return way;
}

Points loopAt(const Rectangle& box)
{
    constexpr double reach = 40;
    const double right = box.left + box.width;
    const double bottom = box.top + box.height;
    const double outset = right - std::min(reach, box.width / 4);
    const double level = bottom - std::min(reach, box.height / 4);
    return {{right, level},
            {right + reach, level},
            {right + reach, bottom + reach},
            {outset, bottom + reach},
            {outset, bottom}};
}

SplitLine splitInTheMiddle(const Points& way)
{
    double length = 0;
    for (std::size_t i = 1; i < way.size(); ++i)
        length += distance(way[i - 1], way[i]);
    double rest = length / 2;
    std::size_t next = 1; // the point behind the middle
    while (next + 1 < way.size() && rest > distance(way[next - 1], way[next])) {
        rest -= distance(way[next - 1], way[next]);
        ++next;
    }
    const double piece = distance(way[next - 1], way[next]);
    SplitLine split;
    split.middle = piece > 0 ? between(way[next - 1], way[next], rest / piece) : way[next];
    split.toFirst = {split.middle};
    split.toFirst.insert(split.toFirst.end(), way.rend() - static_cast<std::ptrdiff_t>(next), way.rend());
    split.toLast = {split.middle};
    split.toLast.insert(split.toLast.end(), way.begin() + static_cast<std::ptrdiff_t>(next), way.end());
    return split;
}

} // namespace design
