#include "EqualLetters.h"
#include "render/Draw.h"
#include "render/paper/Image.h"
#include "Target.h"

#include <pugixml.hpp>

#include <cstdlib>
#include <string>

// The bytes of a petal file. Whatever its diagrams hold, each becomes a picture that is XML and of bounded size, and
// can be painted.
namespace {

constexpr double longestSide = 100000; // pixels
constexpr double largestPainted = 1e6; // square pixels; larger ones take long and are painted no differently

void checkPicture(const std::string& svg)
{
    pugi::xml_document picture;
    require(static_cast<bool>(picture.load_string(svg.c_str())), "well-formed XML");
    const pugi::xml_node root = picture.child("svg");
    double area = 1;
    for (const char* const side : {"width", "height"}) {
        const double length = root.attribute(side).as_double(-1);
        require(length > 0 && length < longestSide, "a picture of bounded size");
        area *= length;
    }
    if (area <= largestPainted)
        require(render::imageOf(svg, render::ImageFormat::png, [](const std::string& /*warning*/) {})
                    .starts_with("\x89PNG"),
                "a painted picture");
    require(svg.find("<script") == std::string::npos, "texts that stay texts");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const EqualLetters measure;
    render::DrawOptions drawing;
    drawing.measure = &measure;
    reader::ReadOptions reading;
    reading.readsUnits = false;
    try {
        const reader::Document document(std::string(asText(data, size)), "fuzzed.mdl", reading);
        const reader::Index index(document);
        for (const reader::Diagram& diagram : index.diagrams())
            checkPicture(render::svgOf(document, index, diagram, drawing));
    } catch (const reader::NotPetal& error) {
        require(*error.what() != '\0', "a reason for refusing a file");
    }
    return 0;
}
