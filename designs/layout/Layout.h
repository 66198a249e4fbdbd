#pragma once

#include "designs/layout/LayoutBudget.h"
#include "designs/model/Catalogue.h"
#include "designs/model/Design.h"

namespace design {

/// Gives boxes of a diagram that keeps its places a size about their centres if they have none. Where all boxes lie in
/// the origin, they have no places.
void sizeAboutCentres(Diagram& diagram, const Catalogue& catalogue);

/// Gives a place to every box of the diagram that has none, and a size to those that were only placed. Where no box has
/// a place, the whole diagram is laid out: generalizations upward, lines horizontal and vertical. Otherwise what has no
/// place stands in rows below the rest. False when the whole diagram had to be set in rows, for want of budget or
/// because the layout library could not do it.
[[nodiscard]] bool layOut(Diagram& diagram, const Catalogue& catalogue, LayoutBudget& budget);

/// Leads the lines of a diagram whose boxes all have places around those boxes that the straight way would run through.
/// Lines that need no such way are taken out of it.
void leadAround(Diagram& diagram, const Catalogue& catalogue);

} // namespace design
