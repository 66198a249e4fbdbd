#include "diagrams/Labels.h"

#include <algorithm>

namespace {

struct LabelSize {
    std::size_t lines;
    Coordinate maxWidth;
};

constexpr Coordinate characterWidth = unitsPerCharacter;
constexpr Coordinate measuredWidth = -1;

LabelSize measuredSize(const LineMeasure& measure)
{
    return {measure.lines, static_cast<Coordinate>(measure.longest) * characterWidth};
}

// A text that fills its last line exactly still gets one more. The division is unsigned, so that a negative number of
// characters is more than any text has.
LabelSize wrappedSize(std::size_t length, Coordinate width)
{
    const Coordinate characters = width / characterWidth != 0 ? width / characterWidth : 1;
    return {length / static_cast<std::size_t>(characters) + 1, characters * characterWidth};
}

void printItemLabelHead(int parentView, Point location, const LabelSize& size)
{
    line("label      \t(object ItemLabel");
    line("\tParent_View \t@", parentView);
    line("\tlocation\t\t", location);
    line("\tnlines\t\t", size.lines);
    line("\tmax_width\t", size.maxWidth);
}

} // namespace

void printItemLabel(int parentView, Point location, Coordinate width, const KivString& name)
{
    const LabelSize size =
        width == measuredWidth ? measuredSize(measureLines(name.view())) : wrappedSize(name.length(), width);
    object([&] {
        printItemLabelHead(parentView, location, size);
        line("\tjustify\t\t0");
        line("\tlabel      \t", quoted(name));
    });
}

void printItemLabel(int parentView, Point location, Coordinate width, RoseDesc text)
{
    const LabelSize size =
        width == measuredWidth ? measuredSize(measureLines(text)) : wrappedSize(writtenLength(text), width);
    object([&] {
        printItemLabelHead(parentView, location, size);
        line("\tlabel      \t", text);
    });
}

void printLabel(int number, Point location, Coordinate minWidth, RoseDesc text)
{
    const LineMeasure measure = measureLines(text);
    const Coordinate characters = std::max(minWidth / characterWidth, static_cast<Coordinate>(measure.longest));
    object([&] {
        line("(object Label @", number);
        line("location\t", location);
        line("nlines\t\t", measure.lines);
        line("max_width\t", characters * characterWidth);
        line("label      \t", text);
    });
}
