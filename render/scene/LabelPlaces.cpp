#include "render/scene/LabelPlaces.h"

#include <algorithm>
#include <cmath>

namespace render {

namespace {

constexpr int qualifierAnchor = 5; // qualifiers stand in their own box
constexpr double labelGap = 10;
constexpr double endGap = 20;          // from a line that may have an arrow or a diamond there
constexpr double farAway = 250;        // from its line a label seems to belong to another
constexpr Size nearOrigin = {12, 120}; // labels with a place in there have none
constexpr std::size_t mostLabels = 2000;

// What a label costs where it stands, in the units of a distance.
constexpr double onBox = 2000;
constexpr double onLabel = 1500;
constexpr double onOtherLine = 250;
constexpr double onOwnLine = 100;

Point onSide(const PathPlace& on, double side, Size size, double gap)
{
    const Point normal = {side * on.direction.y, -side * on.direction.x};
    const double reach = std::abs(normal.x) * size.width / 2 + std::abs(normal.y) * size.height / 2 + gap;
    return {on.point.x + normal.x * reach, on.point.y + normal.y * reach};
}

double sideOf(const Object& label)
{
    return label.integer("orientation") == 0 ? 1 : -1;
}

// Where a free place is looked for: steps along the line to each side, and distances from it.
constexpr LabelPlaces::Reach near = {7, {1, 4, 9}};
constexpr LabelPlaces::Reach far = {30, {4, 16, 30}};

} // namespace

bool isLineLabel(const Object& label)
{
    return label.is("SegLabel", "ItemLabel") && label.integer("anchor") != qualifierAnchor;
}

TextBlock blockOfLabel(const Context& context, const Object& view, const Object& label, const std::string& number)
{
    std::string text = lineOf(label, "label");
    if (text.starts_with("$UNNAMED$"))
        text.clear();
    if (text.empty() && view.is("MessView", "InterMessView", "SelfMessView"))
        if (const Object* const element = context.index.element(label).element)
            text = cleanText(reader::shownName(*element));
    TextBlock block;
    if (label.flag("hidden") || (text.empty() && number.empty()))
        return block;
    block.font = fontOf(label, fontOf(view, context.defaultFont));
    const bool isOneLine = label.number("nlines", 1) <= 1;
    block.lines = wrapped(number + text, block.font, isOneLine ? 0 : widthOfLabel(label) / narrowest, context.measure);
    return block;
}

Rect rectBeside(const Object& label, const Path& path, Size size)
{
    const PathPlace on = placeOn(path, label.number("pctDist", 0.5));
    return rectAround(onSide(on, sideOf(label), size, labelGap), size);
}

Rect lettersIn(const Rect& rect, const Font& font)
{
    constexpr double capitals = 0.72; // of the em, above the base line
    constexpr double belowBase = 0.1;
    return {rect.left, rect.top + font.ascent() - capitals * font.em(), rect.right,
            rect.bottom - font.lineHeight() + font.ascent() + belowBase * font.em()};
}

LabelPlaces::LabelPlaces(const Scene& scene)
{
    collect(scene);
    if (scene.context().isComputed)
        placeComputed(scene);
    else
        partChosen(scene);
}

void LabelPlaces::placeComputed(const Scene& scene)
{
    for (const Node& node : scene.nodes()) {
        obstacles.addRect(Obstacles::Kind::box, node.rect);
        if (node.isNamedOutside)
            obstacles.addRect(Obstacles::Kind::box, node.nameRect);
    }
    for (const Line& line : scene.lines()) {
        obstacles.addPath(line.path);
        if (!line.qualifiers.lines.empty())
            obstacles.addRect(Obstacles::Kind::box, line.qualifierRect);
    }
    std::vector<const Wanted*> open;
    for (const Wanted& wanted : labels)
        if (!keep(wanted))
            open.push_back(&wanted);
    for (const Wanted* const wanted : open)
        place(*wanted);
}

std::optional<Rect> LabelPlaces::of(const Object& label) const
{
    const auto found = rects.find(&label);
    return found == rects.end() ? std::nullopt : std::optional(found->second);
}

void LabelPlaces::collect(const Scene& scene)
{
    wholePaths.reserve(scene.others().size());
    for (const Object* const view : scene.others())
        if (view->is("AssociationViewNew")) {
            wholePaths.push_back(scene.wholePathOf(*view));
            collectFrom(scene.context(), *view, wholePaths.back());
        }
    for (const Line& line : scene.lines())
        collectFrom(scene.context(), *line.view, line.path);
}

void LabelPlaces::collectFrom(const Context& context, const Object& view, const Path& path)
{
    if (path.size() < 2)
        return;
    for (const reader::Attribute& attribute : view.attributes()) {
        const Object* const label = attribute.value.asObject();
        if (!label || !isLineLabel(*label) || labels.size() >= mostLabels)
            continue;
        const TextBlock block = blockOfLabel(context, view, *label, "");
        if (!block.lines.empty())
            labels.push_back({label, &path, block.size(context.measure), view.is("RoleView"), block.font});
    }
}

// Where the file has it, unless it covers something there.
bool LabelPlaces::keep(const Wanted& wanted)
{
    const Point place = locationOf(*wanted.label);
    const bool isAtOrigin = std::abs(place.x) <= nearOrigin.width && std::abs(place.y) <= nearOrigin.height;
    if (isAtOrigin || distance(*wanted.path, place) > farAway)
        return false;
    const Rect rect = rectOfLabel(*wanted.label, wanted.size);
    if (!obstacles.in(rect).empty())
        return false;
    obstacles.addRect(Obstacles::Kind::label, rect);
    rects.emplace(wanted.label, rect);
    return true;
}

void LabelPlaces::place(const Wanted& wanted)
{
    if (obstacles.isExhausted())
        return;
    std::optional<Rect> best;
    double least = 0;
    const auto look = [&](const std::vector<Rect>& places) {
        for (const Rect& rect : places) {
            const double cost = costOf(wanted, rect);
            if (!best || cost < least) {
                best = rect;
                least = cost;
            }
        }
    };
    look(candidates(wanted, near));
    if (best && least >= onLabel)
        look(candidates(wanted, far));
    if (!best)
        return;
    obstacles.addRect(Obstacles::Kind::label, *best);
    rects.emplace(wanted.label, *best);
}

double LabelPlaces::costOf(const Wanted& wanted, const Rect& rect)
{
    const Point home = wanted.isAtEnd ? wanted.path->back() : placeOn(*wanted.path, 0.5).point;
    double cost = distance(home, rect.centre());
    for (const Obstacles::Obstacle& obstacle : obstacles.in(rect.grownBy(2))) {
        if (obstacle.kind == Obstacles::Kind::box)
            cost += onBox;
        else if (obstacle.kind == Obstacles::Kind::label)
            cost += onLabel;
        else
            cost += obstacle.path == wanted.path ? onOwnLine : onOtherLine;
    }
    return cost;
}

std::vector<Rect> LabelPlaces::candidates(const Wanted& wanted, const Reach& reach)
{
    std::vector<Rect> rects;
    const double length = lengthOf(*wanted.path);
    constexpr double stride = 45;
    const PathPlace end = placeOn(*wanted.path, 1);
    const double half =
        std::abs(end.direction.x) * wanted.size.width / 2 + std::abs(end.direction.y) * wanted.size.height / 2;
    const double shortOfEnd = length - labelGap - half; // behind the start of a line that is shorter than its label
    double home = length / 2;
    if (wanted.isAtEnd)
        home = shortOfEnd > 0 ? shortOfEnd : std::max(length - labelGap, 0.0);
    for (int step = -reach.steps; step <= (wanted.isAtEnd ? 0 : reach.steps); ++step) {
        const double at = home + step * stride;
        if (at <= -stride || at >= length + stride)
            continue;
        const PathPlace on = placeOn(*wanted.path, length > 0 ? at / length : 0);
        for (const double side : {1.0, -1.0})
            for (const double gaps : reach.gaps) {
                const double gap = wanted.isAtEnd && gaps < 2 ? endGap : gaps * labelGap;
                rects.push_back(rectAround(onSide(on, side * sideOf(*wanted.label), wanted.size, gap), wanted.size));
            }
    }
    return rects;
}

} // namespace render
