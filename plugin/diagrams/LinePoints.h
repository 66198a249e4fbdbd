#pragma once

#include "diagrams/Geometry.h"

#include <optional>
#include <string_view>

/// Walks through the points of a line as the model holds them, in model units. What stands at a point's place and is
/// none counts as (0,0).
class PointReader {
public:
    explicit PointReader(std::string_view text) : rest(text) {}
    /// The next point; nothing after the last.
    std::optional<Point> next();

private:
    std::string_view rest;
};

/// What a view needs to know of its line besides the points; fed with the points one by one.
class LineShape {
public:
    void add(const Point& point);
    /// Ends of the line in Rose units.
    [[nodiscard]] Point origin() const;
    [[nodiscard]] Point terminal() const;
    /// No two consecutive points differ in both coordinates.
    [[nodiscard]] bool isRectilinear() const { return rectilinear; }

private:
    bool isEmpty = true;
    bool rectilinear = true;
    Point first;
    Point last;
};

[[nodiscard]] Point scaled(const Point& point);

/// Writes the line of a view: its points, its style and for a rectilinear line its ends; only the style when `vertices`
/// is empty.
///
///     vertices\t(list Points
///     \t(10,20)
///     \t(10,80))
///     line_style\t3
///     origin_attachment     (10,20)
///     terminal_attachment   (10,80)
void printLine(const KivString& vertices);

/// The line points of a projection that has some, or null.
[[nodiscard]] const KivString* verticesOf(const KivProjection* projection);
