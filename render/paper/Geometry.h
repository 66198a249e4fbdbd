#pragma once

#include "reader/notation/Petal.h"

#include <cstdint>
#include <vector>

/// Points and boxes in the units of the file: 300 to the inch, y grows downward.

namespace render {

using reader::Point;

struct Size {
    double width = 0;
    double height = 0;
};

struct Rect {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

    [[nodiscard]] double width() const { return right - left; }
    [[nodiscard]] double height() const { return bottom - top; }
    [[nodiscard]] Point centre() const { return {(left + right) / 2, (top + bottom) / 2}; }
    [[nodiscard]] bool contains(Point point) const;
    [[nodiscard]] bool overlaps(const Rect& other) const;
    [[nodiscard]] Rect grownBy(double margin) const;
    [[nodiscard]] Rect movedBy(double x, double y) const;
};

[[nodiscard]] Rect rectAround(Point centre, Size size);

/// Form of what lines end at.
enum class Outline : std::uint8_t { rectangle, ellipse, diamond, folder, rounded, capsule };

/// Of the corners of a rounded outline.
inline constexpr double cornerRadius = 30;

/// Of a folder: its tab stands at the left above the rest.
inline constexpr double tabHeight = 36;
inline constexpr double tabWidth = 0.4; ///< part of the whole

/// Lengths and places that a diagram can have; what is beyond, or no number, becomes the nearest that it can.
[[nodiscard]] double boundedPlace(double value);
[[nodiscard]] double boundedLength(double value);

[[nodiscard]] double distance(Point a, Point b);
[[nodiscard]] Point between(Point a, Point b, double part);

/// The direction from `from` to `to`, of length 1; to the right if they are the same.
[[nodiscard]] Point direction(Point from, Point to);

/// `point` if it is in `rect`, else the nearest in it.
[[nodiscard]] Point clampedInto(const Rect& rect, Point point);

/// Where the line from `inside` to `outside` leaves the box; `inside` when it does not.
[[nodiscard]] Point clipped(const Rect& rect, Outline outline, Point inside, Point outside);
/// Where it leaves the last of two boxes that it is in.
[[nodiscard]] Point clipped(const Rect& first, const Rect& second, Point inside, Point outside);

using Path = std::vector<Point>;

/// The point at `part` of the whole length, and the direction of the line there.
struct PathPlace {
    Point point;
    Point direction;
};
[[nodiscard]] PathPlace placeOn(const Path& path, double part);
[[nodiscard]] double lengthOf(const Path& path);
[[nodiscard]] double distance(const Path& path, Point point);
/// Whether any of the path is in `rect`.
[[nodiscard]] bool crosses(const Path& path, const Rect& rect);
/// From the point at `from` to that at `to`, parts of the whole length.
[[nodiscard]] Path partOf(const Path& path, double from, double to);
[[nodiscard]] Path reversed(Path path);
/// `path` without what is within `length` of its end, if it leads further away than that.
[[nodiscard]] Path shortened(Path path, double length);

} // namespace render
