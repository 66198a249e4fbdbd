#include "designs/formats/rose/Views.h"

#include "designs/formats/shared/Drawing.h"

#include <algorithm>

namespace design::rose {

namespace {

Point inPixels(const reader::Point& point)
{
    return {point.x / unitsInPixel, point.y / unitsInPixel};
}

std::optional<std::uint32_t> colourIn(const Object& object, std::string_view key)
{
    const std::optional<std::int64_t> number = object.get(key).asInt();
    return number ? colourOfBgr(*number) : std::nullopt;
}

// Whether the host had no place for it: then its name lies in the origin, too, and not beside the centre.
bool isNowhere(const Object& view, const Point& centre)
{
    const Object* const label = view.object("label");
    const std::optional<Point> name = label ? pointIn(*label, "location") : std::nullopt;
    return centre.x == 0 && centre.y == 0 && name && name->x == 0 && name->y == 0;
}

} // namespace

std::optional<Point> pointIn(const Object& view, std::string_view key)
{
    const std::optional<reader::Point> point = view.get(key).asPoint();
    return point ? std::optional(inPixels(*point)) : std::nullopt;
}

std::vector<Point> verticesOf(const Object& view)
{
    std::vector<Point> points;
    if (const reader::List* const list = view.get("vertices").asList())
        for (const reader::Value& value : list->values())
            if (const std::optional<reader::Point> point = value.asPoint())
                points.push_back(inPixels(*point));
    return points;
}

Appearance appearanceOf(const Object& view)
{
    Appearance appearance;
    appearance.lineColor = colourIn(view, "line_color");
    appearance.fillColor = colourIn(view, "fill_color");
    if (const Object* const font = view.object("font")) {
        appearance.fontColor = colourIn(*font, "color");
        appearance.fontName = font->text("face");
        appearance.fontSize = font->number("size");
    }
    return appearance;
}

// A view has its centre; what the file leaves without a size gets one about it later.
std::optional<Rectangle> boundsOf(const Object& view)
{
    constexpr double smallest = 1;
    const std::optional<Point> centre = pointIn(view, "location");
    if (!centre)
        return std::nullopt;
    if (isNowhere(view, *centre))
        return std::nullopt;
    if (view.number("width") == 0 && view.number("height") == 0)
        return Rectangle{centre->x, centre->y, 0, 0};
    const double width = std::max(view.number("width") / unitsInPixel, smallest);
    const double height = std::max(view.number("height") / unitsInPixel, smallest);
    return Rectangle{centre->x - width / 2, centre->y - height / 2, width, height};
}

} // namespace design::rose
