#pragma once

#include "designs/model/Design.h"

#include <vector>

namespace design {

/// The bends of a line between the two boxes that it joins, from its first end to the other, however the file keeps
/// them. The points where it leaves the boxes are not among them.
[[nodiscard]] std::vector<Point> bendsOf(const Line& line);

} // namespace design
