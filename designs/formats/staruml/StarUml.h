#pragma once

#include "designs/formats/Format.h"

namespace design {

/// Projects of StarUML 2 and later (`.mdj`): one JSON tree of model elements and views.
[[nodiscard]] Format starUmlFormat();

} // namespace design
