#include "render/paper/Image.h"
#include "render/paper/Pango.h"
#include "render/paper/Releaser.h"
#include "render/paper/Warnings.h"

#include <cairo-pdf.h>
#include <librsvg/rsvg.h>
#include <pango/pango.h>
#include <png.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>

namespace render {

namespace {

constexpr double pixelsPerUnit = 2 * 96.0 / 300;
constexpr double pointsPerUnit = 72.0 / 300;
constexpr double mostPixels = 36e6;
constexpr double longestSide = 16000;
constexpr double longestPage = 14400; // points; viewers of PDF files show no larger ones

using Handle = std::unique_ptr<RsvgHandle, Releaser<g_object_unref>>;
using Surface = std::unique_ptr<cairo_surface_t, Releaser<cairo_surface_destroy>>;
using Drawing = std::unique_ptr<cairo_t, Releaser<cairo_destroy>>;
using Stream = std::unique_ptr<GInputStream, Releaser<g_object_unref>>;

[[noreturn]] void fail(GError* error)
{
    const std::unique_ptr<GError, Releaser<g_error_free>> owned(error);
    throw ImageError(owned ? owned->message : "the picture cannot be drawn");
}

void check(cairo_status_t status)
{
    if (status != CAIRO_STATUS_SUCCESS)
        throw ImageError(cairo_status_to_string(status));
}

cairo_status_t append(void* target, const unsigned char* data, unsigned int length)
{
    static_cast<std::string*>(target)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

Handle load(const std::string& svg)
{
    keepWarnings();
    GError* error = nullptr;
    const Stream stream(g_memory_input_stream_new_from_data(svg.data(), static_cast<gssize>(svg.size()), nullptr));
    Handle handle(rsvg_handle_new_from_stream_sync(stream.get(), nullptr, RSVG_HANDLE_FLAG_UNLIMITED, nullptr, &error));
    if (!handle)
        fail(error);
    return handle;
}

RsvgRectangle viewBoxOf(const Handle& handle)
{
    gboolean hasBox = FALSE;
    RsvgRectangle box = {0, 0, 0, 0};
    rsvg_handle_get_intrinsic_dimensions(handle.get(), nullptr, nullptr, nullptr, nullptr, &hasBox, &box);
    if (hasBox == FALSE || box.width <= 0 || box.height <= 0)
        throw ImageError("the picture has no size");
    return box;
}

void draw(const Handle& handle, const Surface& surface, double width, double height)
{
    check(cairo_surface_status(surface.get()));
    const Drawing drawing(cairo_create(surface.get()));
    const RsvgRectangle viewport = {0, 0, width, height};
    GError* error = nullptr;
    if (rsvg_handle_render_document(handle.get(), drawing.get(), &viewport, &error) == FALSE)
        fail(error);
    check(cairo_status(drawing.get()));
    throwIfWarned();
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
    const Handle handle = load(svg);
    const RsvgRectangle box = viewBoxOf(handle);
    const double width = box.width * pixelsPerUnit;
    const double height = box.height * pixelsPerUnit;
    const double scale =
        std::min({1.0, longestSide / width, longestSide / height, std::sqrt(mostPixels / (width * height))});
    if (scale < 1)
        warn("the picture is too large for a PNG file of full size; reduced to " +
             std::to_string(std::max(1L, std::lround(scale * 100))) + " %");
    const int columns = std::max(1, static_cast<int>(width * scale));
    const int rows = std::max(1, static_cast<int>(height * scale));
    const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, columns, rows));
    draw(handle, surface, columns, rows);
    return encoded(surface, columns, rows);
}

std::string pdfOf(const std::string& svg)
{
    const Handle handle = load(svg);
    const RsvgRectangle box = viewBoxOf(handle);
    const double scale =
        std::min({1.0, longestPage / (box.width * pointsPerUnit), longestPage / (box.height * pointsPerUnit)});
    const double width = box.width * pointsPerUnit * scale;
    const double height = box.height * pointsPerUnit * scale;
    std::string bytes;
    const Surface surface(cairo_pdf_surface_create_for_stream(append, &bytes, width, height));
    draw(handle, surface, width, height);
    cairo_surface_finish(surface.get());
    check(cairo_surface_status(surface.get()));
    return bytes;
}

std::string versionsOfLibraries()
{
    return std::string("Pango ") + pango_version_string() + ", cairo " + cairo_version_string() +
           ", librsvg " LIBRSVG_VERSION ", libpng " PNG_LIBPNG_VER_STRING;
}

} // namespace

} // namespace render

const render::PictureFunctions petalPictureFunctions = {render::newTextWidths, render::pngOf, render::pdfOf,
                                                        render::versionsOfLibraries};
