#pragma once

#include "render/paper/Geometry.h"

namespace render {

/// How far a line that ends where it starts goes away from its box, where the file does not say.
inline constexpr double loopHeight = 90;

/// Half of a line from a box to itself that passes `place` outside of it, from there; `step` says which half.
[[nodiscard]] Path halfLoop(const Rect& rect, Point place, double step);

/// Half an ellipse from a side of a box to that side again, over `place`.
[[nodiscard]] Path loop(const Rect& rect, Point place);

} // namespace render
