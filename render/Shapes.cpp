#include "render/Shapes.h"

#include <algorithm>

namespace render {

namespace {

constexpr double fold = 24;          // corner of a note
constexpr double depth = 36;         // of a node of the deployment view
constexpr Size socket = {60, 32};    // of a component
constexpr double widestNote = 600;   // of those whose size the file leaves open
constexpr double widestLabel = 2400; // of texts that stand free
constexpr double narrowestText = 1;  // a width of 0 would break no lines
constexpr double tolerance = 1.08;   // fonts of other machines differ a little

const reader::Value& labelOf(const Object& view)
{
    const Object* const label = view.object("label");
    return label ? label->get("label") : view.get("label");
}

double labelWidth(const Object& view)
{
    const Object* const label = view.object("label");
    return boundedLength((label ? *label : view).number("max_width"));
}

// Stereotype, name and `more` as one block of centred lines, the name broken to fit `width`.
void addHead(const Context& context, Node& node, double width)
{
    TextBlock block;
    block.font = node.font;
    if (const std::string stereotype = stereotypeOf(*node.view, node.element); !stereotype.empty())
        block.lines.push_back(stereotype);
    for (std::string& line : wrapped(node.name, node.font, width, context.measure))
        block.lines.push_back(std::move(line));
    node.blocks.push_back(std::move(block));
}

double widthOr(const Object& view, double otherwise)
{
    const Size size = sizeOf(view);
    return size.width > 0 ? size.width : otherwise;
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
    const TextBlock& block = node.blocks.front();
    const double above = std::max(0.0, (rect.height() - block.size(context.measure).height) / 2);
    svg.text(block, {rect.left, rect.top + above, rect.right, rect.bottom}, Align::centre, context.measure);
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
                          std::min((width > 0 ? width : widestNote) * tolerance, widestLabel), context.measure);
    node.least = block.size(context.measure);
    node.blocks.push_back(std::move(block));
}

void drawLabel(const Context& context, const Node& node, Svg& svg)
{
    svg.text(node.blocks.front(), node.rect, Align::left, context.measure);
}

void prepareNote(const Context& context, Node& node)
{
    const double width = widthOr(*node.view, std::max(labelWidth(*node.view), node.usual.width));
    TextBlock block;
    block.font = node.font;
    block.lines = wrapped(cleanText(labelOf(*node.view).asText(), true), node.font,
                          std::max(width - 2 * padding, narrowestText), context.measure);
    const Size size = block.size(context.measure);
    node.least = {size.width + 2 * padding, size.height + 2 * padding};
    node.usual = {std::min(node.usual.width, size.width + 2 * padding + fold), size.height + 2 * padding};
    node.blocks.push_back(std::move(block));
}

void drawNote(const Context& context, const Node& node, Svg& svg)
{
    const Rect& rect = node.rect;
    const Point left = {rect.right - fold, rect.top};
    const Point lower = {rect.right, rect.top + fold};
    svg.polygon({{rect.left, rect.top}, left, lower, {rect.right, rect.bottom}, {rect.left, rect.bottom}}, node.stroke);
    svg.line({left, {left.x, lower.y}, lower}, node.stroke);
    const Rect inside = {rect.left + padding, rect.top + padding, rect.right, rect.bottom};
    svg.text(node.blocks.front(), inside, Align::left, context.measure);
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

void prepareUseCase(const Context& /*context*/, Node& node)
{
    const Size size = sizeOf(*node.view);
    node.usual = {size.height > 0 ? 2 * size.height : node.usual.width, node.usual.height};
    node.outline = Outline::ellipse;
}

void drawUseCase(const Context& /*context*/, const Node& node, Svg& svg)
{
    svg.ellipse(node.rect, node.stroke);
}

void prepareComponent(const Context& context, Node& node)
{
    if (iconSize(node.icon).width > 0) {
        prepareClass(context, node);
        return;
    }
    addHead(context, node, std::max(widthOr(*node.view, node.usual.width) - socket.width - 2 * padding, 200.0));
    if (const std::string icon = lineOf(*node.view, "icon"); !icon.empty())
        node.blocks.front().lines.insert(node.blocks.front().lines.begin(), withGuillemets("<<" + icon + ">>"));
    const Size size = sizeOfBlocks(context, node);
    node.least = {size.width + socket.width + 2 * padding, std::max(size.height, 5 * socket.height)};
}

void drawComponent(const Context& context, const Node& node, Svg& svg)
{
    if (drawIcon(node.icon, node.rect, node.stroke, svg))
        return;
    const Rect& rect = node.rect;
    const Rect body = {rect.left + socket.width / 2, rect.top, rect.right, rect.bottom};
    svg.rectangle(body, node.stroke);
    for (const double part : {0.2, 0.6}) {
        const double top = rect.top + part * rect.height();
        svg.rectangle({rect.left, top, rect.left + socket.width, top + socket.height}, node.stroke);
    }
    drawCentred(context, node, {rect.left + socket.width, rect.top, rect.right, rect.bottom}, svg);
}

void prepareDeployed(const Context& context, Node& node)
{
    addHead(context, node, widthOr(*node.view, node.usual.width) - depth - 2 * padding);
    if (node.element && node.element->has("processes")) {
        TextBlock processes;
        processes.font = node.font;
        addLines(context, processes, node.element->objects("processes"),
                 [](const Object& process) { return cleanText(process.name()); });
        node.blocks.push_back(std::move(processes));
    }
    const Size size = sizeOfBlocks(context, node);
    node.least = {size.width + depth + 2 * padding, node.blocks.front().size(context.measure).height + depth + padding};
}

void drawDevice(const Context& context, const Node& node, Svg& svg)
{
    const Rect& rect = node.rect;
    const Rect front = {rect.left, rect.top + depth, rect.right - depth, rect.bottom};
    svg.polygon(
        {{front.left, front.top}, {rect.left + depth, rect.top}, {rect.right, rect.top}, {front.right, front.top}},
        node.stroke);
    svg.polygon({{front.right, front.top},
                 {rect.right, rect.top},
                 {rect.right, rect.bottom - depth},
                 {front.right, front.bottom}},
                node.stroke);
    svg.rectangle(front, node.stroke);
    drawCentred(context, node, front, svg);
}

// A device with shaded sides, the processes that run on it below.
void drawProcessor(const Context& context, const Node& node, Svg& svg)
{
    Node shaded = node;
    shaded.stroke = filled(node.stroke);
    drawDevice(context, shaded, svg);
    const Rect front = {node.rect.left, node.rect.top + depth, node.rect.right - depth, node.rect.bottom};
    svg.rectangle(front, node.stroke);
    drawCentred(context, node, front, svg);
    if (node.blocks.size() > 1)
        svg.text(node.blocks[1], {node.rect.left, node.rect.bottom + padding, node.rect.right, 0}, Align::left,
                 context.measure);
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
