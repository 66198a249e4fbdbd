#pragma once

#include "render/painting/Cairo.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <tuple>
#include <unordered_map>

namespace render {

/// Letters whose outline was filled once and is put down wherever they stand: filling takes ten times as long, and a
/// diagram repeats its letters hundreds of times. Each stands within an eighth of a pixel of its place along the line,
/// as the eye sees uneven gaps. What fails throws ImageError. For one thread.
class GlyphMasks {
    struct Mask {
        Surface surface; ///< null for a blank
        int left = 0;    ///< of the origin, in pixels
        int top = 0;
    };

public:
    struct Font {
        ScaledFont given; ///< held, as it is known by its address
        ScaledFont enlarged;
        std::unordered_map<std::uint64_t, Mask> masks; ///< by glyph and part of a pixel
    };

    /// The letters of a font where `matrix` enlarges it. Valid until the next call.
    Font& of(cairo_scaled_font_t* font, const cairo_matrix_t& matrix);
    /// Puts a letter down in the colour of `drawing`, whose units are pixels. (x, y) is its origin on the base line.
    void put(cairo_t* drawing, Font& font, unsigned long glyph, double x, double y);

private:
    Mask filled(cairo_scaled_font_t* font, unsigned long glyph, double right);

    std::map<std::tuple<cairo_scaled_font_t*, double, double>, Font> fonts; ///< by how much they are enlarged
    std::size_t bytes = 0;                                                  ///< about, of all masks and fonts
};

} // namespace render
