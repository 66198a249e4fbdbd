#include "designs/formats/papyrus/Notation.h"

#include "designs/formats/shared/Drawing.h"
#include "designs/formats/shared/Kinds.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

namespace design::papyrus {

namespace {

constexpr double nameHeight = 25; // of a package, above what it holds

// What a line can end at: a box, by the view's identifier.
struct View {
    std::string elementId;
    Rectangle bounds;
};

double coordinate(pugi::xml_node node, const char* name)
{
    return xml::number(node.attribute(name).value(), 0);
}

// 13420443 as in fillColor="13420443", blue in the high byte.
std::optional<std::uint32_t> colour(pugi::xml_node node, const char* name)
{
    const pugi::xml_attribute attribute = node.attribute(name);
    return attribute ? colourOfBgr(static_cast<std::int64_t>(xml::number(attribute.value(), -1))) : std::nullopt;
}

// Shapes keep colours and fonts themselves, older files in `styles` beside.
Appearance appearance(pugi::xml_node view)
{
    Appearance result;
    const auto take = [&result](pugi::xml_node node) {
        if (const auto fill = colour(node, "fillColor"))
            result.fillColor = fill;
        if (const auto line = colour(node, "lineColor"))
            result.lineColor = line;
        if (const auto font = colour(node, "fontColor"))
            result.fontColor = font;
        if (const pugi::xml_attribute name = node.attribute("fontName"))
            result.fontName = name.value();
        if (const pugi::xml_attribute height = node.attribute("fontHeight"))
            result.fontSize = xml::number(height.value(), 0);
    };
    take(view);
    for (const pugi::xml_node style : view.children("styles"))
        take(style);
    return result;
}

// <children visible="false" type="Class_AttributeCompartment">: what a box leaves out.
HiddenFeatures hiddenIn(pugi::xml_node view)
{
    HiddenFeatures hidden;
    for (const pugi::xml_node compartment : view.children("children")) {
        const std::string_view type = compartment.attribute("type").value();
        if (std::string_view(compartment.attribute("visible").value()) != "false")
            continue;
        if (type.ends_with("AttributeCompartment") || type.ends_with("LiteralCompartment"))
            hidden.attributes.fill(true);
        else if (type.ends_with("OperationCompartment"))
            hidden.operations.fill(true);
    }
    return hidden;
}

// "(0.25,1.0)": the part of the box's width and height at which a line meets it; the middle where nothing is said.
Point anchor(pugi::xml_node edge, const char* name, const Rectangle& box)
{
    std::string_view id = edge.child(name).attribute("id").value();
    double x = 0.5;
    double y = 0.5;
    const std::size_t comma = id.find(',');
    if (id.starts_with('(') && comma != std::string_view::npos) {
        x = xml::number(id.substr(1, comma - 1), x);
        y = xml::number(id.substr(comma + 1), y);
    }
    return {box.left + x * box.width, box.top + y * box.height};
}

// "[80, 181, -643984, -643984]$[80, 300, -643984, -643984]"
std::vector<std::array<double, 4>> bendpoints(std::string_view text)
{
    std::vector<std::array<double, 4>> points;
    while (!text.empty()) {
        const std::string_view part = text.substr(0, text.find('$'));
        text.remove_prefix(std::min(part.size() + 1, text.size()));
        std::array<double, 4> point = {0, 0, 0, 0};
        std::size_t at = 0;
        for (double& number : point) {
            at = part.find_first_of("-0123456789", at);
            if (at == std::string_view::npos)
                break;
            const std::size_t end = std::min(part.find_first_of(",]", at), part.size());
            number = xml::number(part.substr(at, end - at), 0);
            at = end;
        }
        points.push_back(point);
    }
    return points;
}

bool isSized(const Rectangle& box)
{
    return box.width > 0 && box.height > 0;
}

// Whether a line's end is where its box has been once.
bool isLeftBehind(Point end, const Rectangle& box)
{
    constexpr double near = 100;
    return isSized(box) && (end.x < box.left - near || end.x > box.left + box.width + near || end.y < box.top - near ||
                            end.y > box.top + box.height + near);
}

// Each bend stands relative to the places where the line meets its boxes, the more to one the nearer it is to it. Newer
// files have a number that is no distance in place of the second pair, and the first is absolute; where the boxes have
// moved since, the line is straight.
std::vector<Point> pointsOf(pugi::xml_node edge, const Rectangle& from, const Rectangle& to)
{
    constexpr double absolute = -600000;
    const auto bends = bendpoints(edge.child("bendpoints").attribute("points").value());
    const bool isKnown = isSized(from) && isSized(to);
    const Point first = anchor(edge, "sourceAnchor", from);
    const Point last = anchor(edge, "targetAnchor", to);
    std::vector<Point> points;
    for (std::size_t i = 0; i < bends.size(); ++i) {
        const auto& [x, y, toX, toY] = bends[i];
        const double weight = bends.size() > 1 ? static_cast<double>(i) / static_cast<double>(bends.size() - 1) : 0.5;
        if (toX < absolute)
            points.push_back({x, y});
        else if (isKnown)
            points.push_back({(first.x + x) * (1 - weight) + (last.x + toX) * weight,
                              (first.y + y) * (1 - weight) + (last.y + toY) * weight});
    }
    if (points.size() < 2)
        points.clear();
    else if (isLeftBehind(points.front(), from) || isLeftBehind(points.back(), to))
        points = {first, last};
    return points;
}

class NotationReader {
public:
    NotationReader(Design& theDesign, uml2::Outside& theOutside, Report& theReport)
        : design(theDesign), outside(theOutside), report(theReport), drawing(theDesign.root)
    {
    }

