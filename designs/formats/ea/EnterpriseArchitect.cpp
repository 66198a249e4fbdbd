#include "designs/formats/ea/EnterpriseArchitect.h"

#include "designs/formats/shared/Drawing.h"
#include "designs/formats/uml2/Uml2.h"
#include "designs/formats/uml2/Umldi.h"
#include "designs/model/Texts.h"

#include <algorithm>
#include <array>
#include <map>
#include <unordered_map>
#include <utility>

namespace design {

namespace {

/// What the Extension says about one element.
struct Note {
    std::string documentation;
    std::string stereotype;
    std::string typeName; ///< of an attribute or a parameter
    Appearance appearance;
};

using Notes = std::unordered_map<std::string, Note>;
using Connectors = std::unordered_map<std::string, pugi::xml_node>;

/// "BCol=16770764;" in a style; the tool's default, -1, is none.
std::optional<std::uint32_t> colour(std::string_view style, std::string_view key)
{
    const double value = xml::number(xml::between(style, key, ';'), -1);
    return colourOfBgr(static_cast<std::int64_t>(value));
}

std::string_view valueOf(pugi::xml_node node, const char* child, const char* attribute)
{
    return node.child(child).attribute(attribute).value();
}

/// <attribute xmi:idref="EAID_1"><documentation value="..."/><stereotype stereotype="..."/><properties type="int"/>
void readNote(pugi::xml_node node, Notes& notes)
{
    Note& note = notes[std::string(xml::xmiAttribute(node, "idref"))];
    note.documentation = valueOf(node, "properties", "documentation");
    if (note.documentation.empty())
        note.documentation = valueOf(node, "documentation", "value");
    note.stereotype = valueOf(node, "properties", "stereotype");
    if (note.stereotype.empty())
        note.stereotype = valueOf(node, "stereotype", "stereotype");
    note.typeName = valueOf(node, "properties", "type");
    const std::string_view style = valueOf(node, "style", "appearance");
    note.appearance.fillColor = colour(style, "BackColor=");
    note.appearance.lineColor = colour(style, "BorderColor=");
    note.appearance.fontColor = colour(style, "FontColor=");
}

/// Elements, their features and the parameters of those.
void readNotes(pugi::xml_node extension, uml2::Model& model, Names& names, Notes& notes)
{
    for (const pugi::xml_node element : extension.child("elements").children("element")) {
        const std::string id(xml::xmiAttribute(element, "idref"));
        model.kinds.emplace(id, xml::typeName(element));
        names.emplace(id, element.attribute("name").value());
        readNote(element, notes);
        for (const pugi::xml_node attribute : element.child("attributes").children("attribute"))
            readNote(attribute, notes);
        for (const pugi::xml_node operation : element.child("operations").children("operation")) {
            readNote(operation, notes);
            for (const pugi::xml_node parameter : operation.child("parameters").children("parameter"))
                readNote(parameter, notes);
        }
    }
    for (const pugi::xml_node stub : extension.children("EAStub"))
        names.emplace(xml::xmiAttribute(stub, "id"), stub.attribute("name").value());
}

Connectors readConnectors(pugi::xml_node extension, Names& names, Notes& notes)
{
    Connectors connectors;
    for (const pugi::xml_node connector : extension.child("connectors").children("connector")) {
        connectors.emplace(xml::xmiAttribute(connector, "idref"), connector);
        readNote(connector, notes);
        for (const char* const end : {"source", "target"}) {
            const pugi::xml_node node = connector.child(end);
            const std::string_view name = valueOf(node, "model", "name");
            if (!name.empty())
                names.emplace(xml::xmiAttribute(node, "idref"), name);
        }
    }
    return connectors;
}

void giveNotes(uml2::Model& model, const Notes& notes)
{
    forEachElement(model.design.root, [&notes](Element& element) {
        const auto found = notes.find(element.id);
        if (found == notes.end() || element.id.empty())
            return;
        if (element.documentation.empty())
            element.documentation = found->second.documentation;
        for (const std::string_view word : {std::string_view(found->second.stereotype)})
            addWord(element.stereotype, word);
    });
    const auto giveType = [&notes](const Element& element, Reference& type) {
        const auto found = notes.find(element.id);
        if (found != notes.end() && !element.id.empty() && type.name.empty())
            type.name = found->second.typeName;
    };
    forEachPackage(model.design.root, [&giveType](Package& package) {
        for (Classifier& classifier : package.classifiers) {
            for (Attribute& attribute : classifier.attributes)
                giveType(attribute, attribute.type);
            for (Operation& operation : classifier.operations) {
                for (Parameter& parameter : operation.parameters)
                    giveType(parameter, parameter.type);
            }
        }
    });
}

/// "EAJava_int", "EAnone_Date": types that have no element, named after a language.
void nameTypesByIdentifier(Design& design)
{
    forEachReference(design.root, [](Reference& reference, bool isType) {
        const std::size_t underscore = reference.id.find('_');
        if (isType && reference.name.empty() && underscore != std::string::npos && reference.id.starts_with("EA") &&
            !reference.id.starts_with("EAID_") && !reference.id.starts_with("EAPK_"))
            reference.name = reference.id.substr(underscore + 1);
    });
}

/// <source xmi:idref="EAID_1"><role name="r"/><type multiplicity="*" aggregation="shared"/><documentation value=""/>
void completeEnd(AssociationEnd& end, pugi::xml_node node)
{
    if (end.documentation.empty())
        end.documentation = valueOf(node, "documentation", "value");
    addWord(end.stereotype, valueOf(node, "role", "stereotype"));
    if (end.participant.id == xml::xmiAttribute(node, "idref"))
        return;
    if (end.participant.isEmpty()) { // the property lies outside of the exported packages
        end.participant.id = xml::xmiAttribute(node, "idref");
        end.name = valueOf(node, "role", "name");
        end.multiplicity = parseMultiplicity(valueOf(node, "type", "multiplicity"));
        end.visibility = uml2::visibility(valueOf(node, "role", "visibility"));
        end.isNavigable = xml::flag(node.child("modifiers"), "isNavigable");
    }
}

/// Whether the end is the connector's source, told by its identifier or by the class that it is at.
bool isSource(const AssociationEnd& end, pugi::xml_node connector)
{
    if (end.id.starts_with("EAID_src") || end.id.starts_with("EAID_dst"))
        return end.id.starts_with("EAID_src");
    return end.participant.id == xml::xmiAttribute(connector.child("source"), "idref");
}

/// Puts the connector's source first, as lines are drawn from there, and adds what only the Extension knows.
void completeAssociation(Association& association, pugi::xml_node connector)
{
    if (association.ends.size() > 2)
        return;
    while (association.ends.size() < 2) // an end whose property is not in the file
        association.ends.emplace_back();
    if (!isSource(association.ends[0], connector) && isSource(association.ends[1], connector))
        std::swap(association.ends[0], association.ends[1]);
    std::size_t index = 0;
    for (const char* const name : {"source", "target"}) {
        AssociationEnd& end = association.ends[index++];
        completeEnd(end, connector.child(name));
        if (end.aggregation == Aggregation::None)
            end.aggregation = uml2::aggregation(valueOf(connector.child(name), "type", "aggregation"));
    }
}

/// Associations that have a class are connectors under another identifier.
Names associationClasses(const Connectors& connectors)
{
    Names classes;
    for (const auto& [id, connector] : connectors) {
        const std::string_view classId = valueOf(connector, "extendedProperties", "associationclass");
        if (!classId.empty())
            classes.emplace(id, classId);
    }
    return classes;
}

void completeAssociations(Package& root, const Connectors& connectors, const Names& classes)
{
    Names connectorOf;
    for (const auto& [connector, classId] : classes)
        connectorOf.emplace(classId, connector);
    forEachPackage(root, [&](Package& package) {
        for (Association& association : package.associations) {
            const auto other = connectorOf.find(association.associationClassId);
            const auto found = connectors.find(other == connectorOf.end() ? association.id : other->second);
            if (found != connectors.end())
                completeAssociation(association, found->second);
        }
    });
}

/// Reads the diagrams of the Extension.
class DiagramReader {
public:
    DiagramReader(const JoinedElements& joined, const Names& classes, const Notes& notes)
        : joined_(joined), classes_(classes), notes_(notes)
    {
    }

