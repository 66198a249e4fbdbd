#include "designs/convert/Projections.h"

#include "designs/layout/Geometry.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <unordered_set>

namespace design {

namespace {

// 300 units to the inch, 96 pixels to the inch.
constexpr double unitsInPixel = 300.0 / 96.0;

// Red in the lowest byte, as Rose has it.
int roseColour(std::uint32_t colour)
{
    return static_cast<int>((colour & 0xFFU) << 16U | (colour & 0xFF00U) | (colour >> 16U & 0xFFU));
}

std::string textOf(const std::vector<Point>& vertices)
{
    std::string text;
    std::string before;
    for (const Point& vertex : vertices) {
        std::string point = std::to_string(inUnits(vertex.x));
        point.insert(0, 1, '(').append(1, ',').append(std::to_string(inUnits(vertex.y))).append(1, ')');
        if (point == before)
            continue;
        text += text.empty() ? point : "\r\n" + point;
        before = std::move(point);
    }
    return text;
}

Rectangle at(Point point)
{
    return {point.x, point.y, 0, 0};
}

Point middleOf(Point a, Point b)
{
    return {(a.x + b.x) / 2, (a.y + b.y) / 2};
}

// The box of an element, or null where it is not drawn or has no place.
template <class Boxes>
const Rectangle* placeOf(const Boxes& boxes, std::string_view id)
{
    const auto found = boxes.find(id);
    return found != boxes.end() && found->second->bounds ? &*found->second->bounds : nullptr;
}

// The whole way of a line; empty for a straight one that the file gives no points for.
Points wayOf(const Line& line, const Rectangle& from, const Rectangle& to)
{
    if (line.points.size() > (line.hasEnds ? 1U : 0U))
        return fromBorderToBorder(line.points, line.hasEnds, from, to);
    return &from == &to ? loopAt(from) : Points();
}

} // namespace

int inUnits(double pixels)
{
    constexpr double farthest = 1e8; // a fair distance from where the host's numbers end
    return static_cast<int>(std::lround(std::clamp(pixels * unitsInPixel, -farthest, farthest)));
}

double inPixels(int units)
{
    return units / unitsInPixel;
}

void Projections::add(const Diagram& diagram, KivClassDiagram& target)
{
    BoxOfElement boxes;
    for (const Box& box : diagram.boxes) {
        boxes.emplace(box.elementId, &box);
        if (box.bounds && catalogue.classifier(box.elementId))
            ofElements[box.elementId].push_back({&target, box.bounds, {}, false, &box.appearance});
    }
    for (const Line& line : diagram.lines)
        addLine(target, line, diagram.keepsPlaces, boxes);
}

void Projections::addLine(KivClassDiagram& target, const Line& line, bool keepsPlaces, const BoxOfElement& boxes)
{
    if (const Association* const association = catalogue.association(line.elementId))
        return addAssociation(target, line, *association, boxes);
    const Relationship* const relationship = catalogue.relationship(line.elementId);
    if (keepsPlaces) { // without ends the file says nothing of it
        if (line.hasEnds)
            ofElements[line.elementId].push_back({&target, std::nullopt, line.points, true, &line.appearance});
        return;
    }
    const Rectangle* const from = placeOf(boxes, relationship->client.id);
    const Rectangle* const to = placeOf(boxes, relationship->supplier.id);
    if (from && to)
        ofElements[line.elementId].push_back({&target, std::nullopt, wayOf(line, *from, *to), true, &line.appearance});
}

void Projections::addAssociation(KivClassDiagram& target, const Line& line, const Association& association,
                                 const BoxOfElement& boxes)
{
    if (line.middle)
        return addDivided(target, line, *line.middle);
    std::vector<const Rectangle*> places;
    Point middle;
    for (const AssociationEnd& end : association.ends) {
        places.push_back(placeOf(boxes, end.participant.id));
        if (!places.back())
            return;
        const Point centre = centreOf(*places.back());
        const auto count = static_cast<double>(association.ends.size());
        middle = {middle.x + centre.x / count, middle.y + centre.y / count};
    }
    SplitLine split = {middle, {}, {}};
    if (const Points way = places.size() == 2 ? wayOf(line, *places[0], *places[1]) : Points(); way.size() >= 2)
        split = splitInTheMiddle(way);
    else if (const Rectangle* const symbol = placeOf(boxes, association.id))
        split.middle = centreOf(*symbol);
    ofElements[line.elementId].push_back({&target, at(split.middle), {}, false, &line.appearance});
    auto& ends = ofEnds[line.elementId];
    ends.resize(places.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        Points part; // of the line; of more than two ends none has one
        if (i == 0)
            part = std::move(split.toFirst);
        else if (i == 1)
            part = std::move(split.toLast);
        const Point far = part.empty() ? centreOf(*places[i]) : part.back();
        ends[i].push_back({&target, at(middleOf(split.middle, far)), std::move(part), true, &line.appearance});
    }
}

// The file has the association's point and the parts of its line.
void Projections::addDivided(KivClassDiagram& target, const Line& line, Point middle)
{
    ofElements[line.elementId].push_back({&target, at(middle), {}, false, &line.appearance});
    auto& ends = ofEnds[line.elementId];
    ends.resize(line.parts.size());
    for (std::size_t i = 0; i < line.parts.size(); ++i)
        ends[i].push_back(
            {&target, at(line.parts[i].place.value_or(middle)), line.parts[i].points, true, &line.appearance});
}

void Projections::addTo(KivModelObject& object, std::string_view elementId, ModelBuilder& builder) const
{
    if (const auto found = ofElements.find(elementId); found != ofElements.end())
        addAll(found->second, object, builder);
}

void Projections::addTo(KivAssociation& association, std::string_view elementId, ModelBuilder& builder) const
{
    addTo(static_cast<KivModelObject&>(association), elementId, builder);
    const auto found = ofEnds.find(elementId);
    for (std::size_t i = 0; found != ofEnds.end() && i < found->second.size(); ++i)
        addAll(found->second[i], *association.roles.at(i), builder);
}

// An object that stands for several elements may have the diagram already.
void Projections::addAll(const std::vector<Projection>& projections, KivModelObject& object, ModelBuilder& builder)
{
    std::unordered_set<const KivClassDiagram*> met;
    for (const KivProjection* const projection : object.projections)
        met.insert(projection->diagram);
    for (const Projection& projection : projections)
        if (met.insert(projection.diagram).second)
            object.projections.add(create(projection, builder));
}

KivProjection* Projections::create(const Projection& projection, ModelBuilder& builder)
{
    KivProjection* created = nullptr;
    if (projection.isLine) {
        auto* const line = builder.create<KivRelationshipProjection>();
        line->vertices = KivString(textOf(projection.vertices));
        created = line;
    } else {
        created = builder.create<KivProjection>();
    }
    created->diagram = projection.diagram;
    if (projection.bounds) {
        const Point centre = centreOf(*projection.bounds);
        created->x = inUnits(centre.x);
        created->y = inUnits(centre.y);
        created->width = inUnits(projection.bounds->width);
        created->height = inUnits(projection.bounds->height);
    }
    const Appearance& appearance = *projection.appearance;
    const auto setColour = [](int& target, const std::optional<std::uint32_t>& colour) {
        target = colour ? roseColour(*colour) : target;
    };
    setColour(created->lineColor, appearance.lineColor);
    setColour(created->fillColor, appearance.fillColor);
    setColour(created->fontColor, appearance.fontColor);
    if (!appearance.fontName.empty())
        created->fontName = builder.text(Element{}, appearance.fontName);
    if (appearance.fontSize >= 1)
        created->fontSize = static_cast<int>(std::lround(std::min(appearance.fontSize, 1000.0)));
    return created;
}

} // namespace design
