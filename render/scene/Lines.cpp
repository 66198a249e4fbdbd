#include "render/scene/Labels.h"

namespace render {

namespace {

constexpr std::uint32_t white = 0xFFFFFF;
constexpr double arrowLength = 36;
constexpr double arrowWidth = 30;
constexpr double triangleLength = 60;
constexpr double triangleWidth = 47;
constexpr double diamondLength = 54;
constexpr double diamondWidth = 30;

// The point `along` before the end of the path and `aside` of it.
struct EndFrame {
    Point tip;
    Point direction;

    [[nodiscard]] Point at(double along, double aside) const
    {
        return {tip.x - along * direction.x - aside * direction.y, tip.y - along * direction.y + aside * direction.x};
    }
};

// A last piece of the line that is shorter than what stands at its end does not turn that.
EndFrame frameOf(const Path& path, double length)
{
    const Path rest = shortened(path, length);
    const bool isShort = rest.size() == path.size() && rest.back().x == path.back().x && rest.back().y == path.back().y;
    return {path.back(), direction(isShort ? path.front() : rest.back(), path.back())};
}

double lengthOf(LineEnd end)
{
    switch (end) {
    case LineEnd::triangle:
        return triangleLength;
    case LineEnd::diamond:
    case LineEnd::filledDiamond:
        return diamondLength;
    case LineEnd::none:
    case LineEnd::openArrow:
    case LineEnd::filledArrow:
    case LineEnd::halfArrow:
        break;
    }
    return arrowLength;
}

// Nothing stands in triangles and diamonds.
bool isHollow(LineEnd end)
{
    return end == LineEnd::triangle || end == LineEnd::diamond || end == LineEnd::filledDiamond;
}

void drawEnd(LineEnd end, const EndFrame& frame, const Stroke& stroke, Svg& svg)
{
    const Stroke solid = {stroke.line, white, false, stroke.width};
    const Stroke filled = {stroke.line, stroke.line, false, stroke.width};
    constexpr std::uint32_t black = 0;
    switch (end) {
    case LineEnd::none:
        break;
    case LineEnd::openArrow:
        svg.line({frame.at(arrowLength, arrowWidth / 2), frame.tip, frame.at(arrowLength, -arrowWidth / 2)}, solid);
        break;
    case LineEnd::halfArrow:
        svg.line({frame.tip, frame.at(arrowLength, -arrowWidth / 2)}, solid);
        break;
    case LineEnd::filledArrow:
        svg.polygon({frame.at(arrowLength, arrowWidth / 2), frame.tip, frame.at(arrowLength, -arrowWidth / 2)}, filled);
        break;
    case LineEnd::triangle:
        svg.polygon(
            {frame.at(triangleLength, triangleWidth / 2), frame.tip, frame.at(triangleLength, -triangleWidth / 2)},
            solid);
        break;
    case LineEnd::diamond:
    case LineEnd::filledDiamond:
        svg.polygon({frame.tip, frame.at(diamondLength / 2, diamondWidth / 2), frame.at(diamondLength, 0),
                     frame.at(diamondLength / 2, -diamondWidth / 2)},
                    end == LineEnd::diamond ? solid : Stroke{stroke.line, black, false, stroke.width});
        break;
    }
}

void drawPath(const Path& path, const Stroke& stroke, LineEnd end, const Stroke& ofEnd, Svg& svg)
{
    if (path.size() < 2)
        return;
    svg.line(isHollow(end) ? shortened(path, lengthOf(end)) : path, stroke);
    drawEnd(end, frameOf(path, lengthOf(end)), ofEnd, svg);
}

} // namespace

void drawPath(const Path& path, const Stroke& stroke, LineEnd end, Svg& svg)
{
    drawPath(path, stroke, end, stroke, svg);
}

void drawLine(const Context& context, const Line& line, Svg& svg, Labels& labels)
{
    // who asks for an end of an association wants to know about the association
    const Object* const whole = line.view->is("RoleView") ? line.view->parent() : nullptr;
    beginItem(svg, *line.view, whole ? context.index.element(*whole).element : line.element);
    // Where an association can be followed its arrow is black, whatever colour it has.
    const bool isBlack = whole && line.end == LineEnd::openArrow;
    drawPath(line.path, line.stroke, line.end, isBlack ? Stroke{0, white, false, line.stroke.width} : line.stroke, svg);
    if (!line.qualifiers.lines.empty()) {
        svg.rectangle(line.qualifierRect, {line.stroke.line, white});
        svg.text(line.qualifiers, line.qualifierRect.grownBy(-padding / 2), Align::centre, context.measure);
    }
    labels.draw(*line.view, line.path);
    svg.endGroup();
}

} // namespace render
