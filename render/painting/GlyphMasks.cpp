#include "render/painting/GlyphMasks.h"

#include <cmath>
#include <utility>

namespace render {

namespace {

constexpr long partsOfPixel = 4;
constexpr std::size_t mostBytes = 16'000'000;
constexpr std::size_t bytesOfMask = 1000; // beside its pixels
constexpr std::size_t bytesOfFont = 5000;

using Path = std::unique_ptr<cairo_path_t, Releaser<cairo_path_destroy>>;

} // namespace

GlyphMasks::Mask GlyphMasks::filled(cairo_scaled_font_t* font, unsigned long glyph, double right)
{
    bytes += bytesOfMask;
    const Surface nothing(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1));
    const Drawing outline(cairo_create(nothing.get()));
    cairo_matrix_t matrix;
    cairo_scaled_font_get_ctm(font, &matrix);
    cairo_set_matrix(outline.get(), &matrix);
    cairo_set_scaled_font(outline.get(), font);
    const cairo_glyph_t atOrigin = {glyph, 0, 0};
    cairo_glyph_path(outline.get(), &atOrigin, 1);
    cairo_identity_matrix(outline.get());
    double left = 0;
    double top = 0;
    double end = 0;
    double bottom = 0;
    cairo_path_extents(outline.get(), &left, &top, &end, &bottom);
    check(cairo_status(outline.get()));
    if (end <= left || bottom <= top)
        return {};
    Mask mask = {nullptr, static_cast<int>(std::floor(left + right)), static_cast<int>(std::floor(top))};
    const int width = static_cast<int>(std::ceil(end + right)) - mask.left;
    const int height = static_cast<int>(std::ceil(bottom)) - mask.top;
    bytes += static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    mask.surface.reset(cairo_image_surface_create(CAIRO_FORMAT_A8, width, height));
    const Path path(cairo_copy_path(outline.get()));
    const Drawing drawing(cairo_create(mask.surface.get()));
    cairo_translate(drawing.get(), right - mask.left, -mask.top);
    cairo_append_path(drawing.get(), path.get());
    cairo_fill(drawing.get());
    check(cairo_status(drawing.get()));
    return mask;
}

GlyphMasks::Font& GlyphMasks::of(cairo_scaled_font_t* font, const cairo_matrix_t& matrix)
{
    if (bytes > mostBytes) {
        fonts.clear();
        bytes = 0;
    }
    const auto key = std::make_tuple(font, matrix.xx, matrix.yy);
    const auto place = fonts.find(key);
    if (place != fonts.end())
        return place->second;
    cairo_matrix_t size;
    cairo_scaled_font_get_font_matrix(font, &size);
    const FontOptions options(cairo_font_options_create());
    cairo_scaled_font_get_font_options(font, options.get());
    ScaledFont enlarged(cairo_scaled_font_create(cairo_scaled_font_get_font_face(font), &size, &matrix, options.get()));
    check(cairo_scaled_font_status(enlarged.get()));
    bytes += bytesOfFont;
    return fonts.emplace(key, Font{ScaledFont(cairo_scaled_font_reference(font)), std::move(enlarged), {}})
        .first->second;
}

void GlyphMasks::put(cairo_t* drawing, Font& font, unsigned long glyph, double x, double y)
{
    const long parts = std::lround(x * partsOfPixel);
    const long whole = parts >= 0 ? parts / partsOfPixel : (parts - partsOfPixel + 1) / partsOfPixel;
    const long part = parts - whole * partsOfPixel;
    const std::uint64_t key = static_cast<std::uint64_t>(glyph) * partsOfPixel + static_cast<std::uint64_t>(part);
    auto place = font.masks.find(key);
    if (place == font.masks.end())
        place =
            font.masks.emplace(key, filled(font.enlarged.get(), glyph, static_cast<double>(part) / partsOfPixel)).first;
    const Mask& mask = place->second;
    if (mask.surface)
        cairo_mask_surface(drawing, mask.surface.get(), static_cast<double>(whole + mask.left),
                           static_cast<double>(std::lround(y) + mask.top));
}

} // namespace render
