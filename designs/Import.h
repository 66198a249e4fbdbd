#pragma once

#include "designs/convert/Convert.h"
#include "designs/formats/Formats.h"
#include "designs/model/Report.h"

namespace design {

/// Reads a design and makes it a host's model. Diagrams that the file gives no places for are laid out, and a design
/// without any diagram gets overviews, unless `hasLayout` is false. Throws UnreadableDesign, also when the file holds
/// nothing of what a model is made of.
[[nodiscard]] Converted importDesign(const Format& format, const Source& source, bool hasLayout, Report& report);

} // namespace design
