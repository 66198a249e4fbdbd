#include "designs/formats/uml2/Reading.h"

#include "designs/formats/uml2/Uml2.h"
#include "designs/model/Texts.h"
#include "text/Words.h"

#include <algorithm>
#include <array>
#include <utility>

namespace design::uml2 {

namespace {

// Why something is left. What is not listed is of no kind that the host model has.
struct LeftReason {
    std::string_view type;
    std::string_view reason;
};

constexpr std::string_view namesOnly = "the names of applied stereotypes are taken, not their definitions";
constexpr std::string_view noImports = "the host model has no imports";

constexpr std::array leftReasons = {
    LeftReason{"Profile", namesOnly},       LeftReason{"ProfileApplication", namesOnly},
    LeftReason{"Stereotype", namesOnly},    LeftReason{"Extension", namesOnly},
    LeftReason{"PackageImport", noImports}, LeftReason{"ElementImport", noImports},
    LeftReason{"PackageMerge", noImports},
};

// What an element is called in guillemets without a profile.
std::string_view keywordsOf(pugi::xml_node node)
{
    for (const pugi::xml_node annotation : node.children("eAnnotations"))
        if (std::string_view(annotation.attribute("source").value()) == "http://www.eclipse.org/uml2/2.0.0/UML")
            return annotation.child("details").attribute("key").value();
    return {};
}

// <eAnnotations source="tool:cg"><details key="Inline" value="True"/>
void readProperties(pugi::xml_node node, Element& element)
{
    for (const pugi::xml_node annotation : node.children("eAnnotations")) {
        const std::string_view source = annotation.attribute("source").value();
        if (source.starts_with(ofTool))
            for (const pugi::xml_node detail : annotation.children("details"))
                element.properties.push_back({std::string(source.substr(ofTool.size())),
                                              detail.attribute("key").value(), detail.attribute("value").value()});
    }
}

// Whether the operation that holds the constraint has it as a condition.
bool isCondition(pugi::xml_node constraint)
{
    constexpr std::array roles = {"precondition", "postcondition", "bodyCondition"};
    const std::string_view id = xml::xmiAttribute(constraint, "id");
    return std::any_of(roles.begin(), roles.end(), [&](const char* role) {
        const auto named = xml::words(constraint.parent().attribute(role).value());
        return std::find(named.begin(), named.end(), id) != named.end();
    });
}

} // namespace

Reading::Reading(pugi::xml_node root, Outside& theOutside, Report& theReport) : outside(theOutside), report(theReport)
{
    // All of the tree but the tools' own parts, whose identifiers may be those of the model.
    xml::forEachBelow(root, [this](pugi::xml_node node) {
        add(node);
        return xml::localName(node.name()) != "Extension";
    });
}

void Reading::add(pugi::xml_node node)
{
    const std::string_view id = xml::xmiAttribute(node, "id");
    if (id.empty())
        return;
    const std::string_view type = xml::typeName(node);
    if (!index.emplace(id, node).second)
        report.made("identifier", id, node.attribute("name").value(), "used twice in the file; the first one holds");
    kinds.emplace(id, plainWords(type.empty() ? xml::localName(node.name()) : type));
    if (isAssociation(type))
        for (Reference& end : references(node, "memberEnd", outside))
            ends.insert(std::move(end.id));
    if (const pugi::xml_attribute association = node.attribute("association"))
        propertiesOf[association.value()].push_back(id);
}

pugi::xml_node Reading::find(std::string_view id) const
{
    const auto found = index.find(id);
    return found == index.end() ? pugi::xml_node() : found->second;
}

bool Reading::isEnd(pugi::xml_node property) const
{
    return ends.contains(std::string(xml::xmiAttribute(property, "id"))) ||
           isAssociation(xml::typeName(find(property.attribute("association").value())));
}

void Reading::describe(pugi::xml_node node, Element& element, Package& package)
{
    element.id = xml::xmiAttribute(node, "id");
    element.name = xml::property(node, "name");
    element.documentation = generatorDocumentation(node);
    if (const pugi::xml_attribute stereotype = node.attribute("stereotype")) {
        const pugi::xml_node named = find(stereotype.value());
        element.stereotype = named ? xml::property(named, "name") : std::string_view(stereotype.value());
    }
    addWord(element.stereotype, keywordsOf(node));
    readProperties(node, element);
    for (const pugi::xml_node comment : node.children("ownedComment"))
        readComment(comment, element, package);
    for (const pugi::xml_node constraint : node.children("ownedRule"))
        readConstraint(constraint, element, package);
}

// A comment on its owner, or in a class and on nothing else, is documentation.
void Reading::readComment(pugi::xml_node node, Element& owner, Package& package)
{
    const std::string_view body = xml::property(node, "body");
    if (text::trimmed(body).empty())
        return;
    Remark remark;
    remark.id = xml::xmiAttribute(node, "id");
    remark.text = body;
    const std::vector<Reference> annotated = references(node, "annotatedElement", outside);
    const bool isOnNothing = annotated.empty() && &owner != &package;
    if (isOnNothing || std::any_of(annotated.begin(), annotated.end(),
                                   [&](const Reference& element) { return element.id == owner.id; }))
        addLine(owner.documentation, body);
    for (const Reference& element : annotated)
        if (element.id != owner.id)
            remark.elementIds.push_back(element.id);
    if (!remark.elementIds.empty() || (annotated.empty() && !isOnNothing))
        package.remarks.push_back(std::move(remark));
}

std::string Reading::constraintText(pugi::xml_node constraint) const
{
    std::string text = valueText(constraint.child("specification"), index);
    return text.empty() ? std::string(xml::property(constraint, "name")) : text;
}

void Reading::readConstraint(pugi::xml_node node, Element& owner, Package& package)
{
    Remark remark;
    remark.id = xml::xmiAttribute(node, "id");
    remark.text = constraintText(node);
    remark.isConstraint = true;
    if (remark.text.empty() || isCondition(node))
        return;
    for (Reference& element : references(node, "constrainedElement", outside))
        remark.elementIds.push_back(std::move(element.id));
    if (remark.elementIds.empty())
        owner.constraints.push_back(std::move(remark.text));
    else
        package.remarks.push_back(std::move(remark));
}

void Reading::leave(pugi::xml_node node, std::string_view type)
{
    const LeftReason* const row = rowOf(leftReasons, type);
    report.left(plainWords(type), xml::xmiAttribute(node, "id"), xml::property(node, "name"),
                row ? row->reason : nothingOfThisKind);
}

} // namespace design::uml2
