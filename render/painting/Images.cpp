#include "render/painting/Cairo.h"
#include "render/painting/Painting.h"
#include "render/painting/Pango.h"
#include "render/painting/Warnings.h"

#include <cairo-pdf.h>
#include <pango/pango.h>
#include <png.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace render {

namespace {

constexpr double pixelsPerUnit = 2 * 96.0 / 300;
constexpr double pointsPerUnit = 72.0 / 300;
constexpr double mostPixels = 36e6;
constexpr double longestSide = 16000;
constexpr double longestPage = 14400; // points; viewers of PDF files show no larger ones

cairo_status_t append(void* target, const unsigned char* data, unsigned int length)
{
    static_cast<std::string*>(target)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

// What Svg wrote.
struct Picture {
    explicit Picture(const std::string& svg)
    {
        const pugi::xml_parse_result result = document.load_buffer(svg.data(), svg.size());
        if (!result)
            throw ImageError(result.description());
        const std::vector<double> box = numbersOf(document.document_element(), "viewBox");
        if (box.size() != 4 || box[2] <= 0 || box[3] <= 0)
            throw ImageError("the picture has no size");
        left = box[0];
        top = box[1];
        width = box[2];
        height = box[3];
    }

    pugi::xml_document document;
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

// `scale` is that of the surface's units to those of the picture.
void draw(const Picture& picture, const Surface& surface, double scale)
{
    thread_local std::optional<Painting> painting; // fonts and letters are much the same in the next picture
    check(cairo_surface_status(surface.get()));
    const Drawing drawing(cairo_create(surface.get()));
    cairo_set_source_rgb(drawing.get(), 1, 1, 1); // for the part of a pixel that the picture does not fill
    cairo_paint(drawing.get());
    cairo_scale(drawing.get(), scale, scale);
    cairo_translate(drawing.get(), -picture.left, -picture.top);
    try {
        if (!painting)
            painting.emplace();
        painting->draw(picture.document.document_element(), drawing.get());
        check(cairo_status(drawing.get()));
        throwIfWarned();
    } catch (...) {
        painting.reset(); // what could not be had now may be had later
        throw;
    }
}

// Red, green and blue, a byte each, where the surface has a fourth in the native order.
void packColours(unsigned char* row, int columns)
{
    constexpr std::size_t bytesInPixel = 4;
    unsigned char* to = row;
    for (int column = 0; column < columns; ++column, row += bytesInPixel) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, row, bytesInPixel);
        for (const unsigned shift : {16U, 8U, 0U})
            *to++ = static_cast<unsigned char>(pixel >> shift);
    }
}

// What is drawn in files of this format has large areas of one colour: they become small without the filters that take
// half of the time.
std::string encoded(const Surface& surface, int columns, int rows)
{
    cairo_surface_flush(surface.get());
    unsigned char* const pixels = cairo_image_surface_get_data(surface.get());
    const int stride = cairo_image_surface_get_stride(surface.get());
    for (int row = 0; row < rows; ++row)
        packColours(pixels + static_cast<std::ptrdiff_t>(row) * stride, columns);
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(columns);
    image.height = static_cast<png_uint_32>(rows);
    image.format = PNG_FORMAT_RGB;
    image.flags = PNG_IMAGE_FLAG_FAST;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    const auto bytes = std::make_unique_for_overwrite<char[]>(size);
    if (png_image_write_to_memory(&image, bytes.get(), &size, 0, pixels, stride, nullptr) == 0)
        throw ImageError(static_cast<const char*>(image.message));
    return {bytes.get(), size};
}

std::string pngOf(const std::string& svg, const std::function<void(const std::string&)>& warn)
{
    keepWarnings();
    const Picture picture(svg);
    const double width = picture.width * pixelsPerUnit;
    const double height = picture.height * pixelsPerUnit;
    const double scale =
        std::min({1.0, longestSide / width, longestSide / height, std::sqrt(mostPixels / (width * height))});
    if (scale < 1)
        warn("the picture is too large for a PNG file of full size; reduced to " +
             std::to_string(std::max(1L, std::lround(scale * 100))) + " %");
    const int columns = std::max(1, static_cast<int>(std::ceil(width * scale)));
    const int rows = std::max(1, static_cast<int>(std::ceil(height * scale)));
    const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, columns, rows));
    draw(picture, surface, pixelsPerUnit * scale);
    return encoded(surface, columns, rows);
}

std::string pdfOf(const std::string& svg)
{
    keepWarnings();
    const Picture picture(svg);
    const double scale =
        std::min({1.0, longestPage / (picture.width * pointsPerUnit), longestPage / (picture.height * pointsPerUnit)});
    const double width = picture.width * pointsPerUnit * scale;
    const double height = picture.height * pointsPerUnit * scale;
    std::string bytes;
    const Surface surface(cairo_pdf_surface_create_for_stream(append, &bytes, width, height));
    draw(picture, surface, pointsPerUnit * scale);
    cairo_surface_finish(surface.get());
    check(cairo_surface_status(surface.get()));
    return bytes;
}

std::string versionsOfLibraries()
{
    return std::string("Pango ") + pango_version_string() + ", cairo " + cairo_version_string() +
           ", libpng " PNG_LIBPNG_VER_STRING;
}

} // namespace

} // namespace render

const render::PictureFunctions petalPictureFunctions = {render::newTextWidths, render::pngOf, render::pdfOf,
                                                        render::versionsOfLibraries};
