#include "render/painting/TextLayout.h"

namespace render {

TextLayout::TextLayout()
    : map(pango_cairo_font_map_new()), theContext(pango_font_map_create_context(map.get())),
      layout(pango_layout_new(theContext.get()))
{
    pango_context_set_round_glyph_positions(theContext.get(), FALSE);
}

void TextLayout::setFont(const char* families, double em, bool isBold, bool isItalic)
{
    const std::unique_ptr<PangoFontDescription, Releaser<pango_font_description_free>> font(
        pango_font_description_new());
    pango_font_description_set_family(font.get(), families);
    pango_font_description_set_absolute_size(font.get(), em * PANGO_SCALE);
    pango_font_description_set_weight(font.get(), isBold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_style(font.get(), isItalic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    pango_layout_set_font_description(layout.get(), font.get());
}

} // namespace render
