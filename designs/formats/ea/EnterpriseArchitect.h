#pragma once

#include "designs/formats/Format.h"

namespace design {

/// XMI 2.1 and 2.5 of Enterprise Architect: the UML tree, and beside it an Extension that has the documentation and the
/// diagrams.
[[nodiscard]] Format enterpriseArchitectFormat();

} // namespace design
