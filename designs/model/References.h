#pragma once

#include "designs/model/Design.h"
#include "designs/model/Report.h"

namespace design {

/// Gives every element that can be referred to an identifier of its own: what has none, or one that was given before,
/// gets a new one.
void giveIdentifiers(Design& design, Report& report);

/// Makes every end of an association or relationship lead to a classifier. Those outside of the file get a placeholder
/// in a package "External"; what ends at nothing, or at no classifier, goes, and the report says so.
void resolveEnds(Design& design, Report& report);

} // namespace design
