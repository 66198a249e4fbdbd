#include "render/shapes/Shapes.h"

#include <algorithm>

namespace render {

namespace {

constexpr double fold = 34;          // corner of a note
constexpr double noteTop = 6;        // from the edge of a note to its text
constexpr double noteRight = 48;     // what Rose keeps free right of it
constexpr double widestNote = 600;   // of those whose size the file leaves open
constexpr double widestLabel = 2400; // of texts that stand free
constexpr double narrowestText = 1;  // a width of 0 would break no lines

const reader::Value& labelOf(const Object& view)
{
    const Object* const label = view.object("label");
    return label ? label->get("label") : view.get("label");
}

double labelWidth(const Object& view)
{
    const Object* const label = view.object("label");
    return widthOfLabel(label ? *label : view);
}

// Where a name is broken: as in Rose where that has seen it.
double nameWidth(const Context& context, const Node& node, double otherwise)
{
    const double width = labelWidth(*node.view);
    return (!context.isComputed && width > 0 ? width : std::max(otherwise, narrowestText)) / narrowest;
}

// Stereotype, name and `more` as one block of centred lines, the name broken to fit `width`.
void addHead(const Context& context, Node& node, double width)
{
    TextBlock block;
    block.font = node.font;
    if (const std::string stereotype = stereotypeOf(*node.view, node.element); !stereotype.empty())
        block.lines.push_back(stereotype);
    for (std::string& line : wrapped(node.name, node.font, nameWidth(context, node, width), context.measure))
        block.lines.push_back(std::move(line));
    node.blocks.push_back(std::move(block));
}

double widthOr(const Object& view, double otherwise)
{
    const Size size = sizeOf(view);
    return size.width > 0 ? size.width : otherwise;
}

// As much of a text as there is room for between the sides of a box.
Rect movedInto(const Rect& box, Rect text)
{
    text = text.movedBy(std::max(0.0, box.left - text.left), 0);
    text = text.movedBy(std::min(0.0, box.right - text.right), 0);
    text.left = std::max(text.left, box.left);
    return text;
}

Stroke filled(const Stroke& stroke)
{
    return {stroke.line, stroke.line, false, stroke.width};
}

} // namespace

void drawCentred(const Context& context, const Node& node, const Rect& rect, Svg& svg)
{
    if (node.blocks.empty())
        return;
    const Rect inside = {rect.left + 3, rect.top, rect.right - 3, rect.bottom};
    TextBlock block = node.blocks.front();
    block.cutTo(inside.height());
    const Size size = block.size(context.measure);
    const double above = std::max(0.0, (inside.height() - size.height) / 2);
    Rect place = {inside.left, inside.top + above, inside.right, inside.bottom};
    const Object* const label = node.view->object("label");
    if (label && !context.isComputed && isPlaced(*label)) {
        place = rectOfLabel(*label, size);
        if (node.rect.contains(place.centre()))
            place = movedInto(inside, place);
    }
    svg.text(block, place, Align::centre, context.measure);
}

void prepareBox(const Context& context, Node& node)
{
    if (node.name.empty())
        node.name = cleanText(node.view->kind());
    addHead(context, node, widestNote);
    const Size size = sizeOfBlocks(context, node);
    node.least = {size.width + 2 * padding, size.height};
}

void drawBox(const Context& context, const Node& node, Svg& svg)
{
    svg.rectangle(node.rect, node.stroke);
    drawCentred(context, node, node.rect, svg);
}

void prepareLabel(const Context& context, Node& node)
{
    TextBlock block;
    block.font = node.font;
    const double width = labelWidth(*node.view);
    block.lines = wrapped(cleanText(labelOf(*node.view).asText(), true), node.font,
                          std::min((width > 0 ? width : widestNote) / narrowest, widestLabel), context.measure);
    node.least = block.size(context.measure);
    node.blocks.push_back(std::move(block));
}

void drawLabel(const Context& context, const Node& node, Svg& svg)
{
    svg.text(node.blocks.front(), node.rect, Align::left, context.measure);
}

void prepareNote(const Context& context, Node& node)
{
    const double file = sizeOf(*node.view).width;
    const double label = labelWidth(*node.view);
    const double free = (file > 0 ? file : std::max(node.usual.width, label)) - 2 * padding;
    const double width = context.isComputed || label == 0 ? free : label;
    TextBlock block;
    block.font = node.font;
    block.lines = wrapped(cleanText(labelOf(*node.view).asText(), true), node.font,
                          std::max(width, narrowestText) / narrowest, context.measure);
    const Size size = block.size(context.measure);
    node.least = {size.width + 2 * padding, size.height + 2 * noteTop};
    node.usual = {size.width + padding + noteRight, node.least.height};
    node.blocks.push_back(std::move(block));
}

void drawNote(const Context& context, const Node& node, Svg& svg)
{
    const Rect& rect = node.rect;
    const double corner = std::min({fold, rect.width(), rect.height()});
    const Point left = {rect.right - corner, rect.top};
    const Point lower = {rect.right, rect.top + corner};
    svg.polygon({{rect.left, rect.top}, left, lower, {rect.right, rect.bottom}, {rect.left, rect.bottom}}, node.stroke);
    svg.line({left, {left.x, lower.y}, lower}, node.stroke);
    TextBlock block = node.blocks.front();
    block.cutTo(rect.height() - noteTop);
    const double indentation = std::min(padding, rect.width() / 4);
    svg.text(block, {rect.left + indentation, rect.top + noteTop, rect.right - 3, rect.bottom}, Align::left,
             context.measure);
}

void preparePackage(const Context& context, Node& node)
{
    addHead(context, node, widthOr(*node.view, node.usual.width) - 2 * padding);
    node.outline = Outline::folder;
    const Size size = sizeOfBlocks(context, node);
    node.least = {size.width + 2 * padding, size.height + tabHeight + padding};
}

void drawPackage(const Context& context, const Node& node, Svg& svg)
{
    const Rect body = {node.rect.left, node.rect.top + tabHeight, node.rect.right, node.rect.bottom};
    svg.rectangle({node.rect.left, node.rect.top, node.rect.left + node.rect.width() * tabWidth, body.top},
                  node.stroke);
    svg.rectangle(body, node.stroke);
    drawCentred(context, node, body, svg);
}

void prepareUseCase(const Context& context, Node& node)
{
    const Size usual = node.usual;
    const double height = sizeOf(*node.view).height;
    node.usual.width = height > 0 ? usual.width / usual.height * height : usual.width;
    node.outline = Outline::ellipse;
    node.owner = ownerOf(context, *node.view, node.element, node.font);
}

void drawUseCase(const Context& /*context*/, const Node& node, Svg& svg)
{
    svg.ellipse(node.rect, node.stroke);
}

namespace {

// Parts of the width and height of a component.
constexpr double bodyLeft = 0.1425;
constexpr Size socket = {0.285, 0.2};
constexpr double socketTops[] = {0.2, 0.6};

// Of a node of the deployment view: how far its back stands up and to the right, and its upper left corner to the
// right.
constexpr double sideWidth = 0.06;
constexpr double sideHeight = 0.034;
constexpr double backLeft = 0.083;

Rect frontOf(const Rect& rect)
{
    return {rect.left, rect.top + sideHeight * rect.height(), rect.right - sideWidth * rect.width(), rect.bottom};
}

} // namespace

void prepareComponent(const Context& context, Node& node)
{
    if (iconSize(node.icon).width > 0) {
        prepareClass(context, node);
        return;
    }
    addHead(context, node, widthOr(*node.view, node.usual.width) * (1 - socket.width) - 2 * sidePadding);
    if (const std::string icon = lineOf(*node.view, "icon"); !icon.empty())
        node.blocks.front().lines.insert(node.blocks.front().lines.begin(), "<<" + icon + ">>");
    const Size size = sizeOfBlocks(context, node);
    node.least = {(size.width + 2 * sidePadding) / (1 - socket.width), size.height + padding};
}

void drawComponent(const Context& context, const Node& node, Svg& svg)
{
    if (drawIcon(node.icon, node.rect, node.stroke, svg))
        return;
    const Rect& rect = node.rect;
    const Rect body = {rect.left + bodyLeft * rect.width(), rect.top, rect.right, rect.bottom};
    svg.rectangle(body, node.stroke);
    for (const double part : socketTops) {
        const double top = rect.top + part * rect.height();
        svg.rectangle({rect.left, top, rect.left + socket.width * rect.width(), top + socket.height * rect.height()},
                      node.stroke);
    }
    drawCentred(context, node, {rect.left + socket.width * rect.width(), rect.top, rect.right, rect.bottom}, svg);
}

void prepareDeployed(const Context& context, Node& node)
{
    addHead(context, node, widthOr(*node.view, node.usual.width) * (1 - sideWidth) - 2 * sidePadding);
    if (node.element && node.element->has("processes")) {
        TextBlock processes;
        processes.font = node.font;
        addLines(context, processes, node.element->objects("processes"),
                 [](const Object& process) { return cleanText(process.name()); });
        node.blocks.push_back(std::move(processes));
    }
    const Size size = node.blocks.front().size(context.measure);
    node.least = {(size.width + 2 * sidePadding) / (1 - sideWidth), size.height / (1 - sideHeight) + padding};
}

void drawDevice(const Context& context, const Node& node, Svg& svg)
{
    const Rect& rect = node.rect;
    const Rect front = frontOf(rect);
    svg.polygon({{front.left, front.top},
                 {rect.left + backLeft * rect.width(), rect.top},
                 {rect.right, rect.top},
                 {front.right, front.top}},
                node.stroke);
    svg.polygon({{front.right, front.top},
                 {rect.right, rect.top},
                 {rect.right, rect.bottom - (front.top - rect.top)},
                 {front.right, front.bottom}},
                node.stroke);
    svg.rectangle(front, node.stroke);
    drawCentred(context, node, front, svg);
}

// A device with shaded sides, the processes that run on it below.
void drawProcessor(const Context& context, const Node& node, Svg& svg)
{
    constexpr std::uint32_t grey = 0x808080;
    Node shaded = node;
    shaded.stroke.fill = grey;
    drawDevice(context, shaded, svg);
    const Rect front = frontOf(node.rect);
    svg.rectangle(front, node.stroke);
    drawCentred(context, node, front, svg);
    if (node.blocks.size() < 2)
        return;
    const double top = node.rect.bottom + padding;
    const double width = node.blocks[1].size(context.measure).width;
    svg.text(node.blocks[1], {node.rect.left, top, node.rect.left + width, top}, Align::left, context.measure);
}

void prepareDecision(const Context& /*context*/, Node& node)
{
    node.outline = Outline::diamond;
}

void drawDecision(const Context& /*context*/, const Node& node, Svg& svg)
{
    const Point centre = node.rect.centre();
    svg.polygon({{centre.x, node.rect.top},
                 {node.rect.right, centre.y},
                 {centre.x, node.rect.bottom},
                 {node.rect.left, centre.y}},
                node.stroke);
}

void prepareBar(const Context& /*context*/, Node& node)
{
    if (!node.view->flag("sync_is_horizontal", true))
        std::swap(node.usual.width, node.usual.height);
}

void drawBar(const Context& /*context*/, const Node& node, Svg& svg)
{
    svg.rectangle(node.rect, filled(node.stroke));
}

} // namespace render
