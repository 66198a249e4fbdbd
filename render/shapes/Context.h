#pragma once

#include "reader/index/Index.h"
#include "render/paper/DrawOptions.h"
#include "render/paper/Svg.h"

#include <string>
#include <string_view>
#include <vector>

/// What all items of a picture have in common, and what can be read from any view.

namespace render {

using reader::Object;

struct Context {
    Context(const reader::Document& document, const reader::Index& index, const reader::Diagram& diagram,
            const TextMeasure& measure, std::function<void(const std::string&)> warn);

    const reader::Document& document;
    const reader::Index& index;
    const reader::Diagram& diagram;
    const TextMeasure& measure;
    std::function<void(const std::string&)> warn;
    Font defaultFont;
    const Object* defaults;        ///< of the model, or null
    bool isComputed = false;       ///< the exporter wrote the file: nobody has seen its labels where it puts them
    bool hasGrounds = false;       ///< labels of lines stand on white paper
    mutable std::size_t linesLeft; ///< that lists of elements may bring, for views of one element can be many
};

/// Adds a line for each of `objects`, as many as the picture has room for. An ellipsis stands for the rest.
void addLines(const Context& context, TextBlock& block, const std::vector<const Object*>& objects,
              const std::function<std::string(const Object&)>& lineOf);

/// The font of a view or label; what it leaves open is as in `otherwise`.
[[nodiscard]] Font fontOf(const Object& view, const Font& otherwise);

/// Line and fill colour of a view. One that names neither has those that the host gives new items.
[[nodiscard]] Stroke strokeOf(const Object& view);

/// `location` if it is there and within reason.
[[nodiscard]] Point locationOf(const Object& view);
/// Whether the view has a place of its own: (0,0) is written for those that have none.
[[nodiscard]] bool isPlaced(const Object& view);
/// `width` and `height`, 0 where they are not written.
[[nodiscard]] Size sizeOf(const Object& view);
/// Whether a line has more points than are drawn. Drawing takes the square of their number, for they may cross.
[[nodiscard]] bool hasTooManyPoints(const Object& view);
/// `vertices`, the first thousand and the last, else the attachments at both ends, else nothing.
[[nodiscard]] Path pointsOf(const Object& view);

/// One line of text behind a key.
[[nodiscard]] std::string lineOf(const Object& object, std::string_view key);

/// The text of the label of a view if it has one, else the name of its element, else its own.
[[nodiscard]] std::string nameOf(const Object& view, const Object* element);

/// Where the file has a block of text of that size: around the label's location, right of it, or from it downwards in
/// an area of the label's width.
[[nodiscard]] Rect rectOfLabel(const Object& label, Size size);

/// The `max_width` of a label, at which Rose breaks its text; 0 where it is not written.
[[nodiscard]] double widthOfLabel(const Object& label);

/// `(from Orders)` for an element that the package of the diagram does not own, or no line.
[[nodiscard]] TextBlock ownerOf(const Context& context, const Object& view, const Object* element, const Font& font);

/// The element's stereotype in brackets if the view shows it as text, or empty.
[[nodiscard]] std::string stereotypeOf(const Object& view, const Object* element);

/// Starts the group of a view.
void beginItem(Svg& svg, const Object& view, const Object* element);

} // namespace render
