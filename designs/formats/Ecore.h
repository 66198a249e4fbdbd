#pragma once

#include "designs/formats/Format.h"

namespace design {

/// Metamodels of the Eclipse Modeling Framework (`.ecore`).
[[nodiscard]] Format ecoreFormat();

} // namespace design
