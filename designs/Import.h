#pragma once

#include "designs/convert/Convert.h"
#include "designs/formats/Formats.h"
#include "designs/model/Report.h"

#include <optional>

namespace design {

/// Reads a design and makes it a host's model. With `layout`, diagrams that the file gives no places for are laid out,
/// and a design without any diagram gets overviews; left open, that is done with all but Rose files, in which there is
/// what the host wants. Throws UnreadableDesign, also when the file holds
/// nothing of what a model is made of.
[[nodiscard]] Converted importDesign(const Format& format, const Source& source, std::optional<bool> layout,
                                     Report& report);

/// Reads a design to write it in another format. Throws UnreadableDesign, also when nothing was found that any format
/// could take.
[[nodiscard]] Design readDesign(const Format& format, const Source& source, Report& report);

/// Settles what was read for the writer of that format: every relation joins classifiers or packages, and every diagram
/// shows what is there. Diagrams without places are laid out if the format has places, and a design without any diagram
/// gets overviews, unless `hasLayout` is false.
void settleFor(const Format& target, Design& design, bool hasLayout, Report& report);

} // namespace design
