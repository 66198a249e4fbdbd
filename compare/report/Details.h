#pragma once

#include "compare/changes/Changes.h"

#include <string>

namespace compare {

/// What is different of one element, or of one view: "renamed from Purchase", "type Integer -> Money", "moved". Long
/// texts are shown from where they begin to differ.
[[nodiscard]] std::string detailOf(const Change& change);

} // namespace compare
