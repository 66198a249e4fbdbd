#pragma once

#include "render/painting/Lettering.h"

#include <pugixml.hpp>

#include <vector>

namespace render {

/// Draws what Svg writes, the same in every format of images.
class Painting {
public:
    /// `element` is a shape, a text, a group or the whole picture.
    void draw(pugi::xml_node element, cairo_t* drawing);

private:
    void drawText(pugi::xml_node element, cairo_t* drawing);

    Lettering lettering;
};

/// A number of a picture; 0 where there is none.
[[nodiscard]] double numberOf(pugi::xml_node element, const char* attribute);
/// All numbers in the text.
[[nodiscard]] std::vector<double> numbersOf(pugi::xml_node element, const char* attribute);

} // namespace render
