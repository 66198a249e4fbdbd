#include "tool/pictures/PagePictures.h"

#include "tool/terminal/Progress.h"
#include "tool/terminal/Reporting.h"

#include "render/Draw.h"
#include "render/paper/Image.h"
#include "text/Utf8.h"

#include <algorithm>
#include <utility>

namespace {

constexpr double leastRoom = 8e6; // bytes
constexpr double timesInput = 60;
constexpr double bytesInElement = 250;

} // namespace

PagePictures::PagePictures(std::string pageName, std::size_t count, double inputSize)
    : page(std::move(pageName)), expected(count), bytesLeft(std::max(leastRoom, inputSize * timesInput))
{
}

std::string PagePictures::draw(const reader::Document& document, const reader::Index& index,
                               const reader::Diagram& diagram)
{
    const double elements = std::min(render::mostInSvg, bytesLeft / bytesInElement);
    ++number;
    showProgress("picture " + std::to_string(number) + " of " + std::to_string(expected) + ": " + diagram.name);
    if (elements < 1) {
        ++leftOut;
        return {};
    }
    render::DrawOptions options;
    options.mostElements = elements;
    options.warn = [&](const std::string& warning) {
        warnings.push_back(text::onOneLine(diagram.name) + ": " + warning);
    };
    options.idPrefix.append("p").append(std::to_string(number - 1)).append("-");
    try {
        std::string svg = render::svgOf(document, index, diagram, options);
        bytesLeft -= static_cast<double>(svg.size());
        return svg;
    } catch (const render::ImageError& error) {
        throw render::ImageError(page + ": " + diagram.name + ": " + error.what());
    }
}

void PagePictures::reportLeftOut() const
{
    for (const std::string& warning : warnings)
        report(page + ": " + warning);
    if (leftOut > 0)
        report(page + ": the page would be too large; left out: the last " + std::to_string(leftOut) + " of " +
               std::to_string(expected) + " pictures");
}

double sizeOf(const reader::Document& document)
{
    double size = 0;
    for (const reader::File& file : document.files())
        size += static_cast<double>(document.text(file).size());
    return size;
}
