#include "designs/formats/staruml/Reading.h"

#include "designs/formats/shared/Drawing.h"
#include "designs/model/Texts.h"
#include "text/Words.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <unordered_map>
#include <utility>

namespace design::staruml {

namespace {

constexpr double farthest = 1e6;

bool isNear(double number)
{
    return number >= -farthest && number <= farthest;
}

double coordinate(std::string_view text)
{
    double value = 0;
    text = text::trimmed(text);
    std::from_chars(text.data(), text.data() + text.size(), value);
    return isNear(value) ? value : 0;
}

// "400:448;400:401"
std::vector<Point> parsePoints(std::string_view text)
{
    std::vector<Point> points;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(';'), text.size());
        const std::string_view point = text.substr(0, end);
        if (const std::size_t colon = point.find(':'); colon != std::string_view::npos)
            points.push_back({coordinate(point.substr(0, colon)), coordinate(point.substr(colon + 1))});
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return points;
}

// "Arial;13;0": name, height in pixels, style.
void parseFont(std::string_view text, Appearance& appearance)
{
    constexpr double pointsInPixel = 0.75;
    const std::size_t nameEnd = text.find(';');
    appearance.fontName = text::trimmed(text.substr(0, nameEnd));
    if (nameEnd != std::string_view::npos)
        appearance.fontSize = coordinate(text.substr(nameEnd + 1)) * pointsInPixel;
}

Appearance appearanceOf(const Object& view)
{
    Appearance appearance;
    appearance.lineColor = parseColour(json::text(view, "lineColor"));
    appearance.fillColor = parseColour(json::text(view, "fillColor"));
    appearance.fontColor = parseColour(json::text(view, "fontColor"));
    parseFont(json::text(view, "font"), appearance);
    return appearance;
}

HiddenFeatures hiddenIn(const Object& view)
{
    if (const std::string_view type = json::text(view, "_type"); type == "UMLActorView" || type == "UMLUseCaseView")
        return {}; // a figure has no compartments, whatever it says of them
    return hiding(json::flag(view, "suppressAttributes"), json::flag(view, "suppressOperations"));
}

std::optional<Rectangle> boundsOf(const Object& view)
{
    const std::array numbers = {json::number(view, "left"), json::number(view, "top"), json::number(view, "width"),
                                json::number(view, "height")};
    if (!std::all_of(numbers.begin(), numbers.end(), isNear))
        return std::nullopt;
    return Rectangle{numbers[0], numbers[1], numbers[2], numbers[3]};
}

class DiagramReader {
public:
    DiagramReader(const Reading& theReading, Diagram& theDiagram) : reading(theReading), diagram(theDiagram) {}

    void read(const Object& object)
    {
        json::forEach(object, "ownedViews", [&](const Object& view) {
            if (typeOf(view) == "UMLNoteLinkView")
                readNoteLink(view);
        });
        json::forEach(object, "ownedViews", [&](const Object& view) {
            bool isVisible = true;
            if (view["visible"].get(isVisible) != simdjson::SUCCESS || isVisible)
                readView(view);
        });
    }

private:
    Remark& remarkOf(const Object& note)
    {
        const auto [place, isNew] = remarkPlaces.emplace(idOf(note), diagram.remarks.size());
        if (!isNew && !place->first.empty())
            return diagram.remarks[place->second];
        Remark& remark = diagram.remarks.emplace_back();
        remark.id = idOf(note);
        remark.text = json::text(note, "text");
        return remark;
    }

    // A note hangs at what the view at the link's other end shows.
    void readNoteLink(const Object& link)
    {
        for (const auto& [noteKey, otherKey] : {std::pair{"tail", "head"}, std::pair{"head", "tail"}}) {
            const Object* const note = reading.find(referenceIn(link, noteKey));
            const Object* const other = reading.find(referenceIn(link, otherKey));
            if (note && other && typeOf(*note) == "UMLNoteView")
                remarkOf(*note).elementIds.emplace_back(referenceIn(*other, "model"));
        }
    }

    void readView(const Object& view)
    {
        constexpr std::array<std::string_view, 5> drawnBesides = {"UMLNoteLinkView", "UMLAssociationClassLinkView",
                                                                  "UMLFrameView", "UMLConstraintView",
                                                                  "UMLConstraintLinkView"};
        const std::string_view type = typeOf(view);
        if (isOneOf(drawnBesides, type))
            return;
        if (type == "UMLNoteView" || type == "UMLTextView")
            remarkOf(view);
        else
            readShape(view);
    }

    void readShape(const Object& view)
    {
        const std::string id(referenceIn(view, "model"));
        const Object* const shown = reading.find(id);
        const std::string_view points = json::text(view, "points");
        if (!shown)
            reading.report.left(typeOf(view), idOf(view), diagram.name, "it shows no element");
        else if (!points.empty() || isRelation(typeOf(*shown)))
            diagram.lines.push_back({id, parsePoints(points), true, appearanceOf(view), {}, {}});
        else
            diagram.boxes.push_back({id, boundsOf(view), appearanceOf(view), hiddenIn(view)});
    }

    const Reading& reading;
    Diagram& diagram;
    std::unordered_map<std::string_view, std::size_t> remarkPlaces; // by identifier of the note's view
};

} // namespace

void readDiagram(Reading& reading, const Object& object, Package& package)
{
    Diagram diagram;
    reading.describe(object, diagram, package);
    diagram.kind = typeOf(object) == "UMLUseCaseDiagram" ? DiagramKind::UseCase : DiagramKind::Class;
    DiagramReader(reading, diagram).read(object);
    std::erase_if(diagram.remarks, [](const Remark& remark) { return remark.text.empty(); });
    package.diagrams.push_back(std::move(diagram));
}

} // namespace design::staruml
