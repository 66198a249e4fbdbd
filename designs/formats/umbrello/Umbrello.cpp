#include "designs/formats/Formats.h"

#include "designs/formats/shared/Drawing.h"
#include "designs/formats/shared/Kinds.h"
#include "designs/formats/umbrello/Uml1.h"
#include "designs/formats/uml2/Uml2.h"
#include "designs/model/Texts.h"
#include "designs/model/Walk.h"
#include "text/Words.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace design {

namespace {

struct DiagramType {
    std::string_view type;
    std::string_view name;
};

constexpr std::string_view classDiagram = "1";
constexpr std::string_view useCaseDiagram = "2";
constexpr std::array otherDiagrams = {
    DiagramType{"3", "sequence diagram"},  DiagramType{"4", "collaboration diagram"},
    DiagramType{"5", "state diagram"},     DiagramType{"6", "activity diagram"},
    DiagramType{"7", "component diagram"}, DiagramType{"8", "deployment diagram"},
    DiagramType{"10", "object diagram"},   DiagramType{"9", "entity relationship diagram"},
};

constexpr std::array<std::string_view, 7> boxWidgets = {
    "classwidget", "interfacewidget", "enumwidget", "datatypewidget", "packagewidget", "actorwidget", "usecasewidget"};

// Lines that are no relation of the model: what lies in a package, and what a note hangs at.
constexpr std::string_view containment = "509";
constexpr std::string_view anchor = "513";

double coordinate(pugi::xml_node node, const char* name)
{
    return xml::number(node.attribute(name).value(), 0);
}

// "none" stands for what the diagram has.
std::optional<std::uint32_t> colour(pugi::xml_node widget, pugi::xml_node diagramNode, const char* name)
{
    const std::string_view own = widget.attribute(name).value();
    return parseColour(own == "none" ? std::string_view(diagramNode.attribute(name).value()) : own);
}

// fillcolor="#ffff00" linecolor="none" font="Sans Serif,9,-1,0,50,0,0,0,0,0"
Appearance appearance(pugi::xml_node widget, pugi::xml_node diagramNode)
{
    Appearance result;
    if (std::string_view(widget.attribute("usefillcolor").value()) != "0")
        result.fillColor = colour(widget, diagramNode, "fillcolor");
    result.lineColor = colour(widget, diagramNode, "linecolor");
    result.fontColor = colour(widget, diagramNode, "textcolor");
    const std::string_view font = widget.attribute("font").value();
    result.fontName = font.substr(0, font.find(','));
    result.fontSize = std::max(xml::number(xml::between(font, ",", ','), 0), 0.0);
    return result;
}

// showattributes="0" showoperations="1" showpubliconly="0"
HiddenFeatures hiddenIn(pugi::xml_node widget)
{
    const auto is = [widget](const char* name, std::string_view value) {
        return widget.attribute(name).value() == value;
    };
    HiddenFeatures hidden = hiding(is("showattributes", "0"), is("showoperations", "0"));
    for (std::size_t i = 0; is("showpubliconly", "1") && i < hidden.attributes.size(); ++i)
        if (i != static_cast<std::size_t>(Visibility::Public))
            hidden.attributes[i] = hidden.operations[i] = true;
    return hidden;
}

class DiagramReader {
public:
    DiagramReader(Package& root, Report& theReport) : report(theReport), drawing(root) {}

    // All diagrams below a node; `owner` is the package that they belong to.
    void readBelow(pugi::xml_node node, std::string_view owner)
    {
        for (const pugi::xml_node child : node.children()) {
            const std::string_view id = xml::xmiAttribute(child, "id");
            if (std::string_view(child.name()) == "diagram")
                readDiagram(child, owner);
            else
                readBelow(child, id.empty() ? owner : id);
        }
    }

private:
    void readDiagram(pugi::xml_node node, std::string_view owner)
    {
        const std::string_view type = node.attribute("type").value();
        Diagram diagram;
        diagram.id = xml::xmiAttribute(node, "id");
        diagram.name = node.attribute("name").value();
        diagram.documentation = node.attribute("documentation").value();
        if (type == useCaseDiagram) {
            diagram.kind = DiagramKind::UseCase;
        } else if (type != classDiagram) {
            const DiagramType* const row = rowOf(otherDiagrams, type);
            report.left(row ? row->name : "diagram of another kind", diagram.id, diagram.name, classDiagramsOnly);
            return;
        }
        elements.clear();
        for (const pugi::xml_node widget : node.child("widgets").children())
            readWidget(widget, node, diagram);
        for (const pugi::xml_node line : node.child("associations").children("assocwidget"))
            readLine(line, node, diagram);
        readNotes(node, diagram);
        drawing.add(owner, std::move(diagram));
    }

