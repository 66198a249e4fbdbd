#pragma once

#include "designs/formats/Format.h"

#include <vector>

namespace design::uml2 {

/// The model file of a design, without its diagrams.
[[nodiscard]] std::vector<WrittenFile> write(const Writing& writing, Report& report);

} // namespace design::uml2
