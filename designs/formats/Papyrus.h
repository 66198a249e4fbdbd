#pragma once

#include "designs/formats/Format.h"

namespace design {

/// Models of Papyrus: the UML tree in one file (`.uml`) and the diagrams in another beside it (`.notation`).
[[nodiscard]] Format papyrusFormat();

} // namespace design
