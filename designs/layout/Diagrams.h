#pragma once

#include "designs/model/Catalogue.h"
#include "designs/model/Design.h"
#include "designs/model/Report.h"
#include "designs/settling/Settling.h"

namespace design {

/// Leaves in a package's diagrams what can be shown: every class once, every package once if `reach` includes packages,
/// and the lines between those that are there. The rest goes into the report, by the kinds that the file calls it. An
/// association class that its association would lead to comes in.
void settleDiagrams(Package& package, Reach reach, const TextsById& kinds, const Catalogue& catalogue, Report& report);

/// Whether any diagram of the design shows anything.
[[nodiscard]] bool showsAnything(const Package& root);

/// Gives every package a diagram "Overview" of its classes and what joins them.
void addOverviews(Package& root, const Catalogue& catalogue, Report& report);

/// Moves what the diagram shows away from negative places, and from the symbols that a Rose file shows for the
/// `subPackages` packages in the diagram's package.
void settleOrigin(Diagram& diagram, std::size_t subPackages);

} // namespace design
