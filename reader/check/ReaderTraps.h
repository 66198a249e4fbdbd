#pragma once

#include "reader/document/Document.h"

#include <vector>

namespace reader {

/// Layouts that the notation allows and that a known reader stumbles over: one finding a kind and file, at the first
/// place. What the format's own rules bring about is a note.
[[nodiscard]] std::vector<Finding> findReaderTraps(const Document& document);

} // namespace reader
