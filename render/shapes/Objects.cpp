#include "render/shapes/Shapes.h"

#include "reader/index/Behaviour.h"

#include <algorithm>

namespace render {

namespace {

constexpr double focusWidth = 30;
constexpr double headHalf = 80;       // of the box of a lifeline, around its place
constexpr double belowIcon = 100;     // where a lifeline begins that has an icon
constexpr double leastLifeline = 200; // of those whose height the file leaves open
constexpr double gapToName = 8;
constexpr double behind = 14; // of the second box of a multi-object

void addName(const Context& context, Node& node, double otherwise)
{
    const Object* const label = node.view->object("label");
    const double given = label && !context.isComputed ? widthOfLabel(*label) / narrowest : 0;
    const double width = given > 0 ? given : otherwise;
    node.font.isUnderlined = true;
    TextBlock block;
    block.font = node.font;
    block.lines = wrapped(node.name, node.font, width, context.measure);
    node.blocks.push_back(std::move(block));
}

} // namespace

std::string objectName(const Context& context, const Object& view, const Object* element)
{
    std::string name = nameOf(view, element);
    if (!element || name.find(':') != std::string::npos)
        return name;
    const std::string type = cleanText(reader::classNameOf(context.index, *element));
    if (type.empty())
        return name;
    return (name.empty() ? name : name + " ") + ": " + type;
}

void prepareObject(const Context& context, Node& node)
{
    node.name = objectName(context, *node.view, node.element);
    if (iconSize(node.icon).width > 0) {
        prepareClass(context, node);
        node.font.isUnderlined = true;
        return;
    }
    addName(context, node, 0);
    const Size size = sizeOfBlocks(context, node);
    node.least = {size.width + 2 * padding, size.height + padding};
}

void drawObject(const Context& context, const Node& node, Svg& svg)
{
    if (drawIcon(node.icon, node.rect, node.stroke, svg))
        return;
    if (node.element && node.element->flag("multi"))
        svg.rectangle(node.rect.movedBy(behind, -behind), node.stroke);
    svg.rectangle(node.rect, node.stroke);
    drawCentred(context, node, node.rect, svg);
}

void prepareLifeline(const Context& context, Node& node)
{
    node.name = objectName(context, *node.view, node.element);
    const double width = sizeOf(*node.view).width;
    addName(context, node, width > 0 ? (width - 2 * sidePadding) / narrowest : 0);
    const Size size = node.blocks.front().size(context.measure);
    node.least = {size.width + 2 * padding, size.height + 2 * padding};
    node.isNamedOutside = iconSize(node.icon).width > 0;
}

void placeLifeline(const Context& context, Node& node)
{
    const Point place = locationOf(*node.view);
    const double width = sizeOf(*node.view).width;
    node.rect = rectAround(place, {width > 0 ? width : std::max(node.usual.width, node.least.width), 2 * headHalf});
    if (!node.isNamedOutside)
        return;
    const Object* const label = node.view->object("label");
    const Size name = node.blocks.front().size(context.measure);
    const Rect below = {place.x - name.width / 2, place.y, place.x + name.width / 2, place.y + name.height};
    node.nameRect = label && isPlaced(*label) ? rectOfLabel(*label, name) : below;
    const Size icon = iconSize(node.icon);
    node.rect = rectAround({place.x, node.nameRect.top - gapToName - icon.height / 2}, icon);
}

namespace {

// Bars of activity; those within another are not drawn, but the other is as long as they need.
std::vector<Rect> barsOf(const Object& lifeline)
{
    std::vector<Rect> bars;
    const Object* outer = nullptr;
    reader::forEachObject(lifeline, [&](const Object& focus) {
        if (!focus.is("Focus_Of_Control"))
            return;
        const Point start = locationOf(focus);
        const double end = start.y + boundedLength(focus.number("height"));
        const bool isNested = outer && (focus.flag("Nested") || focus.parent() == outer);
        if (isNested) {
            bars.back().top = std::min(bars.back().top, start.y);
            bars.back().bottom = std::max(bars.back().bottom, end);
        } else {
            bars.push_back({start.x - focusWidth / 2, start.y, start.x + focusWidth / 2, end});
            outer = &focus;
        }
    });
    return bars;
}

} // namespace

void drawLifeline(const Context& context, const Node& node, Svg& svg)
{
    const Point place = locationOf(*node.view);
    const double x = node.rect.centre().x;
    const double top = node.isNamedOutside ? std::max(place.y + belowIcon, node.nameRect.bottom) : node.rect.bottom;
    const double height = sizeOf(*node.view).height;
    const std::vector<Rect> bars = barsOf(*node.view);
    double end = place.y + height;
    for (const Rect& bar : bars)
        end = std::max(end, bar.bottom);
    constexpr std::uint32_t black = 0;
    svg.line({{x, top}, {x, std::max(end, height > 0 ? top : top + leastLifeline)}}, {black, std::nullopt, true});
    for (const Rect& bar : bars)
        svg.rectangle(bar, {node.stroke.line, 0xFFFFFF});
    if (drawIcon(node.icon, node.rect, node.stroke, svg))
        return;
    svg.rectangle(node.rect, node.stroke);
    drawCentred(context, node, node.rect, svg);
}

} // namespace render
