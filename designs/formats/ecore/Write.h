#pragma once

#include "designs/formats/Format.h"

#include <vector>

namespace design::ecore {

/// The file of a design: classes with attributes, references and operations, data types and enumerations in packages.
[[nodiscard]] std::vector<WrittenFile> write(const Writing& writing, Report& report);

} // namespace design::ecore
