#include "render/shapes/Shapes.h"

#include "reader/index/Behaviour.h"

#include <algorithm>

namespace render {

namespace {

constexpr double startSize = 60;
constexpr double endSize = 81;
constexpr double endInside = 60; // the black part
constexpr std::uint32_t black = 0;

using reader::StateKind;

StateKind kindOf(const Node& node)
{
    return reader::stateKindOf(*node.view);
}

// `entry/ ring the bell`
std::string actionLine(const Object& action)
{
    const std::string when = cleanText(reader::timeOf(action));
    return (when.empty() ? when : when + "/ ") + cleanText(action.name());
}

void prepareRound(Node& node, double size)
{
    node.usual = {size, size};
    node.outline = Outline::ellipse;
    node.isNamedOutside = true;
}

void drawActions(const Context& context, const Node& node, Svg& svg)
{
    const double nameHeight = node.blocks.front().size(context.measure).height;
    const double top = node.rect.top + padding + nameHeight;
    svg.line({{node.rect.left, top}, {node.rect.right, top}}, node.stroke);
    svg.text(node.blocks.front(), {node.rect.left, node.rect.top + padding / 2, node.rect.right, top}, Align::centre,
             context.measure);
    TextBlock actions = node.blocks[1];
    actions.cutTo(node.rect.bottom - top);
    svg.text(actions, {node.rect.left + 2 * padding, top + padding / 2, node.rect.right - 3, node.rect.bottom},
             Align::left, context.measure);
}

void drawRounded(const Context& context, const Node& node, double radius, Svg& svg)
{
    svg.rectangle(node.rect, node.stroke, radius);
    if (node.blocks.size() > 1)
        drawActions(context, node, svg);
    else
        drawCentred(context, node, node.rect, svg);
}

} // namespace

void prepareState(const Context& context, Node& node)
{
    const StateKind kind = kindOf(node);
    if (kind != StateKind::normal) {
        prepareRound(node, kind == StateKind::start ? startSize : endSize);
        return;
    }
    prepareBox(context, node);
    node.outline = node.view->is("ActivityStateView") ? Outline::capsule : Outline::rounded;
    TextBlock actions;
    actions.font = node.font;
    if (node.element)
        addLines(context, actions, node.element->objects("actions"), actionLine);
    if (!actions.lines.empty())
        node.blocks.push_back(std::move(actions));
    const Size size = sizeOfBlocks(context, node);
    node.least = {size.width + 4 * padding, size.height + padding};
}

void drawState(const Context& context, const Node& node, Svg& svg)
{
    const StateKind kind = kindOf(node);
    if (kind == StateKind::normal) {
        drawRounded(context, node, cornerRadius, svg);
        return;
    }
    const Stroke solid = {black, black, false, node.stroke.width};
    const double margin = (1 - endInside / endSize) / 2;
    if (kind == StateKind::end)
        svg.ellipse(node.rect, {black, node.stroke.fill, false, node.stroke.width});
    svg.ellipse(kind == StateKind::end ? node.rect.grownBy(-margin * node.rect.width()) : node.rect, solid);
}

void drawActivity(const Context& context, const Node& node, Svg& svg)
{
    if (kindOf(node) != StateKind::normal)
        drawState(context, node, svg);
    else
        drawRounded(context, node, node.rect.height() / 2, svg);
}

} // namespace render
