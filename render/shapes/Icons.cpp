#include "render/shapes/Node.h"

#include <algorithm>

namespace render {

namespace {

using DrawFunction = void (*)(const Rect& rect, const Stroke& stroke, Svg& svg);

struct Icon {
    std::string_view name;
    Size size;
    DrawFunction draw;
};

Rect part(const Rect& rect, double left, double top, double right, double bottom)
{
    return {rect.left + left * rect.width(), rect.top + top * rect.height(), rect.left + right * rect.width(),
            rect.top + bottom * rect.height()};
}

Point at(const Rect& rect, double x, double y)
{
    return {rect.left + x * rect.width(), rect.top + y * rect.height()};
}

void drawActor(const Rect& rect, const Stroke& stroke, Svg& svg)
{
    constexpr double head = 54;
    const double x = rect.centre().x;
    const double neck = rect.top + head;
    svg.ellipse({x - head / 2, rect.top, x + head / 2, neck}, {stroke.line, std::nullopt, false, stroke.width});
    svg.line({{x, neck}, at(rect, 0.5, 0.65)}, stroke);
    svg.line({at(rect, 0, 0.44), at(rect, 1, 0.44)}, stroke);
    svg.line({at(rect, 0, 1), at(rect, 0.5, 0.65), at(rect, 1, 1)}, stroke);
}

// The icons of the analysis of a system have lines of their own, whatever the view says.
Stroke dark(const Stroke& stroke)
{
    constexpr std::uint32_t nearlyBlack = 0x202020;
    return {nearlyBlack, stroke.fill, false, stroke.width};
}

void drawBoundary(const Rect& rect, const Stroke& given, Svg& svg)
{
    const Stroke stroke = dark(given);
    svg.line({at(rect, 0, 0.15), at(rect, 0, 0.85)}, stroke);
    svg.line({at(rect, 0, 0.5), at(rect, 0.34, 0.5)}, stroke);
    svg.ellipse(part(rect, 0.34, 0, 1, 1), stroke);
}

void drawControl(const Rect& rect, const Stroke& given, Svg& svg)
{
    const Stroke stroke = dark(given);
    svg.ellipse(part(rect, 0, 0.06, 1, 1), stroke);
    svg.line({at(rect, 0.6, 0), at(rect, 0.48, 0.06), at(rect, 0.6, 0.14)}, stroke);
}

void drawEntity(const Rect& rect, const Stroke& given, Svg& svg)
{
    const Stroke stroke = dark(given);
    svg.ellipse(rect, stroke);
    svg.line({at(rect, 0, 1), at(rect, 1, 1)}, stroke);
}

void drawInterface(const Rect& rect, const Stroke& stroke, Svg& svg)
{
    svg.ellipse(rect, stroke);
}

constexpr Icon icons[] = {
    {"actor", {116, 157}, drawActor},   {"boundary", {226, 150}, drawBoundary}, {"control", {154, 160}, drawControl},
    {"entity", {150, 150}, drawEntity}, {"interface", {55, 55}, drawInterface},
};

const Icon* iconOf(std::string_view name)
{
    const auto* const found =
        std::find_if(std::begin(icons), std::end(icons), [&](const Icon& icon) { return icon.name == name; });
    return found == std::end(icons) ? nullptr : found;
}

} // namespace

bool drawIcon(std::string_view icon, const Rect& rect, const Stroke& stroke, Svg& svg)
{
    const Icon* const found = iconOf(icon);
    if (found)
        found->draw(rect, stroke, svg);
    return found != nullptr;
}

Size iconSize(std::string_view icon)
{
    const Icon* const found = iconOf(icon);
    return found ? found->size : Size{};
}

} // namespace render
