#include "designs/formats/papyrus/Write.h"

#include "designs/formats/shared/Xml.h"
#include "designs/formats/uml2/write/Writer.h"
#include "designs/model/Walk.h"
#include "designs/model/Ways.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace design::papyrus {

namespace {

// How the tool calls the views of an element, and of what is in its compartments.
struct ShapeType {
    ClassifierKind kind;
    const char* shape; // "Class" of "Class_Shape"
    const char* attributes;
    const char* attributeLabel;
    const char* operations;
    const char* operationLabel;
};
constexpr std::array shapeTypes = {
    ShapeType{ClassifierKind::Class, "Class", "Class_AttributeCompartment", "Property_ClassAttributeLabel",
              "Class_OperationCompartment", "Operation_ClassOperationLabel"},
    ShapeType{ClassifierKind::Interface, "Interface", "Interface_AttributeCompartment",
              "Property_InterfaceAttributeLabel", "Interface_OperationCompartment",
              "Operation_InterfaceOperationLabel"},
    ShapeType{ClassifierKind::DataType, "DataType", "DataType_AttributeCompartment", "Property_DataTypeAttributeLabel",
              "DataType_OperationCompartment", "Operation_DataTypeOperationLabel"},
    ShapeType{ClassifierKind::PrimitiveType, "PrimitiveType", "PrimitiveType_AttributeCompartment",
              "Property_PrimitiveTypeAttributeLabel", "PrimitiveType_OperationCompartment",
              "Operation_PrimitiveTypeOperationLabel"},
    ShapeType{ClassifierKind::Enumeration, "Enumeration", "Enumeration_LiteralCompartment",
              "EnumerationLiteral_LiteralLabel", nullptr, nullptr},
    ShapeType{ClassifierKind::Actor, "Actor", nullptr, nullptr, nullptr, nullptr},
    ShapeType{ClassifierKind::UseCase, "UseCase", nullptr, nullptr, nullptr, nullptr},
};

const ShapeType& shapeTypeOf(const Classifier& classifier)
{
    const auto* const found = std::find_if(shapeTypes.begin(), shapeTypes.end(),
                                           [&](const ShapeType& each) { return each.kind == classifier.kind; });
    return found == shapeTypes.end() ? shapeTypes.front() : *found;
}

std::string numberText(double number)
{
    return std::to_string(std::lround(number));
}

// Blue in the high byte.
std::string colourText(std::uint32_t colour)
{
    constexpr std::uint32_t byte = 0xFF;
    return std::to_string((colour & byte) << 16U | (colour & byte << 8U) | colour >> 16U);
}

// As the file has it.
Rectangle rounded(const Rectangle& box)
{
    return {std::round(box.left), std::round(box.top), std::round(box.width), std::round(box.height)};
}

Point centreOf(const Rectangle& box)
{
    return {box.left + box.width / 2, box.top + box.height / 2};
}

class NotationWriter {
public:
    NotationWriter(const Writing& theWriting, const uml2::Writer& theModel, Report& theReport)
        : writing(theWriting), model(theModel), report(theReport), modelFile(theWriting.stem + ".uml#")
    {
    }

    void write(pugi::xml_node parent)
    {
        pugi::xml_node root = parent.append_child("xmi:XMI");
        uml2::set(root, "xmi:version", "2.0");
        uml2::set(root, "xmlns:xmi", "http://www.omg.org/XMI");
        uml2::set(root, "xmlns:notation", "http://www.eclipse.org/gmf/runtime/1.0.2/notation");
        uml2::set(root, "xmlns:uml", "http://www.eclipse.org/uml2/5.0.0/UML");
        forEachPackage(writing.design.root, [&](const Package& package) {
            for (const Diagram& diagram : package.diagrams)
                writeDiagram(diagram, package, root);
        });
    }

private:
    void writeDiagram(const Diagram& diagram, const Package& owner, pugi::xml_node root)
    {
        const bool isOfUseCases = diagram.kind == DiagramKind::UseCase;
        pugi::xml_node node = add(root, "notation:Diagram", uml2::xmlIdentifier(diagram.id));
        uml2::set(node, "type", isOfUseCases ? "UseCase" : "PapyrusUMLClassDiagram");
        uml2::set(node, "name", diagram.name);
        uml2::set(node, "measurementUnit", "Pixel");
        views.clear();
        for (const Box& box : diagram.boxes)
            writeBox(box, node);
        addElement(node, &owner == &writing.design.root ? "uml:Model" : "uml:Package",
                   model.identifierOfPackage(owner));
        for (const Line& line : diagram.lines)
            writeLine(line, node);
        for (const std::string& text : diagram.notes)
            report.left("note", diagram.id, text, "notes that hang at nothing are elements of packages here");
    }