    void readWidget(pugi::xml_node widget, pugi::xml_node diagramNode, Diagram& diagram)
    {
        const std::string_view name = widget.name();
        const std::string_view id = xml::xmiAttribute(widget, "id");
        if (const pugi::xml_attribute local = widget.attribute("localid"))
            elements.emplace(local.value(), id);
        if (isOneOf(boxWidgets, name)) {
            const Rectangle bounds = {coordinate(widget, "x"), coordinate(widget, "y"),
                                      std::max(coordinate(widget, "width"), 0.0),
                                      std::max(coordinate(widget, "height"), 0.0)};
            diagram.boxes.push_back({std::string(id), bounds, appearance(widget, diagramNode), hiddenIn(widget)});
        } else if (name != "notewidget" && name.ends_with("widget")) {
            report.left("drawn " + std::string(name.substr(0, name.size() - 6)), id, diagram.name, nothingOfThisKind);
        } else if (name == "floatingtext") {
            report.left("text in a diagram", id, widget.attribute("text").value(), "the host model has no free texts");
        }
    }

    // <assocwidget xmi.id="a" widgetaid="c" widgetbid="d" type="503"><linepath><startpoint startx="" starty=""/>
    void readLine(pugi::xml_node widget, pugi::xml_node diagramNode, Diagram& diagram)
    {
        const std::string_view type = widget.attribute("type").value();
        if (type == anchor)
            return;
        Line line;
        line.elementId = drawing.lineId(xml::xmiAttribute(widget, "id"));
        if (type == containment) {
            report.left("containment line", line.elementId, diagram.name, "packages show what they hold");
            return;
        }
        line.appearance = appearance(widget, diagramNode);
        const pugi::xml_node path = widget.child("linepath");
        if (const pugi::xml_node start = path.child("startpoint"))
            line.points.push_back({coordinate(start, "startx"), coordinate(start, "starty")});
        for (const pugi::xml_node point : path.children("point"))
            line.points.push_back({coordinate(point, "x"), coordinate(point, "y")});
        if (const pugi::xml_node end = path.child("endpoint"))
            line.points.push_back({coordinate(end, "endx"), coordinate(end, "endy")});
        line.hasEnds = line.points.size() > 1;
        drawing.turn(line, elementOf(widget.attribute("widgetaid").value()));
        diagram.lines.push_back(std::move(line));
    }

    // Notes are in diagrams alone. Anchors tell what they hang at.
    void readNotes(pugi::xml_node node, Diagram& diagram)
    {
        std::unordered_map<std::string_view, std::vector<std::string>> anchored; // both ways
        for (const pugi::xml_node line : node.child("associations").children("assocwidget")) {
            if (std::string_view(line.attribute("type").value()) != anchor)
                continue;
            const std::string_view a = elementOf(line.attribute("widgetaid").value());
            const std::string_view b = elementOf(line.attribute("widgetbid").value());
            anchored[a].emplace_back(b);
            anchored[b].emplace_back(a);
        }
        for (const pugi::xml_node note : node.child("widgets").children("notewidget")) {
            Remark remark;
            remark.id = xml::xmiAttribute(note, "id");
            remark.text = text::trimmed(note.attribute("text").value());
            remark.elementIds = std::move(anchored[remark.id]);
            if (!remark.text.empty())
                diagram.remarks.push_back(std::move(remark));
        }
    }

    // What a widget shows; newer files name it instead of the widget.
    [[nodiscard]] std::string_view elementOf(std::string_view widget) const
    {
        const auto found = elements.find(widget);
        return found == elements.end() ? widget : found->second;
    }

    Report& report;
    Drawing drawing;
    std::unordered_map<std::string_view, std::string_view> elements; // by the widget's own identifier
};

// The tool keeps all types of a programming language as data types. Those with nothing in them that no diagram shows
// are names, no classes.
void takeNamesAsPrimitives(Package& root)
{
    std::unordered_set<std::string_view> drawn;
    forEachPackage(root, [&drawn](const Package& package) {
        for (const Diagram& diagram : package.diagrams)
            for (const Box& box : diagram.boxes)
                drawn.insert(box.elementId);
    });
    forEachPackage(root, [&drawn](Package& package) {
        for (Classifier& classifier : package.classifiers)
            if (classifier.kind == ClassifierKind::DataType && classifier.attributes.empty() &&
                classifier.operations.empty() && !drawn.contains(classifier.id))
                classifier.kind = ClassifierKind::PrimitiveType;
    });
}

template <class Item>
void moveAll(std::vector<Item>& from, std::vector<Item>& to)
{
    std::move(from.begin(), from.end(), std::back_inserter(to));
}

// The tool keeps a folder of that name of its own, and hangs when it reads a Rose file with a package called so: what
// is in it stands beside it.
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
            moveAll(child.remarks, package.remarks);
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
    Design design = isUml1 ? uml1::read(document, report) : uml2::read(document, outside, report);
    DiagramReader(design.root, report).readBelow(document.root(), design.root.id);
    takeNamesAsPrimitives(design.root);
    dissolveTypeFolders(design.root);
    return design;
}

} // namespace

Format umbrelloFormat()
{
    return {"umbrello", "Umbrello, XMI 1.2 and 2.1 (.xmi), and other UML 1.x in XMI 1.2",
            {".xmi"},   "a UML:Model or uml:Model with classes in it",
            recognizes, read};
}

} // namespace design
