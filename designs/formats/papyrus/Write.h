#pragma once

#include "designs/formats/Format.h"

#include <vector>

namespace design::papyrus {

/// The model, its diagrams and the file that opens both. The output itself is the one whose ending it has.
[[nodiscard]] std::vector<WrittenFile> write(const Writing& writing, Report& report);

} // namespace design::papyrus
