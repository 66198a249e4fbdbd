#include "designs/formats/uml2/Umldi.h"

#include "designs/formats/shared/Kinds.h"

#include <unordered_map>
#include <utility>

namespace design::umldi {

namespace {

std::string_view modelElement(pugi::xml_node node)
{
    if (const pugi::xml_attribute attribute = node.attribute("modelElement")) {
        const std::vector<std::string_view> ids = xml::words(attribute.value());
        return ids.empty() ? std::string_view() : ids.front();
    }
    return xml::xmiAttribute(node.child("modelElement"), "idref");
}

Point point(pugi::xml_node node)
{
    return {xml::number(node.attribute("x").value(), 0), xml::number(node.attribute("y").value(), 0)};
}

std::optional<Rectangle> boundsOf(pugi::xml_node shape)
{
    constexpr double missing = -1e9;
    const pugi::xml_node bounds = shape.child("bounds");
    if (xml::number(bounds.attribute("x").value(), missing) <= missing)
        return std::nullopt;
    return Rectangle{point(bounds).x, point(bounds).y, xml::number(bounds.attribute("width").value(), 0),
                     xml::number(bounds.attribute("height").value(), 0)};
}

class DiagramReader {
public:
    DiagramReader(pugi::xml_node theNode, const Drawing& theDrawing) : node(theNode), drawing(theDrawing)
    {
        for (const pugi::xml_node shape : node.children("ownedElement"))
            shapes.emplace(xml::xmiAttribute(shape, "id"), modelElement(shape));
        shapes.erase("");
    }

    Diagram read()
    {
        diagram.id = xml::xmiAttribute(node, "id");
        diagram.name = node.attribute("name").value();
        readParts(node);
        return std::move(diagram);
    }

private:
    void readParts(pugi::xml_node parent)
    {
        for (const pugi::xml_node part : parent.children("ownedElement")) {
            const std::string_view type = xml::typeName(part);
            const std::string_view element = modelElement(part);
            if (!element.empty() && type.ends_with("Shape"))
                diagram.boxes.push_back({std::string(element), boundsOf(part), {}});
            else if (!element.empty() && type.ends_with("Edge"))
                readEdge(part, element);
            if (type.ends_with("Shape"))
                readParts(part);
        }
    }

    void readEdge(pugi::xml_node edge, std::string_view element)
    {
        Line line;
        line.elementId = drawing.lineId(element);
        for (const pugi::xml_node waypoint : edge.children("waypoint"))
            line.points.push_back(point(waypoint));
        line.hasEnds = line.points.size() > 1;
        // It begins at a shape of the diagram or, as some tools write it, at the element itself.
        const std::string_view source = edge.attribute("source").value();
        const auto shape = shapes.find(source);
        drawing.turn(line, shape == shapes.end() ? source : shape->second);
        diagram.lines.push_back(std::move(line));
    }

    pugi::xml_node node;
    const Drawing& drawing;
    Diagram diagram;
    std::unordered_map<std::string_view, std::string_view> shapes; // elements by the identifiers of their shapes
};

// "UMLClassDiagram", told by `xmi:type` or by the element's name; empty for what is no diagram.
std::string_view diagramType(pugi::xml_node node)
{
    const std::string_view name = node.name();
    const std::string_view type = xml::typeName(node);
    const std::string_view told = type.empty() ? xml::localName(name) : type;
    return name.starts_with("umldi:") && told.ends_with("Diagram") ? told : std::string_view();
}

// "state machine diagram" of a UMLStateMachineDiagram.
std::string kindOf(pugi::xml_node node)
{
    constexpr std::string_view prefix = "UML";
    std::string_view type = diagramType(node);
    if (type.starts_with(prefix))
        type.remove_prefix(prefix.size());
    return plainWords(type);
}

// Diagrams stand beside the model or in it.
std::vector<pugi::xml_node> diagramNodes(pugi::xml_node root)
{
    std::vector<pugi::xml_node> found;
    for (const pugi::xml_node child : root.children()) {
        if (!diagramType(child).empty())
            found.push_back(child);
        for (const pugi::xml_node inner : child.children())
            if (!diagramType(inner).empty())
                found.push_back(inner);
    }
    return found;
}

} // namespace

void readNames(pugi::xml_node root, TextsById& names)
{
    for (const pugi::xml_node diagram : diagramNodes(root))
        for (const pugi::xml_node shape : diagram.children("ownedElement"))
            for (const pugi::xml_node label : shape.children("ownedElement")) {
                const std::string_view text = label.attribute("text").value();
                if (xml::typeName(label) == "UMLNameLabel" && !text.empty())
                    names.emplace(modelElement(shape), text);
            }
}

std::vector<OwnedDiagram> read(pugi::xml_node root, const Drawing& drawing, Report& report)
{
    std::vector<OwnedDiagram> diagrams;
    for (const pugi::xml_node node : diagramNodes(root)) {
        if (diagramType(node).ends_with("ClassDiagram"))
            diagrams.push_back({DiagramReader(node, drawing).read(), std::string(modelElement(node))});
        else
            report.left(kindOf(node), xml::xmiAttribute(node, "id"), node.attribute("name").value(), classDiagramsOnly);
    }
    return diagrams;
}

} // namespace design::umldi
