#pragma once

#include "render/painting/Releaser.h"
#include "render/paper/Image.h"

#include <cairo.h>

#include <memory>

namespace render {

using Surface = std::unique_ptr<cairo_surface_t, Releaser<cairo_surface_destroy>>;
using Drawing = std::unique_ptr<cairo_t, Releaser<cairo_destroy>>;
using ScaledFont = std::unique_ptr<cairo_scaled_font_t, Releaser<cairo_scaled_font_destroy>>;
using FontOptions = std::unique_ptr<cairo_font_options_t, Releaser<cairo_font_options_destroy>>;

/// What fails in cairo fails silently, and so does all that is done with it: throws ImageError then.
inline void check(cairo_status_t status)
{
    if (status != CAIRO_STATUS_SUCCESS)
        throw ImageError(cairo_status_to_string(status));
}

} // namespace render
