#include "designs/formats/staruml/Views.h"

#include "designs/model/Ways.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace design::staruml {

namespace {

Point centreOf(const Rectangle& box)
{
    return {box.left + box.width / 2, box.top + box.height / 2};
}

// Where the way from the centre of a box to a point leaves the box.
Point borderOf(const Rectangle& box, const Point& target)
{
    const Point centre = centreOf(box);
    const Point way = {target.x - centre.x, target.y - centre.y};
    double part = 1;
    if (way.x != 0)
        part = std::min(part, box.width / 2 / std::abs(way.x));
    if (way.y != 0)
        part = std::min(part, box.height / 2 / std::abs(way.y));
    return {centre.x + way.x * part, centre.y + way.y * part};
}

// A line that leads back to its box without bends gets some beside it.
std::vector<Point> loopAt(const Rectangle& box)
{
    constexpr double reach = 30;
    const double right = box.left + box.width;
    const Point centre = centreOf(box);
    const double step = box.height / 4;
    return {{right, centre.y - step},
            {right + reach, centre.y - step},
            {right + reach, centre.y + step},
            {right, centre.y + step}};
}

std::vector<Point> wayOf(const Line& line, const Rectangle& tail, const Rectangle& head, bool isLoop)
{
    constexpr std::size_t least = 2;
    if (line.hasEnds && !line.middle && line.points.size() >= least)
        return line.points;
    std::vector<Point> way = bendsOf(line);
    if (way.empty() && isLoop)
        return loopAt(tail);
    const Point first = borderOf(tail, way.empty() ? centreOf(head) : way.front());
    const Point last = borderOf(head, way.empty() ? centreOf(tail) : way.back());
    way.insert(way.begin(), first);
    way.push_back(last);
    return way;
}

// As the file has them.
std::vector<Point> inPixels(std::vector<Point> points)
{
    for (Point& point : points)
        point = {std::round(point.x), std::round(point.y)};
    return points;
}

std::string textOf(const std::vector<Point>& points)
{
    std::string text;
    for (const Point& point : points) {
        text.append(text.empty() ? "" : ";").append(std::to_string(std::llround(point.x)));
        text.append(":").append(std::to_string(std::llround(point.y)));
    }
    return text;
}

/// A view that lines may end at.
struct Place {
    std::string view;
    Rectangle bounds;
};

class DiagramWriter {
public:
    DiagramWriter(Output& theOutput, const Diagram& theDiagram, std::string_view theId,
                  std::unordered_set<std::string_view>& theNoted)
        : output(theOutput), diagram(theDiagram), id(theId), noted(theNoted)
    {
    }

    void run(const std::vector<Remark>& loose)
    {
        for (const Box& box : diagram.boxes)
            writeBox(box);
        for (const Line& line : diagram.lines)
            writeLine(line);
        for (const Box& box : diagram.boxes)
            writeNotesOf(box.elementId);
        for (const Line& line : diagram.lines)
            writeNotesOf(line.elementId);
        for (const std::string& text : diagram.notes)
            writeNote(text);
        for (const Remark& remark : loose)
            writeNote(remark.text);
    }

private:
    void writeBox(const Box& box)
    {
        const bool isKnown =
            output.writing.catalogue.classifier(box.elementId) || output.writing.catalogue.package(box.elementId);
        if (!isKnown) {
            output.report.left("box", box.elementId, diagram.name, "StarUML has none of this kind");
            return;
        }
        const Place place{output.newId(), wholePixels(box.bounds)};
        places.emplace(box.elementId, place);
        right = std::max(right, place.bounds.left + place.bounds.width);
        staruml::writeBox(output, box, place.view, id);
    }

    [[nodiscard]] const Place* placeOf(const std::string& elementId) const
    {
        const auto found = places.find(elementId);
        return found == places.end() ? nullptr : &found->second;
    }

    void writeLine(const Line& line)
    {
        const Association* const association = output.writing.catalogue.association(line.elementId);
        const Relationship* const relationship = output.writing.catalogue.relationship(line.elementId);
        if (association && association->ends.size() == 2)
            writeEdge(line, "UMLAssociationView", association->ends[0].participant.id,
                      association->ends[1].participant.id);
        else if (relationship)
            writeEdge(line, std::string(typeOf(*relationship, output.writing.catalogue)) + "View",
                      relationship->client.id, relationship->supplier.id);
        else
            leave(line);
        if (association && placeOf(line.elementId))
            writeClassLink(*association);
    }

