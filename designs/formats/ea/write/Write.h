#pragma once

#include "designs/formats/Format.h"

#include <vector>

namespace design::ea {

/// The file of a design in the tool's own dialect of XMI 2.1: a UML model, and what else there is in an Extension.
[[nodiscard]] std::vector<WrittenFile> write(const Writing& writing, Report& report);

} // namespace design::ea
