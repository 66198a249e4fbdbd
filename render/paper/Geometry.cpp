#include "render/paper/Geometry.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace render {

namespace {

constexpr double greatestPlace = 100000;
constexpr double greatestLength = 40000;

double bounded(double value, double least, double greatest)
{
    return std::isnan(value) ? 0 : std::clamp(value, least, greatest);
}

bool isInRounded(const Rect& rect, double radius, Point point)
{
    constexpr double almost = 0.999; // the middle of the smallest box is still one
    const double corner = almost * std::min({radius, rect.width() / 2, rect.height() / 2});
    return distance(clampedInto(rect.grownBy(-corner), point), point) <= corner;
}

bool isInside(const Rect& rect, Outline outline, Point point)
{
    const Point centre = rect.centre();
    const double x = rect.width() > 0 ? (point.x - centre.x) / (rect.width() / 2) : 0;
    const double y = rect.height() > 0 ? (point.y - centre.y) / (rect.height() / 2) : 0;
    switch (outline) {
    case Outline::ellipse:
        return x * x + y * y <= 1;
    case Outline::diamond:
        return std::abs(x) + std::abs(y) <= 1;
    case Outline::folder:
        return rect.contains(point) &&
               (point.y >= rect.top + tabHeight || point.x <= rect.left + tabWidth * rect.width());
    case Outline::rounded:
        return isInRounded(rect, cornerRadius, point);
    case Outline::capsule:
        return isInRounded(rect, rect.height() / 2, point);
    case Outline::rectangle:
        break;
    }
    return rect.contains(point);
}

// The part of the line from a to b, cut at the sides of `rect` one after the other, that remains.
std::optional<std::pair<double, double>> partWithin(Point a, Point b, const Rect& rect)
{
    double low = 0;
    double high = 1;
    const auto cut = [&](double start, double change, double least, double greatest) {
        if (change == 0)
            return start >= least && start <= greatest;
        const double first = (least - start) / change;
        const double second = (greatest - start) / change;
        low = std::max(low, std::min(first, second));
        high = std::min(high, std::max(first, second));
        return low <= high;
    };
    if (cut(a.x, b.x - a.x, rect.left, rect.right) && cut(a.y, b.y - a.y, rect.top, rect.bottom))
        return std::pair(low, high);
    return std::nullopt;
}

bool crosses(Point a, Point b, const Rect& rect)
{
    return partWithin(a, b, rect).has_value();
}

double distanceToSegment(Point a, Point b, Point point)
{
    const double length = distance(a, b);
    if (length == 0)
        return distance(a, point);
    const double along = ((point.x - a.x) * (b.x - a.x) + (point.y - a.y) * (b.y - a.y)) / (length * length);
    return distance(between(a, b, std::clamp(along, 0.0, 1.0)), point);
}

} // namespace

bool Rect::contains(Point point) const
{
    return point.x >= left && point.x <= right && point.y >= top && point.y <= bottom;
}

bool Rect::overlaps(const Rect& other) const
{
    return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
}

Rect Rect::grownBy(double margin) const
{
    return {left - margin, top - margin, right + margin, bottom + margin};
}

Rect Rect::movedBy(double x, double y) const
{
    return {left + x, top + y, right + x, bottom + y};
}

Rect rectAround(Point centre, Size size)
{
    return {centre.x - size.width / 2, centre.y - size.height / 2, centre.x + size.width / 2,
            centre.y + size.height / 2};
}

double boundedPlace(double value)
{
    return bounded(value, -greatestPlace, greatestPlace);
}

double boundedLength(double value)
{
    return bounded(value, 0, greatestLength);
}

double distance(Point a, Point b)
{
    return std::hypot(a.x - b.x, a.y - b.y);
}

Point between(Point a, Point b, double part)
{
    return {a.x + (b.x - a.x) * part, a.y + (b.y - a.y) * part};
}

Point direction(Point from, Point to)
{
    const double length = distance(from, to);
    return length == 0 ? Point{1, 0} : Point{(to.x - from.x) / length, (to.y - from.y) / length};
}

Point clampedInto(const Rect& rect, Point point)
{
    return {std::clamp(point.x, rect.left, rect.right), std::clamp(point.y, rect.top, rect.bottom)};
}

Point clipped(const Rect& rect, Outline outline, Point inside, Point outside)
{
    const Point centre = rect.centre();
    for (const Point& place : {Point{inside.x, centre.y}, Point{centre.x, inside.y}, centre})
        if (!isInside(rect, outline, inside))
            inside = place;
    if (isInside(rect, outline, outside))
        return inside;
    double low = 0;
    double high = 1;
    for (int step = 0; step < 24; ++step) {
        const double middle = (low + high) / 2;
        (isInside(rect, outline, between(inside, outside, middle)) ? low : high) = middle;
    }
    return between(inside, outside, low);
}

Point clipped(const Rect& first, const Rect& second, Point inside, Point outside)
{
    double last = 0;
    for (const Rect* const rect : {&first, &second})
        if (const auto part = partWithin(inside, outside, *rect))
            last = std::max(last, part->second);
    return between(inside, outside, last < 1 ? last : 0);
}

double lengthOf(const Path& path)
{
    double length = 0;
    for (std::size_t i = 1; i < path.size(); ++i)
        length += distance(path[i - 1], path[i]);
    return length;
}

PathPlace placeOn(const Path& path, double part)
{
    if (path.empty())
        return {{}, {1, 0}};
    double rest = lengthOf(path) * std::clamp(part, 0.0, 1.0);
    for (std::size_t i = 1; i < path.size(); ++i) {
        const double length = distance(path[i - 1], path[i]);
        if (length > 0 && rest <= length)
            return {between(path[i - 1], path[i], rest / length), direction(path[i - 1], path[i])};
        rest -= length;
    }
    return {path.back(), path.size() < 2 ? Point{1, 0} : direction(path[path.size() - 2], path.back())};
}

double distance(const Path& path, Point point)
{
    double least = path.empty() ? 0 : distance(path.front(), point);
    for (std::size_t i = 1; i < path.size(); ++i)
        least = std::min(least, distanceToSegment(path[i - 1], path[i], point));
    return least;
}

bool crosses(const Path& path, const Rect& rect)
{
    for (std::size_t i = 1; i < path.size(); ++i)
        if (crosses(path[i - 1], path[i], rect))
            return true;
    return false;
}

Path partOf(const Path& path, double from, double to)
{
    const double length = lengthOf(path);
    Path part = {placeOn(path, from).point};
    double along = 0;
    for (std::size_t i = 1; i < path.size(); ++i) {
        along += distance(path[i - 1], path[i]);
        if (along > from * length && along < to * length)
            part.push_back(path[i]);
    }
    part.push_back(placeOn(path, to).point);
    return part;
}

Path reversed(Path path)
{
    std::reverse(path.begin(), path.end());
    return path;
}

Path shortened(Path path, double length)
{
    const Point end = path.back();
    std::size_t outside = path.size() - 1;
    while (outside > 0 && distance(path[outside], end) < length)
        --outside;
    if (outside == path.size() - 1 || distance(path[outside], end) < length)
        return path;
    double low = 0; // part of the way towards the end where the line is still outside
    double high = 1;
    for (int step = 0; step < 24; ++step) {
        const double middle = (low + high) / 2;
        (distance(between(path[outside], path[outside + 1], middle), end) >= length ? low : high) = middle;
    }
    const Point last = between(path[outside], path[outside + 1], low);
    path.resize(outside + 1);
    path.push_back(last);
    return path;
}

} // namespace render
