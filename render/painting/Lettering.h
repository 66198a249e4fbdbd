#pragma once

#include "render/painting/GlyphMasks.h"
#include "render/painting/TextLayout.h"

#include <cairo.h>

#include <string>

namespace render {

/// A line of text in a picture, in the units of the picture.
struct Letters {
    std::string text;
    std::string families; ///< separated by commas; the first that is there is taken
    double em = 0;
    bool isBold = false;
    bool isItalic = false;
    bool isUnderlined = false;
    bool isStruck = false;
    bool isCentred = false; ///< else `x` is its left end
    double x = 0;
    double y = 0; ///< of the base line
};

/// Draws texts by the fonts of this machine. For one thread.
class Lettering {
public:
    Lettering();
    /// In the colour that is set.
    void draw(const Letters& letters, cairo_t* drawing);

private:
    /// The font, and what lies under and over its letters.
    void dress(const Letters& letters);
    /// From (x, y) on the base line.
    void putMasks(cairo_t* drawing, double x, double y);

    TextLayout layout;
    GlyphMasks masks;
};

} // namespace render
