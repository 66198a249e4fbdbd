#pragma once

#include "designs/model/Catalogue.h"
#include "designs/model/Design.h"

namespace design {

/// How much larger a diagram must be drawn so that nine of ten of its boxes have room for the host's text, which is
/// larger than that of most tools: between 1 and 2. Boxes count by what they show.
[[nodiscard]] double factorForText(const Diagram& diagram, const Catalogue& catalogue);

/// Enlarges all that is drawn by the factor, seen from the origin, then moves it.
void place(Diagram& diagram, double factor, Point offset);

} // namespace design
