#pragma once

#include "designs/model/Catalogue.h"
#include "designs/model/Design.h"
#include "designs/model/Report.h"

#include <string_view>

namespace design {

/// Tells of a diagram that does not come out, with its boxes and lines.
void leaveDiagram(const Diagram& diagram, const Catalogue& catalogue, std::string_view reason, Report& report);

} // namespace design
