#pragma once

#include "designs/convert/Convert.h"
#include "designs/formats/Format.h"
#include "designs/model/Report.h"

#include <string_view>

namespace design {

/// The format whose name is given, or null.
[[nodiscard]] const Format* formatNamed(std::string_view name);

/// The format that the content is of, or null when it is of none.
[[nodiscard]] const Format* formatOf(const Source& source);

/// Reads a design and makes it a model file. Diagrams that the file gives no places for are laid out, and a design
/// without any diagram gets overviews, unless `hasLayout` is false. Throws UnreadableDesign, also when the file holds
/// nothing of what a model is made of.
[[nodiscard]] ModelText importDesign(const Format& format, const Source& source, bool hasLayout, Report& report);

} // namespace design
