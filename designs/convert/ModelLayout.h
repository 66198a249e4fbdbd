#pragma once

#include "designs/model/Report.h"

#include "kiv/KivPackage.h"

#include <memory>

namespace design {

/// Gives a place to every box of a model's class diagrams that has none, and a size to those that were only placed.
/// Where no box of a diagram had a place, its lines get ways between the boxes as well, unless they have some. What is
/// placed stays where it is. Diagrams that could only be set in rows are told in the report.
[[nodiscard]] std::unique_ptr<KivModel> placeBoxes(std::unique_ptr<KivModel> model, Report& report);

} // namespace design