    pugi::xml_node add(pugi::xml_node parent, const char* name, const std::string& id)
    {
        pugi::xml_node node = parent.append_child(name);
        uml2::set(node, "xmi:id", id);
        return node;
    }

    pugi::xml_node addView(pugi::xml_node parent, const char* name, const char* type, const std::string& kind)
    {
        const std::string id = parent.attribute("xmi:id").value() + std::string("-") + std::to_string(++lastView);
        pugi::xml_node node = parent.append_child(name);
        uml2::set(node, "xmi:type", type);
        uml2::set(node, "xmi:id", id);
        if (!kind.empty())
            uml2::set(node, "type", kind);
        return node;
    }

    void addElement(pugi::xml_node view, std::string_view type, const std::string& id) const
    {
        pugi::xml_node element = view.append_child("element");
        uml2::set(element, "xmi:type", type);
        uml2::set(element, "href", modelFile + id);
    }

    void writeBox(const Box& box, pugi::xml_node diagram)
    {
        const Classifier* const classifier = writing.catalogue.classifier(box.elementId);
        const Package* const package = writing.catalogue.package(box.elementId);
        if (!classifier && !package) {
            report.left("box", box.elementId, "", "the tool draws no symbols of associations");
            return;
        }
        const std::string name = classifier ? shapeTypeOf(*classifier).shape : "Package";
        pugi::xml_node node = addView(diagram, "children", "notation:Shape", name + "_Shape");
        writeAppearance(box.appearance, node);
        addView(node, "children", "notation:DecorationNode", name + "_NameLabel");
        if (classifier)
            writeCompartments(*classifier, box, node);
        else
            addView(node, "children", "notation:BasicCompartment", "Package_PackagedElementCompartment");
        addElement(node, classifier ? model.typeOf(*classifier) : std::string_view("uml:Package"),
                   classifier ? model.identifierOfClassifier(*classifier) : model.identifierOfPackage(*package));
        if (box.bounds)
            writeBounds(*box.bounds, node);
        views.emplace(box.elementId,
                      std::pair(node.attribute("xmi:id").value(), rounded(box.bounds.value_or(Rectangle()))));
    }

    void writeBounds(const Rectangle& bounds, pugi::xml_node node)
    {
        pugi::xml_node layout = addView(node, "layoutConstraint", "notation:Bounds", "");
        uml2::set(layout, "x", numberText(bounds.left));
        uml2::set(layout, "y", numberText(bounds.top));
        uml2::set(layout, "width", numberText(bounds.width));
        uml2::set(layout, "height", numberText(bounds.height));
    }

    static void writeAppearance(const Appearance& appearance, pugi::xml_node node)
    {
        if (!appearance.fontName.empty())
            uml2::set(node, "fontName", appearance.fontName);
        if (appearance.fontSize >= 1)
            uml2::set(node, "fontHeight", numberText(appearance.fontSize));
        for (const auto& [key, colour] :
             {std::pair{"fontColor", appearance.fontColor}, std::pair{"fillColor", appearance.fillColor},
              std::pair{"lineColor", appearance.lineColor}})
            if (colour)
                uml2::set(node, key, colourText(*colour));
    }

