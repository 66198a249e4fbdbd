#pragma once

#include "browse/Packing.h"
#include "reader/index/Index.h"

#include <functional>
#include <string>
#include <string_view>

namespace browse {

struct PageOptions {
    std::string title; ///< of the page: usually the name of the file
    /// The picture of a diagram: one `svg` element, in which each item is an element of the class `item` whose
    /// `data-view` is the number of its view; or the empty text when there is none.
    std::function<std::string(const reader::Diagram&)> picture;
};

/// Writes the document as one HTML page, complete in itself, that needs nothing from elsewhere and lets nothing from
/// the document be more than text. The pictures are asked for one by one, in the order of `index.diagrams()`.
void writePage(const reader::Document& document, const reader::Index& index, const PageOptions& options,
               const Sink& sink);

} // namespace browse