    void read(pugi::xml_node root)
    {
        if (std::string_view(root.name()) == "notation:Diagram")
            readDiagram(root);
        for (const pugi::xml_node node : root.children())
            if (xml::localName(node.name()) == "Diagram")
                readDiagram(node);
    }

private:
    std::string elementOf(pugi::xml_node view)
    {
        Reference reference = uml2::reference(view, "element", outside);
        if (!reference.name.empty() && !reference.id.empty())
            design.outsideNames.emplace(reference.id, std::move(reference.name));
        return std::move(reference.id);
    }

    void readDiagram(pugi::xml_node node)
    {
        const std::string_view type = node.attribute("type").value();
        Diagram diagram;
        diagram.id = xml::xmiAttribute(node, "id");
        diagram.name = node.attribute("name").value();
        const bool isOfUseCases = type.find("UseCase") != std::string_view::npos;
        diagram.kind = isOfUseCases ? DiagramKind::UseCase : DiagramKind::Class;
        if (!isOfUseCases && type.find("Class") == std::string_view::npos) {
            report.left(plainWords(type.starts_with("PapyrusUML") ? type.substr(10) : type), diagram.id, diagram.name,
                        classDiagramsOnly);
            return;
        }
        views.clear();
        readBoxes(node, {}, diagram);
        for (const pugi::xml_node edge : node.children("edges"))
            readLine(edge, diagram);
        drawing.add(elementOf(node), std::move(diagram));
    }

    // A node with an element and with bounds is a box; the features in it have a place only.
    void readBoxes(pugi::xml_node parent, Point offset, Diagram& diagram)
    {
        for (const pugi::xml_node node : parent.children("children")) {
            const pugi::xml_node layout = node.child("layoutConstraint");
            const std::string element = elementOf(node);
            Point inner = offset;
            if (xml::typeName(layout) == "Bounds" && !element.empty()) {
                const Rectangle bounds = {offset.x + coordinate(layout, "x"), offset.y + coordinate(layout, "y"),
                                          std::max(coordinate(layout, "width"), 0.0),
                                          std::max(coordinate(layout, "height"), 0.0)};
                diagram.boxes.push_back({element, bounds, appearance(node), hiddenIn(node)});
                views.emplace(xml::xmiAttribute(node, "id"), View{element, bounds});
                inner = {bounds.left, bounds.top + nameHeight};
            }
            readBoxes(node, inner, diagram);
        }
    }

    void readLine(pugi::xml_node edge, Diagram& diagram)
    {
        const std::string element = elementOf(edge);
        const auto from = views.find(edge.attribute("source").value());
        const auto to = views.find(edge.attribute("target").value());
        if (element.empty())
            return;
        Line line;
        line.elementId = drawing.lineId(element);
        line.appearance = appearance(edge);
        if (from != views.end() && to != views.end()) {
            line.points = pointsOf(edge, from->second.bounds, to->second.bounds);
            line.hasEnds = line.points.size() > 1;
            drawing.turn(line, from->second.elementId);
        }
        diagram.lines.push_back(std::move(line));
    }

    Design& design;
    uml2::Outside& outside;
    Report& report;
    Drawing drawing;
    std::unordered_map<std::string_view, View> views; // of the diagram, by identifier
};

} // namespace

void readDiagrams(pugi::xml_node root, Design& design, uml2::Outside& outside, Report& report)
{
    NotationReader(design, outside, report).read(root);
}

} // namespace design::papyrus
