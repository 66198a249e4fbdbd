#include "reader/index/Behaviour.h"
#include "render/scene/Labels.h"

#include <algorithm>

namespace render {

namespace {

constexpr double usualArrow = 120; // length of an arrow beside a link
constexpr double arrowGap = 44;    // between it and the link
constexpr double flowLength = 60;
constexpr double flowCircle = 16;
constexpr double crossSize = 24;
constexpr double selfHeight = 30;
constexpr double selfWidth = 150;

struct Arrow {
    LineEnd end;
    bool isDashed = false;
};

Arrow arrowOf(reader::Synchronization synchronization)
{
    switch (synchronization) {
    case reader::Synchronization::Asynchronous:
        return {LineEnd::halfArrow};
    case reader::Synchronization::Return:
        return {LineEnd::openArrow, true};
    case reader::Synchronization::Synchronous:
    case reader::Synchronization::ProcedureCall:
    case reader::Synchronization::Balking:
    case reader::Synchronization::Timeout:
        return {LineEnd::filledArrow};
    case reader::Synchronization::Simple:
        break;
    }
    return {LineEnd::openArrow};
}

std::optional<Path> writtenPath(const Object& view)
{
    const auto origin = view.get("origin").asPoint();
    const auto terminus = view.get("terminus").asPoint();
    if (!origin || !terminus)
        return std::nullopt;
    return Path{{boundedPlace(origin->x), boundedPlace(origin->y)},
                {boundedPlace(terminus->x), boundedPlace(terminus->y)}};
}

// Between lifelines; from a lifeline to itself it comes back below.
Path messagePath(const Scene& scene, const Object& view)
{
    const double y = locationOf(view).y;
    const Node* const client = scene.nodeOf(view, "client");
    const Node* const supplier = scene.nodeOf(view, "supplier");
    const bool isSelf = view.is("SelfMessView");
    Path path = writtenPath(view).value_or(Path());
    if (path.empty() && client && (supplier || isSelf)) {
        const double x = client->rect.centre().x;
        path = {{x, y}, {isSelf ? x + selfWidth : supplier->rect.centre().x, y}};
    }
    if (isSelf && !path.empty()) {
        path.push_back({path.back().x, path.back().y + selfHeight});
        path.push_back({path.front().x, path.back().y});
    }
    return path;
}

// Beside the link, in the middle of it if the file does not say where.
Path arrowPath(const Scene& scene, const Object& view)
{
    Path path = writtenPath(view).value_or(Path());
    const Path* const link = scene.pathOf(view, "object_arc");
    if (path.empty() && link && !link->empty()) {
        const PathPlace on = placeOn(*link, view.number("pctDist", 0.5));
        const Point middle = {on.point.x + arrowGap * on.direction.y, on.point.y - arrowGap * on.direction.x};
        const double x = on.direction.x * usualArrow / 2;
        const double y = on.direction.y * usualArrow / 2;
        path = {{middle.x - x, middle.y - y}, {middle.x + x, middle.y + y}};
        if (view.integer("dir", 1) < 0)
            std::reverse(path.begin(), path.end());
    }
    return path;
}

void drawMessage(const Scene& scene, const Object& view, const std::vector<std::string>& numbers, Svg& svg,
                 Labels& labels)
{
    const Path path = view.is("MessView") ? arrowPath(scene, view) : messagePath(scene, view);
    const Arrow arrow = arrowOf(reader::synchronizationOf(messageOf(scene.context(), view)));
    Stroke stroke = strokeOf(view);
    stroke.isDashed = arrow.isDashed;
    drawPath(path, stroke, arrow.end, svg);
    labels.draw(view, path, numbers);
}

// A small arrow with a circle at its tail, in front of the message that the data goes with.
void drawDataFlow(const Scene& scene, const Object& view, const std::vector<std::string>& /*numbers*/, Svg& svg,
                  Labels& labels)
{
    const Object* const message = scene.context().index.view(view, "MessView");
    const Path arrow = message ? arrowPath(scene, *message) : Path();
    if (arrow.size() < 2)
        return;
    const Stroke stroke = strokeOf(view);
    const double back = view.integer("dir", 1) < 0 ? -1 : 1;
    const Point along = direction(arrow.front(), arrow.back());
    const Point middle = {arrow.back().x + along.x * flowLength, arrow.back().y + along.y * flowLength};
    const double half = back * flowLength / 2;
    const Point tail = {middle.x - along.x * half, middle.y - along.y * half};
    const Point tip = {middle.x + along.x * half, middle.y + along.y * half};
    svg.ellipse(rectAround(tail, {flowCircle, flowCircle}), stroke);
    drawPath({tail, tip}, stroke, LineEnd::openArrow, svg);
    labels.draw(view, {tail, tip});
}

void drawCross(const Scene& /*scene*/, const Object& view, const std::vector<std::string>& /*numbers*/, Svg& svg,
               Labels& /*labels*/)
{
    const Point centre = locationOf(view);
    const Rect rect = rectAround(centre, {2 * crossSize, 2 * crossSize});
    const Stroke stroke = strokeOf(view);
    svg.line({{rect.left, rect.top}, {rect.right, rect.bottom}}, stroke);
    svg.line({{rect.left, rect.bottom}, {rect.right, rect.top}}, stroke);
}

// The lines of an association are those of its roles; its own are only texts.
void drawAssociation(const Scene& scene, const Object& view, const std::vector<std::string>& /*numbers*/, Svg& /*svg*/,
                     Labels& labels)
{
    const Point junction = scene.junctionOf(view);
    labels.draw(view, {junction, {junction.x + 1, junction.y}});
}

// A line to the lane before, and the title on grey.
void drawSwimlane(const Scene& scene, const Object& view, const std::vector<std::string>& /*numbers*/, Svg& svg,
                  Labels& /*labels*/)
{
    constexpr std::uint32_t lightGrey = 0xC0C0C0;
    constexpr std::uint32_t grey = 0x808080;
    const Context& context = scene.context();
    const Lane& lane = scene.laneOf(view);
    if (!lane.isShown)
        return;
    const Rect& rect = lane.rect;
    const Rect band = {rect.left, rect.top, rect.right, rect.top + laneTitle};
    svg.rectangle(band, {grey, lightGrey});
    if (!lane.isFirst)
        svg.line({{rect.left, band.bottom}, {rect.left, rect.bottom}}, {strokeOf(view).line, std::nullopt});
    TextBlock title;
    title.font = fontOf(view, context.defaultFont);
    title.lines = {nameOf(view, context.index.element(view).element)};
    const double above = (laneTitle - title.font.lineHeight()) / 2;
    svg.text(title, {band.left + 3, band.top + above, band.right - 3, band.bottom}, Align::centre, context.measure);
}

struct OtherKind {
    std::string_view keyword;
    void (*draw)(const Scene& scene, const Object& view, const std::vector<std::string>& numbers, Svg& svg,
                 Labels& labels);
};

constexpr OtherKind otherKinds[] = {
    {"AssociationViewNew", drawAssociation},
    {"DataFlowView", drawDataFlow},
    {"Destruction_Marker", drawCross},
    {"InterMessView", drawMessage},
    {"MessView", drawMessage},
    {"SelfMessView", drawMessage},
    {"Swimlane", drawSwimlane},
};

const OtherKind* otherKindOf(const Object& view)
{
    const auto* const found = std::find_if(std::begin(otherKinds), std::end(otherKinds),
                                           [&](const OtherKind& kind) { return view.is(kind.keyword); });
    return found == std::end(otherKinds) ? nullptr : found;
}

} // namespace

const Object* messageOf(const Context& context, const Object& view)
{
    return reader::messageOf(context.index, view);
}

bool isOther(const Object& view)
{
    return otherKindOf(view) != nullptr;
}

void drawOther(const Scene& scene, const Object& view, const std::vector<std::string>& numbers, Svg& svg,
               Labels& labels)
{
    const Context& context = scene.context();
    const Object* const element = context.index.element(view).element;
    beginItem(svg, view, element ? element : messageOf(context, view));
    otherKindOf(view)->draw(scene, view, numbers, svg, labels);
    svg.endGroup();
}

} // namespace render
