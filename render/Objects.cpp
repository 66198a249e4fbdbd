#include "render/Shapes.h"

#include <algorithm>

namespace render {

namespace {

constexpr double focusWidth = 32;
constexpr double leastLifeline = 200; // of those whose height the file leaves open
constexpr double gapToName = 8;
constexpr double behind = 14; // of the second box of a multi-object

std::string lastPart(const std::string& path)
{
    const std::size_t colons = path.rfind("::");
    return colons == std::string::npos ? path : path.substr(colons + 2);
}

// The class of an object; its name also when it is in a unit that is not loaded.
std::string className(const Context& context, const Object& object)
{
    const Object* const found = context.index.element(object).element;
    return found ? cleanText(reader::shownName(*found)) : lastPart(lineOf(object, "class"));
}

void addName(const Context& context, Node& node, double width)
{
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
    const std::string type = className(context, *element);
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
    addName(context, node, width > 0 ? std::max(width, 200.0) - padding : 0);
    const Size size = node.blocks.front().size(context.measure);
    node.least = {size.width + 2 * padding, size.height + 2 * padding};
    node.isNamedOutside = iconSize(node.icon).width > 0;
}

void placeLifeline(const Context& context, Node& node)
{
    const Point place = locationOf(*node.view);
    const Size file = sizeOf(*node.view);
    const Size head = {std::max(node.least.width, file.width > 0 ? file.width - 2 * padding : node.usual.width),
                       std::max(node.least.height, node.usual.height)};
    node.rect = rectAround(place, head);
    if (!node.isNamedOutside)
        return;
    const Object* const label = node.view->object("label");
    const Size name = node.blocks.front().size(context.measure);
    const double middle = label && isPlaced(*label) ? locationOf(*label).y : place.y + node.font.lineHeight();
    const double top = middle - node.font.lineHeight();
    node.nameRect = {place.x - name.width / 2, top, place.x + name.width / 2, top + name.height};
    const Size icon = iconSize(node.icon);
    node.rect = rectAround({place.x, top - gapToName - icon.height / 2}, icon);
}

void drawLifeline(const Context& context, const Node& node, Svg& svg)
{
    const double x = node.rect.centre().x;
    const double top = node.isNamedOutside ? node.nameRect.bottom : node.rect.bottom;
    const double height = sizeOf(*node.view).height;
    double end = locationOf(*node.view).y + height;
    std::vector<Rect> bars;
    reader::forEachObject(*node.view, [&](const Object& focus) {
        if (!focus.is("Focus_Of_Control"))
            return;
        const Point start = locationOf(focus);
        const double length = boundedLength(focus.number("height"));
        bars.push_back({start.x - focusWidth / 2, start.y, start.x + focusWidth / 2, start.y + length});
        end = std::max(end, start.y + length);
    });
    Stroke dashed = node.stroke;
    dashed.isDashed = true;
    svg.line({{x, top}, {x, std::max(end, height > 0 ? top : top + leastLifeline)}}, dashed);
    for (const Rect& bar : bars)
        svg.rectangle(bar, {node.stroke.line, 0xFFFFFF});
    if (drawIcon(node.icon, node.rect, node.stroke, svg))
        return;
    svg.rectangle(node.rect, node.stroke);
    drawCentred(context, node, node.rect, svg);
}

} // namespace render
