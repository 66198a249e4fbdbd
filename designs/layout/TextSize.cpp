#include "designs/layout/TextSize.h"

#include "designs/model/Texts.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace design {

namespace {

// Of the host, in its units, for a point of the font size. Its letters are a little narrower than Arial's.
constexpr double unitsInPixel = 300.0 / 96.0;
constexpr double em = 4.1;
constexpr double lineHeight = 5;
constexpr double narrower = 1.04;
constexpr double unitsInEm = 1000; // of the widths below

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

// `<<column>> $/name : Type = 0`
double widthOf(const Attribute& attribute, const Catalogue& catalogue)
{
    const Classifier* const type = attribute.type.name.empty() ? catalogue.classifierOf(attribute.type) : nullptr;
    const std::string& typeName = type ? type->name : attribute.type.name;
    double width = widthOf(attribute.name);
    if (!attribute.stereotype.empty())
        width += widthOf("<<>> ") + widthOf(attribute.stereotype);
    if (attribute.isStatic)
        width += widthOf("$");
    if (attribute.isDerived)
        width += widthOf("/");
    if (!typeName.empty())
        width += widthOf(" : ") + widthOf(typeName);
    if (!attribute.initialValue.empty())
        width += widthOf(" = ") + widthOf(attribute.initialValue);
    return width;
}

double widthOf(const Literal& literal)
{
    return widthOf(literal.name) + (literal.value.empty() ? 0 : widthOf(" = ") + widthOf(literal.value));
}

// `<<query>> name()`
double widthOf(const Operation& operation)
{
    const double stereotype = operation.stereotype.empty() ? 0 : widthOf("<<>> ") + widthOf(operation.stereotype);
    return stereotype + widthOf(operation.name) + widthOf("()");
}

// Lines of text below each other.
struct Lines {
    std::size_t count = 0;
    double widest = 0;

    void add(double width)
    {
        ++count;
        widest = std::max(widest, width);
    }
};

template <class Feature>
bool isShown(const Feature& feature, const std::array<bool, 4>& hidden)
{
    return !hidden[static_cast<std::size_t>(feature.visibility)];
}

Lines headOf(const Classifier& classifier)
{
    Lines head;
    head.add(widthOf(classifier.name));
    const std::string_view stereotype =
        classifier.stereotype.empty() ? stereotypeFor(classifier.kind) : std::string_view(classifier.stereotype);
    if (!stereotype.empty())
        head.add(widthOf("<<>>") + widthOf(stereotype));
    return head;
}

Lines attributesOf(const Classifier& classifier, const HiddenFeatures& hidden, const Catalogue& catalogue)
{
    Lines lines;
    for (const Attribute& attribute : classifier.attributes)
        if (isShown(attribute, hidden.attributes))
            lines.add(widthOf(attribute, catalogue));
    for (const Literal& literal : classifier.literals)
        if (!hidden.attributes[static_cast<std::size_t>(Visibility::Public)])
            lines.add(widthOf(literal));
    return lines;
}

Lines operationsOf(const Classifier& classifier, const HiddenFeatures& hidden)
{
    Lines lines;
    for (const Operation& operation : classifier.operations)
        if (isShown(operation, hidden.operations))
            lines.add(widthOf(operation));
    return lines;
}

} // namespace

Size neededSize(const Classifier& classifier, const Box& box, const Catalogue& catalogue)
{
    constexpr double aboveName = 12;
    constexpr double besideName = 18;
    constexpr double besideMembers = 62; // with their icons
    constexpr double aboveMembers = 10;
    constexpr double belowMembers = 14;
    constexpr double betweenMembers = 50; // attributes and operations
    const Lines head = headOf(classifier);
    const Lines attributes = attributesOf(classifier, box.hidden, catalogue);
    const Lines operations = operationsOf(classifier, box.hidden);
    const double fontSize = box.appearance.fontSize > 0 ? box.appearance.fontSize : defaultFontSize;
    const double scale = fontSize * em / narrower / unitsInEm;
    const std::size_t members = attributes.count + operations.count;
    double width = head.widest * scale + besideName;
    double height = aboveName + static_cast<double>(head.count + members) * fontSize * lineHeight;
    if (members > 0) {
        width = std::max(width, std::max(attributes.widest, operations.widest) * scale + besideMembers);
        height += aboveMembers + belowMembers;
    }
    if (operations.count > 0)
        height += betweenMembers;
    return {width / unitsInPixel, height / unitsInPixel};
}

Size boxSize(const Classifier& classifier, const Box& box, const Catalogue& catalogue)
{
    constexpr double roomAtSides = 40; // for longer names of types
    constexpr double roomBelow = 20;   // the rules of what is empty
    constexpr double leastWidth = 100;
    const Size needed = neededSize(classifier, box, catalogue);
    return {std::max(needed.width + roomAtSides, leastWidth), needed.height + roomBelow};
}

Size boxSize(const Package& package, const Box& box)
{
    constexpr double roomAtSides = 40;
    constexpr Size least = {110, 70};
    const double fontSize = box.appearance.fontSize > 0 ? box.appearance.fontSize : defaultFontSize;
    const double width = widthOf(package.name) * fontSize * em / narrower / unitsInEm / unitsInPixel;
    return {std::max(width + roomAtSides, least.width), least.height};
}

} // namespace design
