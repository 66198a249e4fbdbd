#include "render/Node.h"

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
    svg.ellipse(part(rect, 0.28, 0, 0.72, 0.32), stroke);
    svg.line({at(rect, 0.5, 0.32), at(rect, 0.5, 0.65)}, stroke);
    svg.line({at(rect, 0.05, 0.44), at(rect, 0.95, 0.44)}, stroke);
    svg.line({at(rect, 0.08, 1), at(rect, 0.5, 0.65), at(rect, 0.92, 1)}, stroke);
}

void drawBoundary(const Rect& rect, const Stroke& stroke, Svg& svg)
{
    svg.line({at(rect, 0, 0.15), at(rect, 0, 0.85)}, stroke);
    svg.line({at(rect, 0, 0.5), at(rect, 0.34, 0.5)}, stroke);
    svg.ellipse(part(rect, 0.34, 0, 1, 1), stroke);
}

void drawControl(const Rect& rect, const Stroke& stroke, Svg& svg)
{
    svg.ellipse(part(rect, 0, 0.06, 1, 1), stroke);
    svg.line({at(rect, 0.6, 0), at(rect, 0.48, 0.06), at(rect, 0.6, 0.14)}, stroke);
}

void drawEntity(const Rect& rect, const Stroke& stroke, Svg& svg)
{
    svg.ellipse(rect, stroke);
    svg.line({at(rect, 0, 1), at(rect, 1, 1)}, stroke);
}

void drawInterface(const Rect& rect, const Stroke& stroke, Svg& svg)
{
    svg.ellipse(rect, stroke);
}

constexpr Icon icons[] = {
    {"actor", {120, 162}, drawActor},   {"boundary", {229, 153}, drawBoundary}, {"control", {157, 164}, drawControl},
    {"entity", {154, 153}, drawEntity}, {"interface", {58, 58}, drawInterface},
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
