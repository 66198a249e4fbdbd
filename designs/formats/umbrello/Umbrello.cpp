#include "designs/formats/umbrello/Umbrello.h"

#include "designs/formats/shared/Drawing.h"
#include "designs/formats/umbrello/Uml1.h"
#include "designs/formats/uml2/Uml2.h"
#include "designs/model/Texts.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace design {

namespace {

struct DiagramType {
    std::string_view number;
    std::string_view name;
};

constexpr std::string_view classDiagram = "1";
constexpr std::array<DiagramType, 9> otherDiagrams = {{
    {"2", "use case diagram"},
    {"3", "sequence diagram"},
    {"4", "collaboration diagram"},
    {"5", "state diagram"},
    {"6", "activity diagram"},
    {"7", "component diagram"},
    {"8", "deployment diagram"},
    {"9", "entity relationship diagram"},
    {"10", "object diagram"},
}};

constexpr std::array<std::string_view, 4> boxWidgets = {"classwidget", "interfacewidget", "enumwidget",
                                                        "datatypewidget"};

/// Lines that are no relation of the model: what lies in a package, and what a note hangs at.
constexpr std::string_view containment = "509";
constexpr std::string_view anchor = "513";

double coordinate(pugi::xml_node node, const char* name)
{
    return xml::number(node.attribute(name).value(), 0);
}

/// "none" stands for what the diagram has.
std::optional<std::uint32_t> colour(pugi::xml_node node, pugi::xml_node diagram, const char* name)
{
    const std::string_view own = node.attribute(name).value();
    return parseColour(own == "none" ? std::string_view(diagram.attribute(name).value()) : own);
}

/// fillcolor="#ffff00" linecolor="none" font="Sans Serif,9,-1,0,50,0,0,0,0,0"
Appearance appearance(pugi::xml_node node, pugi::xml_node diagram)
{
    Appearance result;
    if (std::string_view(node.attribute("usefillcolor").value()) != "0")
        result.fillColor = colour(node, diagram, "fillcolor");
    result.lineColor = colour(node, diagram, "linecolor");
    result.fontColor = colour(node, diagram, "textcolor");
    const std::string_view font = node.attribute("font").value();
    result.fontName = font.substr(0, font.find(','));
    result.fontSize = std::max(xml::number(xml::between(font, ",", ','), 0), 0.0);
    return result;
}

class DiagramReader {
public:
    DiagramReader(uml2::Model& model, Report& report) : model_(model), report_(report), joined_(model.design.root) {}

    /// All diagrams below a node; `owner` is the package that they belong to.
    void readBelow(pugi::xml_node node, std::string_view owner);

private:
    void readDiagram(pugi::xml_node diagramNode, std::string_view owner);
    void readWidget(pugi::xml_node node, pugi::xml_node diagramNode, Diagram& diagram);
    void readLine(pugi::xml_node node, pugi::xml_node diagramNode, Diagram& diagram);
    void readNotes(pugi::xml_node node, std::string_view owner);
    std::string elementOf(std::string_view widget) const;

