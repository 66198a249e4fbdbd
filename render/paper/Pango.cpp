#include "render/paper/Pango.h"

#include "render/paper/Releaser.h"
#include "render/paper/Warnings.h"
#include "text/Utf8.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <memory>

namespace render {

namespace {

constexpr double dotsPerInch = Font::unitsPerPoint * 72; // a unit of the file is a dot

// Longer lines are not measured letter by letter: nobody reads them.
constexpr std::size_t longestLine = 4000;

class Layout {
public:
    Layout()
    {
        pango_cairo_context_set_resolution(context.get(), dotsPerInch);
        pango_context_set_round_glyph_positions(context.get(), FALSE);
    }

    [[nodiscard]] double width(const std::string& line, const Font& font) const
    {
        const std::unique_ptr<PangoFontDescription, Releaser<pango_font_description_free>> description(
            pango_font_description_new());
        pango_font_description_set_family(description.get(), font.face.c_str());
        pango_font_description_set_size(description.get(), static_cast<int>(font.size * PANGO_SCALE));
        pango_font_description_set_weight(description.get(), font.isBold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
        pango_font_description_set_style(description.get(), font.isItalic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
        pango_layout_set_font_description(layout.get(), description.get());
        std::size_t length = std::min(line.size(), longestLine);
        while (length < line.size() && text::isContinuation(line[length]))
            --length;
        pango_layout_set_text(layout.get(), line.data(), static_cast<int>(length));
        int width = 0;
        pango_layout_get_size(layout.get(), &width, nullptr);
        throwIfWarned();
        return static_cast<double>(width) / PANGO_SCALE;
    }

private:
    std::unique_ptr<PangoFontMap, Releaser<g_object_unref>> map{pango_cairo_font_map_new()};
    std::unique_ptr<PangoContext, Releaser<g_object_unref>> context{pango_font_map_create_context(map.get())};
    std::unique_ptr<PangoLayout, Releaser<g_object_unref>> layout{pango_layout_new(context.get())};
};

} // namespace

TextWidths newTextWidths()
{
    keepWarnings();
    return [layout = std::make_shared<const Layout>()](const std::string& line, const Font& font) {
        return layout->width(line, font);
    };
}

} // namespace render
