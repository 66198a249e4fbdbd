#include "render/Scene.h"

#include <algorithm>
#include <cmath>

namespace render {

namespace {

constexpr std::uint32_t white = 0xFFFFFF;
constexpr double farAway = 900;        // labels stand nearer to their lines
constexpr double slack = 150;          // between where a label stands and how far from the line it says it is
constexpr Size nearOrigin = {12, 120}; // labels with a place in there have none
constexpr double labelGap = 10;
constexpr double tolerance = 8;     // labels may overlap that far
constexpr double longestStep = 120; // of a label that is moved away from a box
constexpr std::size_t mostKept = 2000;
constexpr int qualifierAnchor = 5; // qualifiers stand in their own box

constexpr double arrowLength = 30;
constexpr double arrowWidth = 22;
constexpr double triangleLength = 38;
constexpr double triangleWidth = 44;
constexpr double diamondLength = 56;
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

EndFrame frameOf(const Path& path)
{
    return {path.back(), direction(path[path.size() - 2], path.back())};
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
    return 0;
}

void drawEnd(LineEnd end, const EndFrame& frame, const Stroke& stroke, Svg& svg)
{
    const Stroke solid = {stroke.line, white, false, stroke.width};
    const Stroke filled = {stroke.line, stroke.line, false, stroke.width};
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
                    end == LineEnd::diamond ? solid : filled);
        break;
    }
}

// Whether a label stands where the file says. Those that the writer was not told the place of do not, nor those that
// are further from the line than they say.
bool isWherePlaced(const Object& label, const Path& path)
{
    const Point place = locationOf(label);
    const double part = label.number("pctDist", 0.5);
    const double reach = part < 0 || part > 1 ? farAway : std::abs(label.number("height")) + slack;
    const bool isAtOrigin = std::abs(place.x) <= nearOrigin.width && std::abs(place.y) <= nearOrigin.height;
    return label.has("location") && !isAtOrigin && distance(path, place) <= reach;
}

// Beside the line, on the side and at the part of it that the label says.
Rect rectBeside(const Object& label, const Path& path, Size size)
{
    const PathPlace on = placeOn(path, label.number("pctDist", 0.5));
    const double side = label.integer("orientation") == 0 ? 1 : -1;
    const Point normal = {side * on.direction.y, -side * on.direction.x};
    return rectAround(
        {on.point.x + normal.x * (size.width / 2 + labelGap), on.point.y + normal.y * (size.height / 2 + labelGap)},
        size);
}

} // namespace

void drawPath(const Path& path, const Stroke& stroke, LineEnd end, Svg& svg)
{
    if (path.size() < 2)
        return;
    svg.line(shortened(path, lengthOf(end)), stroke);
    drawEnd(end, frameOf(path), stroke, svg);
}

void Labels::draw(const Object& view, const Path& path, const std::string& number)
{
    if (path.empty())
        return;
    for (const reader::Attribute& attribute : view.attributes()) {
        const Object* const label = attribute.value.asObject();
        if (label && label->is("SegLabel", "ItemLabel") && label->integer("anchor") != qualifierAnchor)
            drawOne(view, *label, path, number);
    }
}

void Labels::drawOne(const Object& view, const Object& label, const Path& path, const std::string& number)
{
    const Context& context = scene.context();
    std::string text = withGuillemets(lineOf(label, "label"));
    if (text.starts_with("$UNNAMED$"))
        text.clear();
    if (text.empty() && !number.empty())
        if (const Object* const element = context.index.element(label).element)
            text = cleanText(reader::shownName(*element));
    if (label.flag("hidden") || (text.empty() && number.empty()))
        return;
    TextBlock block;
    block.font = fontOf(label, fontOf(view, context.defaultFont));
    const bool isOneLine = label.number("nlines", 1) <= 1;
    block.lines =
        wrapped(number + text, block.font, isOneLine ? 0 : boundedLength(label.number("max_width")), context.measure);
    const Rect rect = moved(rectOf(view, label, path, block.size(context.measure)));
    if (taken.size() < mostKept)
        taken.push_back(rect);
    svg.text(block, rect, Align::centre, context.measure);
}

Rect Labels::rectOf(const Object& view, const Object& label, const Path& path, Size size) const
{
    const Rect beside = clearOfEnds(view, rectBeside(label, path, size));
    if (!isWherePlaced(label, path))
        return beside;
    const Rect rect = rectAround(locationOf(label), size);
    for (const std::string_view key : {"client", "supplier"}) {
        const Node* const node = scene.nodeOf(view, key);
        if (node && node->rect.contains(rect.centre()) && !node->rect.contains(beside.centre()))
            return beside;
    }
    return label.integer("anchor_loc") == 1 ? rect : rect.movedBy(size.width / 2, 0);
}

// Below the labels that are already there.
Rect Labels::moved(Rect rect) const
{
    constexpr int mostTimes = 4;
    for (int times = 0; times < mostTimes; ++times) {
        const Rect core = rect.grownBy(-tolerance);
        const auto other =
            std::find_if(taken.begin(), taken.end(), [&](const Rect& each) { return each.overlaps(core); });
        if (other == taken.end())
            break;
        rect = rect.movedBy(0, other->bottom - rect.top);
    }
    return rect;
}

// Without covering the boxes at the ends of the line, if a small step is enough for that.
Rect Labels::clearOfEnds(const Object& view, Rect rect) const
{
    for (const std::string_view key : {"client", "supplier"}) {
        const Node* const node = scene.nodeOf(view, key);
        if (!node || !node->rect.overlaps(rect))
            continue;
        const double right = node->rect.right - rect.left;
        const double left = rect.right - node->rect.left;
        const double down = node->rect.bottom - rect.top;
        const double up = rect.bottom - node->rect.top;
        const double step = std::min({right, left, down, up});
        if (step > longestStep)
            continue;
        if (step == right || step == left)
            rect = rect.movedBy(step == right ? step + 2 : -step - 2, 0);
        else
            rect = rect.movedBy(0, step == down ? step + 2 : -step - 2);
    }
    return rect;
}

void drawLine(const Context& context, const Line& line, Svg& svg, Labels& labels)
{
    // who asks for an end of an association wants to know about the association
    const Object* const whole = line.view->is("RoleView") ? line.view->parent() : nullptr;
    beginItem(svg, *line.view, whole ? context.index.element(*whole).element : line.element);
    drawPath(line.path, line.stroke, line.end, svg);
    if (!line.qualifiers.lines.empty()) {
        svg.rectangle(line.qualifierRect, {line.stroke.line, white});
        svg.text(line.qualifiers, line.qualifierRect.grownBy(-padding / 2), Align::centre, context.measure);
    }
    labels.draw(*line.view, line.path);
    svg.endGroup();
}

} // namespace render