    // A feature is shown by a view of its own.
    template <class Features>
    void writeCompartment(const char* kind, const char* labelKind, std::string_view type, const Features& features,
                          bool isHidden, pugi::xml_node shape)
    {
        if (!kind)
            return;
        pugi::xml_node compartment = addView(shape, "children", "notation:BasicCompartment", kind);
        if (isHidden)
            uml2::set(compartment, "visible", "false");
        for (const Element& feature : features) {
            pugi::xml_node label = addView(compartment, "children", "notation:Shape", labelKind);
            addElement(label, type, model.identifierOfFeature(feature));
        }
    }

    void writeCompartments(const Classifier& classifier, const Box& box, pugi::xml_node shape)
    {
        const ShapeType& type = shapeTypeOf(classifier);
        const auto isAll = [](const auto& hidden) {
            return std::all_of(hidden.begin(), hidden.end(), [](bool each) { return each; });
        };
        const bool hidesAttributes = isAll(box.hidden.attributes);
        if (classifier.kind == ClassifierKind::Enumeration)
            writeCompartment(type.attributes, type.attributeLabel, "uml:EnumerationLiteral", classifier.literals,
                             hidesAttributes, shape);
        else
            writeCompartment(type.attributes, type.attributeLabel, "uml:Property", classifier.attributes,
                             hidesAttributes, shape);
        writeCompartment(type.operations, type.operationLabel, "uml:Operation", classifier.operations,
                         isAll(box.hidden.operations), shape);
    }

    void writeLine(const Line& line, pugi::xml_node diagram)
    {
        const uml2::WrittenRelation relation = model.relation(line.elementId);
        const auto from = views.find(relation.from);
        const auto to = views.find(relation.to);
        if (relation.id.empty() || from == views.end() || to == views.end()) {
            report.left("line", line.elementId, "",
                        "the diagram does not show what it joins, or it joins more than two");
            return;
        }
        const std::string kind = std::string(relation.type.substr(relation.type.find(':') + 1)) + "_Edge";
        pugi::xml_node node = addView(diagram, "edges", "notation:Connector", kind);
        uml2::set(node, "source", from->second.first);
        uml2::set(node, "target", to->second.first);
        writeAppearance(line.appearance, node);
        addElement(node, relation.type, relation.id);
        writeBends(line, centreOf(from->second.second), centreOf(to->second.second), node);
        for (const char* const anchor : {"sourceAnchor", "targetAnchor"})
            uml2::set(addView(node, anchor, "notation:IdentityAnchor", ""), "id", "(0.5,0.5)");
    }

    // Points are absolute where the second pair is no distance.
    void writeBends(const Line& line, Point first, Point last, pugi::xml_node edge)
    {
        std::vector<Point> points = bendsOf(line);
        if (points.empty())
            return;
        points.insert(points.begin(), first);
        points.push_back(last);
        std::string text;
        for (const Point& point : points)
            text.append(text.empty() ? "[" : "$[")
                .append(numberText(point.x))
                .append(", ")
                .append(numberText(point.y))
                .append(", -643984, -643984]");
        uml2::set(addView(edge, "bendpoints", "notation:RelativeBendpoints", ""), "points", text);
    }

    const Writing& writing;
    const uml2::Writer& model;
    Report& report;
    const std::string modelFile;
    std::size_t lastView = 0;
    std::unordered_map<std::string, std::pair<std::string, Rectangle>> views; // of the diagram, by element
};

} // namespace

void write(const Writing& writing, Files& files, Report& report)
{
    const std::string own = writing.ending == ".notation" || writing.ending == ".di" ? writing.ending : ".uml";
    const auto begin = [&](const std::string& ending) -> text::Sink& {
        return files.begin({ending == own ? "" : writing.stem + ending});
    };
    uml2::Writer model(writing, report);
    {
        pugi::xml_document document;
        model.write(document.root());
        xml::save(document, begin(".uml"));
    }
    pugi::xml_document diagrams;
    NotationWriter(writing, model, report).write(diagrams.root());
    xml::save(diagrams, begin(".notation"));
    begin(".di").write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<xmi:XMI xmi:version=\"2.0\" "
                       "xmlns:xmi=\"http://www.omg.org/XMI\"/>\n");
}

} // namespace design::papyrus
