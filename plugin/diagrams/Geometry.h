#pragma once

#include "kiv/KivPackage.h"

#include <cstddef>
#include <cstdint>

/// Places on diagrams. Model coordinates are ints; Rose coordinates are those times the scale. Sums and differences
/// are exact in 64 bits; a coordinate is clamped to the int range once, where it is written.
using Coordinate = std::int64_t;

/// A place in Rose units, written as `(x,y)`.
struct Point {
    Coordinate x = 0;
    Coordinate y = 0;

    friend bool operator==(const Point&, const Point&) = default;
};
inline constexpr std::size_t pointBound = 25; // two ints, parentheses and comma

constexpr std::size_t bound(const Point& /*point*/)
{
    return pointBound;
}
char* copy(char* to, const Point& point);

[[nodiscard]] int clamped(Coordinate coordinate);

/// Conversion to int: toward zero, clamped to the int range.
[[nodiscard]] Coordinate truncated(double value);
/// A model coordinate or length in Rose units.
[[nodiscard]] Coordinate scaledX(Coordinate x);
[[nodiscard]] Coordinate scaledY(Coordinate y);

/// The first projection of `object` on `diagram`, or null. Fast also for an object that many diagrams show.
[[nodiscard]] const KivProjection* projectionOn(const KivModelObject& object, const KivClassDiagram& diagram);
/// The same, but null as long as no geometry is taken from the model.
[[nodiscard]] const KivProjection* geometryOn(const KivModelObject& object, const KivClassDiagram& diagram);

/// Number of a view, written after an at sign: the diagram's offset and an object number, in 32 bits.
[[nodiscard]] int viewNumber(int offset, long number);

/// Forgets what `projectionOn` has found out about objects with many projections.
void releaseProjections() noexcept;