    void leave(const Line& line) const
    {
        output.report.left("line", line.elementId, diagram.name, "what it joins is not drawn");
    }

    void writeEdge(const Line& line, const std::string& type, const std::string& tailId, const std::string& headId)
    {
        const Place* const tail = placeOf(tailId);
        const Place* const head = placeOf(headId);
        if (!tail || !head) {
            leave(line);
            return;
        }
        const std::vector<Point> way = inPixels(wayOf(line, tail->bounds, head->bounds, tail == head));
        const std::string view = output.newId();
        for (const Point& point : way)
            right = std::max(right, point.x);
        staruml::writeEdge(output, {type, view, line.elementId, tail->view, head->view, textOf(way)}, line.appearance,
                           id);
        const Point middle = way[way.size() / 2];
        places.emplace(line.elementId, Place{view, {middle.x, middle.y, 0, 0}});
    }

    // The line from an association to its class.
    void writeClassLink(const Association& association)
    {
        const Place* const classPlace = placeOf(association.associationClassId);
        const Place* const linePlace = placeOf(association.id);
        if (classPlace && linePlace && linked.insert(association.id).second)
            writePlain("UMLAssociationClassLinkView", output.classLinkOf(association), *linePlace, *classPlace);
    }

    void writePlain(std::string_view type, std::string_view model, const Place& tail, const Place& head)
    {
        const std::vector<Point> way = wayOf({}, tail.bounds, head.bounds, false);
        writePlainEdge(output, {type, output.newId(), model, tail.view, head.view, textOf(way)}, id);
    }

    [[nodiscard]] const Element* elementOf(const std::string& elementId) const
    {
        const Catalogue& catalogue = output.writing.catalogue;
        if (const Element* const element = catalogue.classifier(elementId))
            return element;
        if (const Element* const element = catalogue.package(elementId))
            return element;
        if (const Element* const element = catalogue.association(elementId))
            return element;
        return catalogue.relationship(elementId);
    }

    void writeNotesOf(const std::string& elementId)
    {
        const Element* const element = elementOf(elementId);
        const Place* const place = placeOf(elementId);
        if (!element || !place || element->notes.empty() || !noted.insert(element->id).second)
            return;
        for (const std::string& text : element->notes) {
            const Place note = writeNote(text);
            writePlain("UMLNoteLinkView", "", note, *place);
        }
    }

    // Designs keep no places of notes: they stand below each other, to the right of everything else.
    Place writeNote(const std::string& text)
    {
        constexpr double width = 180;
        constexpr double gap = 40;
        constexpr std::size_t charactersInLine = 28;
        constexpr double lineHeight = 16;
        const auto breaks = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
        const std::size_t lines = text.size() / charactersInLine + breaks + 1;
        Place note{output.newId(), {right + gap, noteTop, width, static_cast<double>(lines) * lineHeight + gap / 2}};
        staruml::writeNote(output, text, note.bounds, note.view, id);
        noteTop += note.bounds.height + gap / 2;
        return note;
    }

    Output& output;
    const Diagram& diagram;
    std::string_view id;
    std::unordered_set<std::string_view>& noted;
    std::unordered_map<std::string_view, Place> places; // by element, the first of each
    std::unordered_set<std::string_view> linked;        // associations that are joined to their classes
    double right = 0;                                   // of what is drawn so far
    double noteTop = 20;
};

} // namespace

void writeDiagram(Output& output, const Diagram& diagram, const Package& package,
                  std::unordered_set<std::string_view>& noted)
{
    const bool isFirst = &diagram == package.diagrams.data();
    const std::string_view type = diagram.kind == DiagramKind::UseCase ? "UMLUseCaseDiagram" : "UMLClassDiagram";
    const std::string id = output.begin(type, diagram, output.idOf(package));
    output.textIfAny("stereotype", diagram.stereotype);
    output.ownedConstraints(diagram, id);
    output.json.member("visible", true).member("defaultDiagram", false).beginList("ownedViews");
    DiagramWriter(output, diagram, id, noted).run(isFirst ? package.remarks : std::vector<Remark>());
    output.json.endList();
    output.end();
}

} // namespace design::staruml
