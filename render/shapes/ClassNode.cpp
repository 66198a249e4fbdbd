#include "render/shapes/Node.h"

#include <algorithm>

namespace render {

namespace {

constexpr double shadow = 14;
constexpr double gapToMembers = 10; // from the name to the first member

std::string headStereotype(const Node& node)
{
    std::string shown = stereotypeOf(*node.view, node.element);
    if (!shown.empty())
        return shown;
    const bool isMetaclass = !node.view->names().empty() && node.view->name() == "Metaclass";
    return isMetaclass ? "<<metaclass>>" : shown;
}

bool isKind(const Node& node, std::string_view word)
{
    return !node.view->names().empty() && node.view->name().find(word) != std::string::npos;
}

// The formal parameters of a template.
TextBlock parametersOf(const Context& context, const Node& node)
{
    TextBlock block;
    block.font = node.font;
    if (node.element && isKind(node, "Parameterized"))
        addLines(context, block, node.element->objects("parameters"),
                 [](const Object& parameter) { return cleanText(parameter.name()) + typeAndValue(parameter); });
    return block;
}

Stroke dashed(Stroke stroke)
{
    stroke.isDashed = true;
    return stroke;
}

void drawParameters(const Context& context, const Node& node, Svg& svg)
{
    const TextBlock block = parametersOf(context, node);
    if (!isKind(node, "Parameterized"))
        return;
    const Size size = block.size(context.measure);
    const Size room = {std::max(size.width, 60.0) + 2 * padding, std::max(size.height, 40.0)};
    const Point corner = {node.rect.right, node.rect.top};
    const double overlap = std::min(room.width / 2, node.rect.width() / 6);
    const Rect rect = rectAround(corner, room).movedBy(room.width / 2 - overlap, padding - room.height / 2);
    svg.rectangle(rect, dashed(node.stroke));
    svg.text(block, rect, Align::centre, context.measure);
}

double heightOfHead(const Node& node)
{
    return static_cast<double>(node.blocks.front().lines.size()) * node.font.lineHeight() +
           static_cast<double>(node.owner.lines.size()) * node.owner.font.lineHeight();
}

// Where the first member stands: where Rose has the compartment, but not on the name.
double topOfMembers(const Context& context, const Node& node)
{
    const double top = node.rect.top + padding + heightOfHead(node) + gapToMembers;
    const Object* const compartment = node.view->object("compartment");
    if (context.isComputed || !compartment || !isPlaced(*compartment))
        return top;
    const double place = locationOf(*compartment).y;
    return place >= top - gapToMembers && place < node.rect.bottom ? place : top;
}

void drawHead(const Context& context, const Node& node, Svg& svg)
{
    const Rect inside = {node.rect.left + 3, node.rect.top + padding, node.rect.right - 3, node.rect.bottom};
    svg.text(node.blocks.front(), inside, Align::centre, context.measure);
    const double below = node.blocks.front().size(context.measure).height;
    svg.text(node.owner, {inside.left, inside.top + below, inside.right, inside.bottom}, Align::centre,
             context.measure);
}

} // namespace

void prepareClass(const Context& context, Node& node)
{
    node.owner = ownerOf(context, *node.view, node.element, node.font);
    node.members = membersOf(context, *node.view, node.element);
    if (iconSize(node.icon).width > 0) {
        node.usual = iconSize(node.icon);
        node.isNamedOutside = true;
        node.isNamedBelow = true;
        return;
    }
    TextBlock head;
    head.font = node.font;
    head.font.isItalic = head.font.isItalic || (node.element && node.element->flag("abstract"));
    if (const std::string stereotype = headStereotype(node); !stereotype.empty())
        head.lines.push_back(stereotype);
    head.lines.push_back(node.name);
    node.blocks.push_back(std::move(head));
    const double name =
        std::max(node.blocks.front().size(context.measure).width, node.owner.size(context.measure).width);
    double width = name + 2 * sidePadding;
    for (const MemberBlock& block : node.members)
        width = std::max(width, sidePadding + block.size(context.measure).width + 3);
    node.least = {width, padding + heightOfHead(node) + gapToMembers + heightOfMembers(node)};
}

void drawClass(const Context& context, const Node& node, Svg& svg)
{
    if (drawIcon(node.icon, node.rect, node.stroke, svg))
        return;
    if (isKind(node, "Utility"))
        svg.rectangle(node.rect.movedBy(shadow, shadow), {node.stroke.line, node.stroke.line});
    svg.rectangle(node.rect, node.stroke);
    drawHead(context, node, svg);
    drawCompartments(context, node,
                     {node.rect.left + sidePadding, topOfMembers(context, node), node.rect.right - 3, node.rect.bottom},
                     true, svg);
    drawParameters(context, node, svg);
}

} // namespace render
