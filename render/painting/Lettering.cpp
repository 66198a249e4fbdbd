#include "render/painting/Lettering.h"

#include <algorithm>

namespace render {

namespace {

using Attributes = std::unique_ptr<PangoAttrList, Releaser<pango_attr_list_unref>>;

constexpr double mostPixels = 200; // of an em; larger letters are few

double inUnits(int size)
{
    return static_cast<double>(size) / PANGO_SCALE;
}

const PangoLayoutLine* lineOf(PangoLayout* layout)
{
    return pango_layout_get_line_readonly(layout, 0);
}

// Where no font has a letter, its number is drawn in a box.
bool isKnown(PangoLayout* layout)
{
    for (const GSList* run = lineOf(layout)->runs; run != nullptr; run = run->next) {
        const auto* const item = static_cast<const PangoGlyphItem*>(run->data);
        const PangoGlyphInfo* const glyphs = item->glyphs->glyphs;
        const bool isKnown = std::none_of(glyphs, glyphs + item->glyphs->num_glyphs, [](const PangoGlyphInfo& info) {
            return info.glyph != PANGO_GLYPH_EMPTY && (info.glyph & PANGO_GLYPH_UNKNOWN_FLAG) != 0;
        });
        if (item->item->analysis.font == nullptr || !isKnown)
            return false;
    }
    return true;
}

} // namespace

// The letters are laid out in the units of the picture, whatever its scale: nothing is rounded to pixels but by
// GlyphMasks.
Lettering::Lettering()
{
    const FontOptions options(cairo_font_options_create());
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(layout.context(), options.get());
    pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
}

void Lettering::dress(const Letters& letters)
{
    layout.setFont(letters.families.c_str(), letters.em, letters.isBold, letters.isItalic);
    Attributes lines;
    if (letters.isUnderlined || letters.isStruck) {
        lines.reset(pango_attr_list_new());
        pango_attr_list_insert(lines.get(), pango_attr_underline_new(letters.isUnderlined ? PANGO_UNDERLINE_SINGLE
                                                                                          : PANGO_UNDERLINE_NONE));
        pango_attr_list_insert(lines.get(), pango_attr_strikethrough_new(letters.isStruck ? TRUE : FALSE));
    }
    pango_layout_set_attributes(layout.get(), lines.get());
}

void Lettering::putMasks(cairo_t* drawing, double x, double y)
{
    cairo_matrix_t matrix;
    cairo_get_matrix(drawing, &matrix);
    cairo_identity_matrix(drawing);
    for (const GSList* run = lineOf(layout.get())->runs; run != nullptr; run = run->next) {
        const auto* const item = static_cast<const PangoGlyphItem*>(run->data);
        GlyphMasks::Font& font = masks.of(
            pango_cairo_font_get_scaled_font(reinterpret_cast<PangoCairoFont*>(item->item->analysis.font)), matrix);
        for (int i = 0; i < item->glyphs->num_glyphs; ++i) {
            const PangoGlyphInfo& info = item->glyphs->glyphs[i];
            double left = x + inUnits(info.geometry.x_offset);
            double base = y + inUnits(info.geometry.y_offset);
            cairo_matrix_transform_point(&matrix, &left, &base);
            if (info.glyph != PANGO_GLYPH_EMPTY)
                masks.put(drawing, font, info.glyph, left, base);
            x += inUnits(info.geometry.width);
        }
    }
    cairo_set_matrix(drawing, &matrix);
}

void Lettering::draw(const Letters& letters, cairo_t* drawing)
{
    dress(letters);
    pango_layout_set_text(layout.get(), letters.text.data(), static_cast<int>(letters.text.size()));
    int width = 0;
    pango_layout_get_size(layout.get(), &width, nullptr);
    const double left = letters.x - (letters.isCentred ? inUnits(width) / 2 : 0);
    cairo_matrix_t matrix;
    cairo_get_matrix(drawing, &matrix);
    const bool isImage = cairo_surface_get_type(cairo_get_target(drawing)) == CAIRO_SURFACE_TYPE_IMAGE;
    const bool isOrdinary = !letters.isUnderlined && !letters.isStruck && letters.em * matrix.yy < mostPixels;
    if (isImage && isOrdinary && isKnown(layout.get())) {
        putMasks(drawing, left, letters.y);
        return;
    }
    cairo_move_to(drawing, left, letters.y - inUnits(pango_layout_get_baseline(layout.get())));
    if (isImage) {
        pango_cairo_layout_path(drawing, layout.get());
        cairo_fill(drawing);
    } else {
        pango_cairo_show_layout(drawing, layout.get()); // so that it can be searched and copied
        cairo_new_path(drawing);
    }
}

} // namespace render
