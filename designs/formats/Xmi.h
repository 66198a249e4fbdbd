#pragma once

#include "designs/formats/Format.h"

namespace design {

/// UML 2 in XMI 2.x with no tool's own parts: Eclipse UML2 and what else writes the same. Diagrams in UMLDI, its
/// form of exchange, are taken.
[[nodiscard]] Format xmiFormat();

} // namespace design