    uml2::Model& model_;
    Report& report_;
    JoinedElements joined_;
    std::unordered_map<std::string_view, std::string_view> elements_; ///< by the widget's own identifier
};

void DiagramReader::readBelow(pugi::xml_node node, std::string_view owner)
{
    for (const pugi::xml_node child : node.children()) {
        const std::string_view name = child.name();
        if (name == "diagram")
            readDiagram(child, owner);
        else if (const std::string_view id = xml::xmiAttribute(child, "id"); !id.empty())
            readBelow(child, id);
        else
            readBelow(child, owner);
    }
}

std::string DiagramReader::elementOf(std::string_view widget) const
{
    const auto found = elements_.find(widget);
    return std::string(found == elements_.end() ? widget : found->second);
}

void DiagramReader::readWidget(pugi::xml_node node, pugi::xml_node diagramNode, Diagram& diagram)
{
    const std::string_view name = node.name();
    const std::string_view id = xml::xmiAttribute(node, "id");
    if (const pugi::xml_attribute local = node.attribute("localid"))
        elements_.emplace(local.value(), id);
    if (std::find(boxWidgets.begin(), boxWidgets.end(), name) != boxWidgets.end() || name == "packagewidget") {
        Box box{std::string(id), {}, appearance(node, diagramNode)};
        box.bounds = Rectangle{coordinate(node, "x"), coordinate(node, "y"), std::max(coordinate(node, "width"), 0.0),
                               std::max(coordinate(node, "height"), 0.0)};
        diagram.boxes.push_back(std::move(box));
    } else if (name != "notewidget" && name.ends_with("widget")) {
        report_.left("drawn " + std::string(name.substr(0, name.size() - 6)), id, diagram.name,
                     "the host model has no place for it in class diagrams");
    } else if (name == "floatingtext") {
        report_.left("text in a diagram", id, node.attribute("text").value(), "the host model has no free texts");
    }
}

/// <assocwidget xmi.id="a" widgetaid="c" widgetbid="d" type="503"><linepath><startpoint startx="" starty=""/>
void DiagramReader::readLine(pugi::xml_node node, pugi::xml_node diagramNode, Diagram& diagram)
{
    const std::string_view type = node.attribute("type").value();
    if (type == anchor)
        return;
    Line line;
    line.elementId = joined_.lineId(xml::xmiAttribute(node, "id"));
    if (type == containment) {
        report_.left("containment line", line.elementId, diagram.name, "packages show what they hold");
        return;
    }
    const auto kind = model_.kinds.find(line.elementId);
    if (kind != model_.kinds.end() && (kind->second == "Attribute" || kind->second == "Property")) {
        report_.left("line for an attribute", line.elementId, diagram.name, "the attribute is taken as one");
        return;
    }
    line.appearance = appearance(node, diagramNode);
    const pugi::xml_node path = node.child("linepath");
    if (const pugi::xml_node start = path.child("startpoint"))
        line.points.push_back({coordinate(start, "startx"), coordinate(start, "starty")});
    for (const pugi::xml_node point : path.children("point"))
        line.points.push_back({coordinate(point, "x"), coordinate(point, "y")});
    if (const pugi::xml_node end = path.child("endpoint"))
        line.points.push_back({coordinate(end, "endx"), coordinate(end, "endy")});
    line.hasEnds = line.points.size() > 1;
    joined_.turn(line, elementOf(node.attribute("widgetaid").value()));
    diagram.lines.push_back(std::move(line));
}

/// Notes are in diagrams alone. Anchors tell what they hang at.
void DiagramReader::readNotes(pugi::xml_node node, std::string_view owner)
{
    std::unordered_map<std::string, std::string> hangsAt;
    for (const pugi::xml_node line : node.child("associations").children("assocwidget")) {
        if (std::string_view(line.attribute("type").value()) != anchor)
            continue;
        const std::string a = elementOf(line.attribute("widgetaid").value());
        const std::string b = elementOf(line.attribute("widgetbid").value());
        hangsAt.emplace(a, b);
        hangsAt.emplace(b, a);
    }
    for (const pugi::xml_node note : node.child("widgets").children("notewidget")) {
        const std::string_view text = trimmed(note.attribute("text").value());
        const auto found = hangsAt.find(std::string(xml::xmiAttribute(note, "id")));
        if (!text.empty())
            model_.notes.push_back(
                {found == hangsAt.end() ? std::string() : found->second, std::string(text), std::string(owner)});
    }
}

void DiagramReader::readDiagram(pugi::xml_node diagramNode, std::string_view owner)
{
    const std::string_view type = diagramNode.attribute("type").value();
    Diagram diagram;
    diagram.id = xml::xmiAttribute(diagramNode, "id");
    diagram.name = diagramNode.attribute("name").value();
    diagram.documentation = diagramNode.attribute("documentation").value();
    if (type != classDiagram) {
        const auto* const row = std::find_if(otherDiagrams.begin(), otherDiagrams.end(),
                                             [type](const DiagramType& each) { return each.number == type; });
        report_.left(row == otherDiagrams.end() ? "diagram" : row->name, diagram.id, diagram.name,
                     "only class diagrams have a place");
        return;
    }
    elements_.clear();
    for (const pugi::xml_node widget : diagramNode.child("widgets").children())
        readWidget(widget, diagramNode, diagram);
    for (const pugi::xml_node line : diagramNode.child("associations").children("assocwidget"))
        readLine(line, diagramNode, diagram);
    readNotes(diagramNode, owner);
    addDiagram(model_.design.root, owner, std::move(diagram));
}

/// The tool keeps all types of a programming language as data types. Those with nothing in them that no diagram shows
/// are names, no classes.
void takeNamesAsPrimitives(Package& root)
{
    std::unordered_set<std::string> drawn;
    forEachPackage(root, [&drawn](const Package& package) {
        for (const Diagram& diagram : package.diagrams) {
            for (const Box& box : diagram.boxes)
                drawn.insert(box.elementId);
        }
    });
    forEachPackage(root, [&drawn](Package& package) {
        for (Classifier& classifier : package.classifiers) {
            if (classifier.kind == ClassifierKind::DataType && classifier.attributes.empty() &&
                classifier.operations.empty() && !drawn.contains(classifier.id))
                classifier.kind = ClassifierKind::PrimitiveType;
        }
    });
}

template <class Item>
void moveAll(std::vector<Item>& from, std::vector<Item>& to)
{
    std::move(from.begin(), from.end(), std::back_inserter(to));
}

/// The tool keeps a folder of that name of its own, and hangs when it reads a Rose file with a package called so: what
/// is in it stands beside it.
void dissolveTypeFolders(Package& root)
{
    forEachPackage(root, [](Package& package) {
        std::vector<Package> kept;
        for (Package& child : std::exchange(package.packages, {})) {
            if (child.name != "Datatypes" || !child.packages.empty() || !child.diagrams.empty()) {
                kept.push_back(std::move(child));
                continue;
            }
            moveAll(child.classifiers, package.classifiers);
            moveAll(child.associations, package.associations);
            moveAll(child.relationships, package.relationships);
            moveAll(child.looseNotes, package.looseNotes);
        }
        package.packages = std::move(kept);
    });
}

bool recognizes(const Source& source)
{
    const std::string head = xml::head(source.text);
    return uml1::hasModel(head) || (uml2::hasModel(head) && head.find("umbrello") != std::string::npos);
}

Design read(const Source& source, Report& report)
{
    const xml::Document document(source.text);
    uml2::Outside outside(source.path);
    const bool isUml1 = std::string_view(document.root().name()) == "XMI";
    uml2::Model model = isUml1 ? uml1::read(document, report) : uml2::read(document, outside, report);
    DiagramReader(model, report).readBelow(document.root(), model.design.root.id);
    takeNamesAsPrimitives(model.design.root);
    dissolveTypeFolders(model.design.root);
    return uml2::finish(std::move(model), report);
}

} // namespace

Format umbrelloFormat()
{
    return {"umbrello", "Umbrello, XMI 1.2 and 2.1 (.xmi), and other UML 1.x in XMI 1.2",
            "a UML:Model or uml:Model with classes in it", recognizes, read};
}

} // namespace design
