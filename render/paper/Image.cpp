#include "render/paper/Image.h"

#include "render/paper/PictureLibrary.h"

namespace render {

std::string imageOf(const std::string& svg, ImageFormat format, const std::function<void(const std::string&)>& warn)
{
    switch (format) {
    case ImageFormat::png:
        return pictureLibrary().pngOf(svg, warn);
    case ImageFormat::pdf:
        return pictureLibrary().pdfOf(svg);
    case ImageFormat::svg:
        break;
    }
    return svg;
}

} // namespace render
