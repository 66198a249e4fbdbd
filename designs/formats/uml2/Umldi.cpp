#include "designs/formats/uml2/Umldi.h"

#include <utility>

namespace design::umldi {

namespace {

constexpr double missing = -1e9;

std::string modelElement(pugi::xml_node node)
{
    if (const pugi::xml_attribute attribute = node.attribute("modelElement"))
        return std::string(xml::words(attribute.value()).empty() ? "" : xml::words(attribute.value()).front());
    return std::string(xml::xmiAttribute(node.child("modelElement"), "idref"));
}

Point point(pugi::xml_node node)
{
    return {xml::number(node.attribute("x").value(), 0), xml::number(node.attribute("y").value(), 0)};
}

/// What the end of an edge names: a shape of the diagram or, as some tools write it, the element itself.
std::string endElement(pugi::xml_node edge, pugi::xml_node diagram)
{
    std::string id(edge.attribute("source").value());
    for (const pugi::xml_node shape : diagram.children("ownedElement")) {
        if (!id.empty() && xml::xmiAttribute(shape, "id") == id)
            return modelElement(shape);
    }
    return id;
}

void readParts(pugi::xml_node parent, pugi::xml_node top, const JoinedElements& joined, Diagram& diagram)
{
    for (const pugi::xml_node node : parent.children("ownedElement")) {
        const std::string_view type = xml::typeName(node);
        const std::string element = modelElement(node);
        const pugi::xml_node bounds = node.child("bounds");
        if (!element.empty() && type.ends_with("Shape")) {
            Box box{element, {}, {}};
            if (bounds && xml::number(bounds.attribute("x").value(), missing) > missing)
                box.bounds =
                    Rectangle{point(bounds).x, point(bounds).y, xml::number(bounds.attribute("width").value(), 0),
                              xml::number(bounds.attribute("height").value(), 0)};
            diagram.boxes.push_back(std::move(box));
        } else if (!element.empty() && type.ends_with("Edge")) {
            Line line;
            line.elementId = joined.lineId(element);
            for (const pugi::xml_node waypoint : node.children("waypoint"))
                line.points.push_back(point(waypoint));
            line.hasEnds = line.points.size() > 1;
            joined.turn(line, endElement(node, top));
            diagram.lines.push_back(std::move(line));
        }
        if (type.ends_with("Shape"))
            readParts(node, top, joined, diagram);
    }
}

/// "UMLClassDiagram", told by `xmi:type` or by the element's name; empty for what is no diagram.
std::string_view diagramType(pugi::xml_node node)
{
    const std::string_view name = node.name();
    const std::string_view type = xml::typeName(node);
    const std::string_view told = type.empty() ? xml::localName(name) : type;
    return name.starts_with("umldi:") && told.ends_with("Diagram") ? told : std::string_view();
}

/// Diagrams stand beside the model or in it.
std::vector<pugi::xml_node> diagramNodes(pugi::xml_node root)
{
    std::vector<pugi::xml_node> found;
    for (const pugi::xml_node child : root.children()) {
        if (!diagramType(child).empty())
            found.push_back(child);
        for (const pugi::xml_node inner : child.children()) {
            if (!diagramType(inner).empty())
                found.push_back(inner);
        }
    }
    return found;
}

} // namespace

void readNames(pugi::xml_node root, Names& names)
{
    for (const pugi::xml_node diagram : diagramNodes(root)) {
        for (const pugi::xml_node shape : diagram.children("ownedElement")) {
            for (const pugi::xml_node label : shape.children("ownedElement")) {
                const std::string_view text = label.attribute("text").value();
                if (xml::typeName(label) == "UMLNameLabel" && !text.empty())
                    names.emplace(modelElement(shape), text);
            }
        }
    }
}

std::vector<OwnedDiagram> read(pugi::xml_node root, const JoinedElements& joined, Report& report)
{
    std::vector<OwnedDiagram> diagrams;
    for (const pugi::xml_node node : diagramNodes(root)) {
        OwnedDiagram owned;
        owned.diagram.id = xml::xmiAttribute(node, "id");
        owned.diagram.name = node.attribute("name").value();
        owned.packageId = modelElement(node);
        if (!diagramType(node).ends_with("ClassDiagram")) {
            report.left("diagram", owned.diagram.id, owned.diagram.name, "only class diagrams have a place");
            continue;
        }
        readParts(node, node, joined, owned.diagram);
        diagrams.push_back(std::move(owned));
    }
    return diagrams;
}

} // namespace design::umldi
