#pragma once

#include "reader/Index.h"

#include <functional>
#include <string>

namespace render {

class TextMeasure;

/// Of a picture as SVG, and of one that becomes an image, which takes longer.
inline constexpr double mostInSvg = 500000;
inline constexpr double mostInImage = 60000;

struct DrawOptions {
    /// In front of every `id` in the picture, so that several pictures can stand in one page.
    std::string idPrefix;
    /// Takes what could not be drawn as it is meant, a sentence a time; may be empty.
    std::function<void(const std::string&)> warn;
    /// How wide texts are; null for the fonts of this machine.
    const TextMeasure* measure = nullptr;
    /// How many shapes and texts of ordinary size the picture may hold.
    double mostElements = mostInSvg;
};

/// The picture of a diagram: one `svg` element with a `viewBox` in the units of the file, complete in itself, all
/// styles in attributes. Each item is a group `<g class="item KIND" data-view="NUMBER" data-quid="QUID">`: the kind of
/// the view in lower case, its number if it has one, the quid of the element that it shows if that is in the document,
/// and the element's name as `title`. Texts of the file are only ever text in it.
[[nodiscard]] std::string svgOf(const reader::Document& document, const reader::Index& index,
                                const reader::Diagram& diagram, const DrawOptions& options = {});

} // namespace render
