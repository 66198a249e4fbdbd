#include "render/painting/Pango.h"

#include "render/painting/TextLayout.h"
#include "render/painting/Warnings.h"
#include "text/Utf8.h"

#include <algorithm>
#include <memory>

namespace render {

namespace {

// Longer lines are not measured letter by letter: nobody reads them.
constexpr std::size_t longestLine = 4000;

double widthOf(TextLayout& layout, const std::string& line, const Font& font)
{
    layout.setFont(font.face.c_str(), font.em(), font.isBold, font.isItalic);
    std::size_t length = std::min(line.size(), longestLine);
    while (length < line.size() && text::isContinuation(line[length]))
        --length;
    pango_layout_set_text(layout.get(), line.data(), static_cast<int>(length));
    int width = 0;
    pango_layout_get_size(layout.get(), &width, nullptr);
    throwIfWarned();
    return static_cast<double>(width) / PANGO_SCALE;
}

} // namespace

TextWidths newTextWidths()
{
    keepWarnings();
    return [layout = std::make_shared<TextLayout>()](const std::string& line, const Font& font) {
        return widthOf(*layout, line, font);
    };
}

} // namespace render
