#include "designs/layout/TextSize.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace design {

namespace {

constexpr double pixelsInPoint = 96.0 / 72.0;
constexpr double unitsInEm = 1000;
constexpr double lineHeight = 1.15; // of the font size

// Widths of the letters of Arial from blank to tilde, in thousandths of the font size.
constexpr std::array<std::uint16_t, 95> letterWidths = {
    278, 278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333,  278, 278, 556, 556, 556,
    556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556, 1015, 667, 667, 722, 722, 667,
    611, 778, 722, 278, 500, 667, 556, 833, 722, 778, 667, 778, 722, 667,  611, 722, 667, 944, 667,
    667, 611, 278, 278, 278, 469, 556, 333, 556, 556, 500, 556, 556, 278,  556, 556, 222, 222, 500,
    222, 833, 556, 556, 556, 556, 333, 500, 278, 556, 500, 722, 500, 500,  500, 334, 260, 334, 584,
};
constexpr double otherLetterWidth = 611;
constexpr double ideographWidth = 1000;

// Width of a character by its first byte in UTF-8.
double widthOf(unsigned char lead)
{
    if (lead >= 0x20U && lead < 0x7FU)
        return letterWidths[lead - 0x20U];
    if (lead >= 0xE3U)
        return ideographWidth;
    return lead >= 0xC0U ? otherLetterWidth : 0;
}

double widthOf(std::string_view text)
{
    double width = 0;
    for (const char byte : text)
        width += widthOf(static_cast<unsigned char>(byte));
    return width;
}

double widthOf(const Attribute& attribute)
{
    double width = widthOf(attribute.name);
    if (!attribute.type.name.empty())
        width += widthOf(" : ") + widthOf(attribute.type.name);
    if (!attribute.initialValue.empty())
        width += widthOf(" = ") + widthOf(attribute.initialValue);
    return width;
}

} // namespace

Size textSize(const Classifier& classifier, double fontSize)
{
    std::size_t lines = 1 + classifier.attributes.size() + classifier.operations.size() + classifier.literals.size();
    double widest = widthOf(classifier.name);
    if (!classifier.stereotype.empty()) {
        ++lines;
        widest = std::max(widest, widthOf("<<>>") + widthOf(classifier.stereotype));
    }
    for (const Attribute& attribute : classifier.attributes)
        widest = std::max(widest, widthOf(attribute));
    for (const Operation& operation : classifier.operations)
        widest = std::max(widest, widthOf(operation.name) + widthOf("()"));
    for (const Literal& literal : classifier.literals)
        widest = std::max(widest, widthOf(literal.name));
    const double fontHeight = (fontSize > 0 ? fontSize : defaultFontSize) * pixelsInPoint;
    return {widest / unitsInEm * fontHeight, static_cast<double>(lines) * lineHeight * fontHeight};
}

Size boxSize(const Classifier& classifier, double fontSize)
{
    constexpr double roomAtSides = 60; // with the signs of visibility, and some for longer names of types
    constexpr double roomAboveAndBelow = 24;
    constexpr double leastWidth = 100;
    const Size text = textSize(classifier, fontSize);
    return {std::max(text.width + roomAtSides, leastWidth), text.height + roomAboveAndBelow};
}

} // namespace design
