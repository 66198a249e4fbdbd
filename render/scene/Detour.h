#pragma once

#include "render/paper/Geometry.h"

namespace render {

/// A way of level and upright pieces between two points that crosses none of `boxes`, short and with few corners. Empty
/// where there is none, or too much stands between the points.
[[nodiscard]] Path detour(const std::vector<Rect>& boxes, Point from, Point to);

} // namespace render
