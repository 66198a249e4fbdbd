#pragma once

#include "designs/model/Design.h"
#include "designs/model/Report.h"

namespace design {

/// Names packages and classifiers that have no name, which no Rose file can hold, and takes line ends and other control
/// characters out of names.
void settleNames(Package& root, Report& report);

} // namespace design
