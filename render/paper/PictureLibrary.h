#pragma once

#include "render/paper/Text.h"

#include <functional>
#include <string>

namespace render {

/// Tells how wide a line of text is, in the units of the file.
using TextWidths = std::function<double(const std::string& line, const Font& font)>;

/// What libpetal-pictures.so does.
struct PictureFunctions {
    TextWidths (*newTextWidths)(); ///< by the fonts of this machine
    std::string (*pngOf)(const std::string& svg, const std::function<void(const std::string&)>& warn);
    std::string (*pdfOf)(const std::string& svg);
    std::string (*versions)(); ///< of what it calls: `Pango 1.50.12, cairo 1.16.0 ...`
};

/// Opens the library at the first call. Throws std::runtime_error when there is none.
[[nodiscard]] const PictureFunctions& pictureLibrary();

} // namespace render

/// Its only name. It is opened by that, not linked.
extern "C" [[gnu::visibility("default")]] const render::PictureFunctions petalPictureFunctions;
