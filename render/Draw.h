#pragma once

#include "reader/index/Index.h"
#include "render/paper/DrawOptions.h"

#include <string>

namespace render {

/// The picture of a diagram: one `svg` element with a `viewBox` in the units of the file, complete in itself, all
/// styles in attributes. Each item is a group `<g class="item KIND" data-view="NUMBER" data-quid="QUID">`: the kind of
/// the view in lower case, its number if it has one, the quid of the element that it shows if that is in the document,
/// and the element's name as `title`. Texts of the file are only ever text in it.
[[nodiscard]] std::string svgOf(const reader::Document& document, const reader::Index& index,
                                const reader::Diagram& diagram, const DrawOptions& options = {});

} // namespace render
