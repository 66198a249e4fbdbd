#include "designs/convert/Projections.h"

#include "designs/layout/Geometry.h"
#include "designs/model/Walk.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace design {

namespace {

// 300 units to the inch, 96 pixels to the inch.
constexpr double unitsInPixel = 300.0 / 96.0;
constexpr double farthest = 1e8; // a fair distance from where the host's numbers end

int inUnits(double pixels)
{
    return static_cast<int>(std::lround(std::clamp(pixels * unitsInPixel, -farthest, farthest)));
}

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

Projections::Projections(const Package& root, const Catalogue& catalogue)
{
    forEachPackage(root, [&](const Package& package) {
        for (const Diagram& diagram : package.diagrams)
            addDiagram(diagram, catalogue);
    });
}

void Projections::addDiagram(const Diagram& diagram, const Catalogue& catalogue)
{
    BoxOfElement boxes;
    for (const Box& box : diagram.boxes) {
        boxes.emplace(box.elementId, &box);
        if (box.bounds && catalogue.classifier(box.elementId))
            ofElements[box.elementId].push_back({diagram.id, box.bounds, {}, false, &box.appearance});
    }
    for (const Line& line : diagram.lines)
        addLine(diagram, line, catalogue, boxes);
}

void Projections::addLine(const Diagram& diagram, const Line& line, const Catalogue& catalogue,
                          const BoxOfElement& boxes)
{
    if (const Association* const association = catalogue.association(line.elementId))
        return addAssociation(diagram, line, *association, boxes);
    const Relationship* const relationship = catalogue.relationship(line.elementId);
    const Rectangle* const from = placeOf(boxes, relationship->client.id);
    const Rectangle* const to = placeOf(boxes, relationship->supplier.id);
    if (from && to)
        ofElements[line.elementId].push_back(
            {diagram.id, std::nullopt, wayOf(line, *from, *to), true, &line.appearance});
}

void Projections::addAssociation(const Diagram& diagram, const Line& line, const Association& association,
                                 const BoxOfElement& boxes)
{
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
    ofElements[line.elementId].push_back({diagram.id, at(split.middle), {}, false, &line.appearance});
    auto& ends = ofEnds[line.elementId];
    ends.resize(places.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        Points part; // of the line; of more than two ends none has one
        if (i == 0)
            part = std::move(split.toFirst);
        else if (i == 1)
            part = std::move(split.toLast);
        const Point far = part.empty() ? centreOf(*places[i]) : part.back();
        ends[i].push_back({diagram.id, at(middleOf(split.middle, far)), std::move(part), true, &line.appearance});
    }
}

void Projections::write(JsonWriter& json, std::string_view elementId) const
{
    if (const auto found = ofElements.find(elementId); found != ofElements.end())
        writeAll(json, found->second);
}

void Projections::writeRole(JsonWriter& json, std::string_view associationId, std::size_t end) const
{
    if (const auto found = ofEnds.find(associationId); found != ofEnds.end())
        writeAll(json, found->second[end]);
}

void Projections::writeAll(JsonWriter& json, const std::vector<Projection>& projections)
{
    json.beginList("projections");
    for (const Projection& projection : projections)
        writeOne(json, projection);
    json.endList();
}

void Projections::writeOne(JsonWriter& json, const Projection& projection)
{
    json.beginObject();
    json.member("diagram", projection.diagramId);
    if (projection.bounds) {
        const Point centre = centreOf(*projection.bounds);
        json.member("x", inUnits(centre.x));
        json.member("y", inUnits(centre.y));
        if (projection.bounds->width > 0 || projection.bounds->height > 0) {
            json.member("width", inUnits(projection.bounds->width));
            json.member("height", inUnits(projection.bounds->height));
        }
    }
    const Appearance& appearance = *projection.appearance;
    const auto writeColour = [&](std::string_view key, const std::optional<std::uint32_t>& colour) {
        if (colour)
            json.member(key, roseColour(*colour));
    };
    writeColour("lineColor", appearance.lineColor);
    writeColour("fillColor", appearance.fillColor);
    writeColour("fontColor", appearance.fontColor);
    if (!appearance.fontName.empty())
        json.member("fontName", std::string_view(appearance.fontName));
    if (appearance.fontSize >= 1)
        json.member("fontSize", static_cast<int>(std::lround(std::min(appearance.fontSize, 1000.0))));
    if (projection.isLine)
        json.member("vertices", std::string_view(textOf(projection.vertices)));
    json.endObject();
}

} // namespace design