    Diagram read(pugi::xml_node node);

private:
    void readBox(pugi::xml_node node, Diagram& diagram);
    void readLine(pugi::xml_node node, Diagram& diagram);

    const JoinedElements& joined_;
    const Names& classes_;
    const Notes& notes_;
    std::map<std::string, Box, std::less<>> boxes_; ///< by the number that lines know them by
};

/// geometry="Left=444;Top=304;Right=652;Bottom=440;" subject="EAID_1" style="DUID=6EAFDD88;BCol=11796479;LCol=-1;"
void DiagramReader::readBox(pugi::xml_node node, Diagram& diagram)
{
    const std::string_view geometry = node.attribute("geometry").value();
    const std::string_view style = node.attribute("style").value();
    Box box;
    box.elementId = node.attribute("subject").value();
    const double left = xml::number(xml::between(geometry, "Left=", ';'), 0);
    const double top = xml::number(xml::between(geometry, "Top=", ';'), 0);
    box.bounds = Rectangle{left, top, xml::number(xml::between(geometry, "Right=", ';'), left) - left,
                           xml::number(xml::between(geometry, "Bottom=", ';'), top) - top};
    const auto usual = notes_.find(box.elementId);
    const Appearance fallback = usual == notes_.end() ? Appearance() : usual->second.appearance;
    const auto choose = [&style](std::string_view key, const std::optional<std::uint32_t>& otherwise) {
        const auto own = colour(style, key);
        return own ? own : otherwise;
    };
    box.appearance.fillColor = choose("BCol=", fallback.fillColor);
    box.appearance.lineColor = choose("LCol=", fallback.lineColor);
    box.appearance.fontColor = choose("BFol=", fallback.fontColor);
    box.appearance.fontName = xml::between(style, ";font=", ';');
    box.appearance.fontSize = xml::number(xml::between(style, "fontsz=", ';'), 0) / 10;
    boxes_.emplace(xml::between(style, "DUID=", ';'), box);
    diagram.boxes.push_back(std::move(box));
}

/// Where a line meets a box: at an offset from its centre, y upward, or straight beside the next bend where that lies
/// beside the box, since such lines are drawn at right angles.
Point anchor(const Rectangle& box, Point offset, const Point* next)
{
    const Point centre{box.left + box.width / 2, box.top + box.height / 2};
    Point place{centre.x + offset.x, centre.y - offset.y};
    if (next == nullptr)
        return place;
    if (next->x >= box.left && next->x <= box.left + box.width)
        return {next->x, centre.y};
    if (next->y >= box.top && next->y <= box.top + box.height)
        return {centre.x, next->y};
    return place;
}

/// A line without bends is upright or level if the boxes have room for that, from the place where it leaves the first.
void straighten(Point& first, Point& last, const Rectangle& from, const Rectangle& to)
{
    const double left = std::max(from.left, to.left);
    const double right = std::min(from.left + from.width, to.left + to.width);
    const double top = std::max(from.top, to.top);
    const double bottom = std::min(from.top + from.height, to.top + to.height);
    if (left <= right)
        first.x = last.x = std::clamp(first.x, left, right);
    else if (top <= bottom)
        first.y = last.y = std::clamp(first.y, top, bottom);
}

std::vector<Point> bends(std::string_view path)
{
    std::vector<Point> points;
    while (!path.empty()) {
        const std::string_view part = path.substr(0, path.find('$'));
        path.remove_prefix(std::min(part.size() + 1, path.size()));
        const std::size_t colon = part.find(':');
        if (colon != std::string_view::npos)
            points.push_back({xml::number(part.substr(0, colon), 0), -xml::number(part.substr(colon + 1), 0)});
    }
    return points;
}

/// geometry="SX=12;SY=0;EX=0;EY=-22;EDGE=1;$LLB=;Path=429:-459$;" style="EOID=ED8C0823;SOID=D1703BEE;Color=-1;TREE=OR;"
void DiagramReader::readLine(pugi::xml_node node, Diagram& diagram)
{
    const std::string_view geometry = node.attribute("geometry").value();
    const std::string_view style = node.attribute("style").value();
    const auto from = boxes_.find(xml::between(style, "SOID=", ';'));
    const auto to = boxes_.find(xml::between(style, "EOID=", ';'));
    if (xml::between(style, "Hidden=", ';') == "1")
        return;
    Line line;
    const std::string subject(node.attribute("subject").value());
    const auto classId = classes_.find(subject);
    line.elementId = joined_.lineId(classId == classes_.end() ? subject : classId->second);
    line.appearance.lineColor = colour(style, "Color=");
    line.points = bends(xml::between(geometry, "Path=", ';'));
    if (from != boxes_.end() && to != boxes_.end()) {
        const auto offset = [geometry](std::string_view x, std::string_view y) {
            return Point{xml::number(xml::between(geometry, x, ';'), 0),
                         xml::number(xml::between(geometry, y, ';'), 0)};
        };
        const bool hasBends = !line.points.empty();
        Point first = anchor(*from->second.bounds, offset("SX=", "SY="), hasBends ? &line.points.front() : nullptr);
        Point last = anchor(*to->second.bounds, offset("EX=", "EY="), hasBends ? &line.points.back() : nullptr);
        if (!hasBends && style.find("TREE=OR") != std::string_view::npos)
            straighten(first, last, *from->second.bounds, *to->second.bounds);
        line.points.insert(line.points.begin(), first);
        line.points.push_back(last);
        line.hasEnds = true;
        joined_.turn(line, from->second.elementId);
    }
    diagram.lines.push_back(std::move(line));
}

Diagram DiagramReader::read(pugi::xml_node node)
{
    Diagram diagram;
    diagram.id = xml::xmiAttribute(node, "id");
    diagram.name = valueOf(node, "properties", "name");
    diagram.documentation = valueOf(node, "properties", "documentation");
    const pugi::xml_node elements = node.child("elements");
    const auto isBox = [](pugi::xml_node element) {
        return std::string_view(element.attribute("geometry").value()).find("Left=") == 0;
    };
    for (const pugi::xml_node element : elements.children("element")) {
        if (isBox(element))
            readBox(element, diagram);
    }
    for (const pugi::xml_node element : elements.children("element")) {
        const std::string_view geometry = element.attribute("geometry").value();
        if (!isBox(element) && geometry.find("Path=") != std::string_view::npos)
            readLine(element, diagram);
    }
    return diagram;
}

/// Files of XMI 2.5 have the lines a second time, as they are seen.
void takeWaypoints(Diagram& diagram, const std::vector<umldi::OwnedDiagram>& seen)
{
    const auto same = std::find_if(seen.begin(), seen.end(),
                                   [&diagram](const auto& owned) { return owned.diagram.id == diagram.id; });
    if (same == seen.end())
        return;
    for (Line& line : diagram.lines) {
        const auto& lines = same->diagram.lines;
        const auto other = std::find_if(lines.begin(), lines.end(), [&line](const Line& each) {
            return each.elementId == line.elementId && each.points.size() > 1;
        });
        if (other != lines.end())
            line.points = other->points;
    }
}

/// Object and package diagrams show classes and their relations, too.
bool isClassDiagram(std::string_view type)
{
    return type == "Logical" || type == "Class" || type == "Object" || type == "Package";
}

void readDiagrams(const xml::Document& document, pugi::xml_node extension, uml2::Model& model, const Names& classes,
                  const Notes& notes, Report& report)
{
    const JoinedElements joined(model.design.root);
    Report ignored; // the same diagrams stand in the Extension
    const std::vector<umldi::OwnedDiagram> seen = umldi::read(document.root(), joined, ignored);
    for (const pugi::xml_node node : extension.child("diagrams").children("diagram")) {
        const std::string type(valueOf(node, "properties", "type"));
        if (!isClassDiagram(type)) {
            report.left(uml2::plainWords(type) + " diagram", xml::xmiAttribute(node, "id"),
                        valueOf(node, "properties", "name"), "only class diagrams have a place");
            continue;
        }
        Diagram diagram = DiagramReader(joined, classes, notes).read(node);
        takeWaypoints(diagram, seen);
        addDiagram(model.design.root, valueOf(node, "model", "package"), std::move(diagram));
    }
}

void tellProxies(Package& root, const uml2::Model& model, Report& report)
{
    forEachPackage(root, [&](const Package& package) {
        for (const Classifier& classifier : package.classifiers) {
            if (classifier.name == "ProxyConnector" && model.kinds.contains(classifier.id))
                report.made("proxy connector", classifier.id, classifier.name,
                            "a line that other lines end at is a class in the file, and is taken as one");
        }
    });
}

pugi::xml_node extensionOf(const xml::Document& document)
{
    for (const pugi::xml_node child : document.root().children()) {
        if (xml::localName(child.name()) == "Extension" &&
            std::string_view(child.attribute("extender").value()).starts_with("Enterprise Architect"))
            return child;
    }
    return {};
}

bool recognizes(const Source& source)
{
    const std::string head = xml::head(source.text);
    return uml2::hasModel(head) && head.find("Enterprise Architect") != std::string::npos;
}

Design read(const Source& source, Report& report)
{
    const xml::Document document(source.text);
    uml2::Outside outside(source.path);
    uml2::Model model = uml2::read(document, outside, report);
    const pugi::xml_node extension = extensionOf(document);
    Names names;
    Notes notes;
    readNotes(extension, model, names, notes);
    const Connectors connectors = readConnectors(extension, names, notes);
    umldi::readNames(document.root(), names);
    const Names classes = associationClasses(connectors);
    giveNotes(model, notes);
    completeAssociations(model.design.root, connectors, classes);
    nameReferences(model.design, names);
    nameTypesByIdentifier(model.design);
    model.outsideNames = std::move(names);
    readDiagrams(document, extension, model, classes, notes, report);
    tellProxies(model.design.root, model, report);
    return uml2::finish(std::move(model), report);
}

} // namespace

Format enterpriseArchitectFormat()
{
    return {"ea", "Enterprise Architect, XMI 2.1 and 2.5 (.xml, .xmi)",
            "a uml:Model with packaged elements, and an Extension of Enterprise Architect", recognizes, read};
}

} // namespace design
