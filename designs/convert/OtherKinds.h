#pragma once

#include "designs/model/Design.h"
#include "designs/model/Report.h"
#include "designs/model/Selection.h"

namespace design {

/// Tells of the classifiers, and of their features, that are elements of another kind in the host's files: these say
/// by a class's stereotype alone that it is something else, and of types not more than the names.
void tellOtherKinds(const Package& root, const Selection& selection, Report& report);

} // namespace design
