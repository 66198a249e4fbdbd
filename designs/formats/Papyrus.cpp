#include "designs/formats/Formats.h"

#include "designs/formats/shared/Drawing.h"
#include "designs/formats/shared/Kinds.h"
#include "designs/formats/uml2/Uml2.h"

#include <array>
#include <charconv>
#include <unordered_map>
#include <utility>

namespace design {

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

// Each bend stands relative to the places where the line meets its boxes, the more to one the nearer it is to it. Newer
// files have a number that is no distance in place of the second pair, and the first is absolute.
std::vector<Point> pointsOf(pugi::xml_node edge, const Rectangle& from, const Rectangle& to)
{
    constexpr double absolute = -600000;
    const auto bends = bendpoints(edge.child("bendpoints").attribute("points").value());
    const auto isSized = [](const Rectangle& box) { return box.width > 0 && box.height > 0; };
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
        if (type.find("Class") == std::string_view::npos) {
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
                diagram.boxes.push_back({element, bounds, appearance(node)});
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

std::string fileWith(const std::filesystem::path& path, const char* extension)
{
    return path.filename().replace_extension(extension).string();
}

bool isNotation(std::string_view head)
{
    return head.find("<notation:Diagram") != std::string_view::npos && !uml2::hasModel(head);
}

bool recognizes(const Source& source)
{
    const std::string head = xml::head(source.text);
    if (isNotation(head))
        return true;
    if (uml2::hasModel(head) && head.find("xmlns:notation=") != std::string::npos)
        return true;
    return uml2::hasModel(head) && uml2::isBeside(source.path, fileWith(source.path, ".notation"));
}

// Either of the two files may be given. A fault in the other one is told with its name.
xml::Document documentBeside(const std::string& bytes, const std::string& name)
{
    try {
        return xml::Document(bytes);
    } catch (const UnreadableDesign& fault) {
        throw UnreadableDesign(name + ": " + fault.what());
    }
}

Design read(const Source& source, Report& report)
{
    const bool isNotationGiven = isNotation(xml::head(source.text));
    const std::string other = fileWith(source.path, isNotationGiven ? ".uml" : ".notation");
    const std::optional<std::string> beside = uml2::readBeside(source.path, other);
    if (isNotationGiven && !beside)
        throw UnreadableDesign("1:1: diagrams alone; the model is missing: " + other);
    const xml::Document given(source.text);
    std::optional<xml::Document> second;
    if (beside)
        second.emplace(documentBeside(*beside, other));
    const xml::Document& tree = isNotationGiven ? *second : given;
    uml2::Outside outside(isNotationGiven ? source.path.parent_path() / other : source.path);
    Design design = uml2::read(tree, outside, report);
    // Diagrams may also stand in the same file.
    NotationReader(design, outside, report).read((beside && !isNotationGiven ? *second : given).root());
    return design;
}

} // namespace

Format papyrusFormat()
{
    return {"papyrus",
            "Papyrus model (.uml) with the diagrams beside it (.notation)",
            {".uml", ".notation"},
            "a uml:Model or uml:Package with packaged elements",
            recognizes,
            read};
}

} // namespace design
