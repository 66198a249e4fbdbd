#pragma once

#include "kiv/KivString.h"

/// A relationship's line points, parsed and scaled for a view of the relationship.
///
/// The text holds the points in model units, origin end first: `(10,20)` CR LF `(10,80)`. Every closing parenthesis
/// ends a point, which begins at the last opening parenthesis before it; what is no point there counts as (0,0), and
/// text between points is ignored. Points in Rose units are those times the diagram's scale, truncated toward zero.
/// Coordinates past the int range are clamped to it, before scaling and after.
class __attribute__((visibility("default"))) KivIbmRationalRose98ExportVertices {
public:
    explicit KivIbmRationalRose98ExportVertices(const KivString& vertices);

    /// Appends to the result, and returns, one line for each point: a line start one level deeper than the current
    /// one, and the point in Rose units. To be called once.
    KivString& getLinePoints();

private:
    KivString linePoints;
    KivString vertices;

public:
    KivString originPoint;   ///< the first point in Rose units, (0,0) without points
    KivString terminalPoint; ///< the last point in Rose units, (0,0) without points
    bool rectilinear;        ///< no two consecutive points differ in both coordinates (model units)
};
