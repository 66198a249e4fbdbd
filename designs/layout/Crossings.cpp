#include "designs/layout/Crossings.h"

#include "designs/layout/Geometry.h"

#include <algorithm>
#include <cstddef>

namespace design {

void openCrossingLines(Diagram& diagram)
{
    std::size_t comparisonsLeft = 20000000; // so many take less than a second
    for (Line& line : diagram.lines) {
        if (!line.hasEnds || line.points.size() != 2)
            continue;
        if (comparisonsLeft < diagram.boxes.size())
            return;
        comparisonsLeft -= diagram.boxes.size();
        const Point first = line.points.front();
        const Point last = line.points.back();
        const auto isInTheWay = [&](const Box& box) {
            return box.bounds && crosses(first, last, *box.bounds) && !contains(*box.bounds, first) &&
                   !contains(*box.bounds, last);
        };
        if (std::any_of(diagram.boxes.begin(), diagram.boxes.end(), isInTheWay)) {
            line.points.clear();
            line.hasEnds = false;
        }
    }
}

} // namespace design
