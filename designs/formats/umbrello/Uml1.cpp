#include "designs/formats/umbrello/Uml1.h"

#include "designs/model/Kinds.h"
#include "designs/model/Texts.h"

#include <algorithm>
#include <array>
#include <utility>

namespace design::uml1 {

namespace {

constexpr std::array<NamedClassifier, 10> classifierElements = {{
    {"Class", ClassifierKind::Class, ""},
    {"AssociationClass", ClassifierKind::AssociationClass, ""},
    {"Interface", ClassifierKind::Interface, ""},
    {"DataType", ClassifierKind::DataType, ""},
    {"Primitive", ClassifierKind::PrimitiveType, ""},
    {"Enumeration", ClassifierKind::Enumeration, ""},
    {"Actor", ClassifierKind::Class, "Actor"},
    {"Signal", ClassifierKind::Class, "signal"},
    {"Component", ClassifierKind::Class, "component"},
    {"Object", ClassifierKind::Class, "object"},
}};

/// UML 1.x has no realizations of its own, and tools write them as abstractions.
constexpr std::array<NamedRelationship, 5> relationshipElements = {{
    {"Generalization", RelationshipKind::Generalization, "", "child", "parent"},
    {"Abstraction", RelationshipKind::Realization, "", "client", "supplier"},
    {"Dependency", RelationshipKind::Dependency, "", "client", "supplier"},
    {"Usage", RelationshipKind::Dependency, "use", "client", "supplier"},
    {"Permission", RelationshipKind::Dependency, "permit", "client", "supplier"},
}};

/// Stereotypes that say what the kind of the element says already.
constexpr std::array<std::string_view, 5> impliedStereotypes = {"folder", "datatype", "enum", "interface",
                                                                "enumeration"};

/// The children of "UML:Classifier.feature" and the like, by what follows the dot.
std::vector<pugi::xml_node> parts(pugi::xml_node node, std::string_view role)
{
    std::vector<pugi::xml_node> found;
    for (const pugi::xml_node child : node.children()) {
        const std::string_view name = child.name();
        const std::size_t dot = name.rfind('.');
        if (dot == std::string_view::npos || name.substr(dot + 1) != role)
            continue;
        for (const pugi::xml_node part : child.children()) {
            if (part.type() == pugi::node_element)
                found.push_back(part);
        }
    }
    return found;
}

/// An attribute, or the text or the reference in an element such as "UML:ModelElement.name".
std::string_view value(pugi::xml_node node, const char* role)
{
    if (const pugi::xml_attribute attribute = node.attribute(role))
        return attribute.value();
    for (const pugi::xml_node part : parts(node, role)) {
        const std::string_view reference = xml::xmiAttribute(part, "idref");
        if (!reference.empty())
            return reference;
    }
    for (const pugi::xml_node child : node.children()) {
        const std::string_view name = child.name();
        if (name.size() > std::string_view(role).size() && name.ends_with(role) &&
            name[name.size() - std::string_view(role).size() - 1] == '.')
            return child.attribute("xmi.value") ? child.attribute("xmi.value").value() : child.text().get();
    }
    return {};
}

std::optional<Multiplicity> multiplicity(pugi::xml_node node)
{
    if (const pugi::xml_attribute attribute = node.attribute("multiplicity"))
        return parseMultiplicity(attribute.value());
    for (const pugi::xml_node outer : parts(node, "multiplicity")) {
        for (const pugi::xml_node range : parts(outer, "range"))
            return parseMultiplicity(std::string(value(range, "lower")) + ".." + std::string(value(range, "upper")));
    }
    return std::nullopt;
}

class Reader {
public:
    Reader(pugi::xml_node root, Report& report) : root_(root), report_(report) {}

    uml2::Model read();

private:
    void indexAll();
    void readContent(pugi::xml_node content);
    void readPackage(pugi::xml_node node, Package& package);
    void readMember(pugi::xml_node node, Package& package);
    void readClassifier(pugi::xml_node node, const NamedClassifier& row, Package& package);
    void readFeature(pugi::xml_node node, Classifier& classifier, const Package& package);
    void readAssociation(pugi::xml_node node, Package& package);
    void readRelationship(pugi::xml_node node, const NamedRelationship& row, Package& package);
    void readComment(pugi::xml_node node, const Package& package);
    void describe(pugi::xml_node node, Element& element, const Package& package);
    Attribute attribute(pugi::xml_node node, const Package& package);
    Operation operation(pugi::xml_node node, const Package& package);
    void left(pugi::xml_node node);

    pugi::xml_node root_;
    Report& report_;
    uml2::Index stereotypes_;
    uml2::Model model_;
};

void Reader::indexAll()
{
    for (pugi::xml_node node = root_; node;) {
        const std::string_view name = node.name();
        const std::string_view id = xml::xmiAttribute(node, "id");
        const bool isExtension = name.starts_with("XMI.extension");
        if (!id.empty() && !isExtension) {
            model_.kinds.emplace(id, xml::localName(name));
            if (name == "UML:Stereotype")
                stereotypes_.emplace(id, node);
        }
        const pugi::xml_node child = node.first_child();
        if (child && !isExtension) {
            node = child;
            continue;
        }
        while (node && node != root_ && !node.next_sibling())
            node = node.parent();
        node = node == root_ ? pugi::xml_node() : node.next_sibling();
    }
}

uml2::Model Reader::read()
{
    indexAll();
    const pugi::xml_node documentation = root_.child("XMI.header").child("XMI.documentation");
    model_.design.tool = std::string(documentation.child("XMI.exporter").text().get());
    const std::string_view version = documentation.child("XMI.exporterVersion").text().get();
    if (!version.empty())
        model_.design.tool += " " + std::string(version);
    readContent(root_.child("XMI.content"));
    return std::move(model_);
}

void Reader::readContent(pugi::xml_node content)
{
    Package& top = model_.design.root;
    bool hasTop = false;
    for (const pugi::xml_node node : content.children()) {
        if (!hasTop && std::string_view(node.name()) == "UML:Model") {
            readPackage(node, top);
            hasTop = true;
        } else if (node.type() == pugi::node_element) {
            readMember(node, top);
        }
    }
    // The tool has all its views in every file.
    std::erase_if(top.packages, [](const Package& package) {
        return package.classifiers.empty() && package.packages.empty() && package.associations.empty() &&
               package.relationships.empty() && package.id == package.name && package.id.find(' ') != std::string::npos;
    });
}

void Reader::left(pugi::xml_node node)
{
    report_.left(uml2::plainWords(xml::localName(node.name())), xml::xmiAttribute(node, "id"), value(node, "name"),
                 "the host model has classes, their features and their relations only");
}

void Reader::readPackage(pugi::xml_node node, Package& package)
{
    describe(node, package, package);
    for (const pugi::xml_node member : parts(node, "ownedElement"))
        readMember(member, package);
}

void Reader::readMember(pugi::xml_node node, Package& package)
{
    const std::string_view name = xml::localName(node.name());
    if (!xml::xmiAttribute(node, "idref").empty())
        return;
    if (name == "Package" || name == "Model" || name == "Subsystem") {
        Package child;
        readPackage(node, child);
        package.packages.push_back(std::move(child));
    } else if (const NamedClassifier* const classifier = rowOf(classifierElements, name)) {
        readClassifier(node, *classifier, package);
    } else if (const NamedRelationship* const relationship = rowOf(relationshipElements, name)) {
        readRelationship(node, *relationship, package);
    } else if (name == "Association") {
        readAssociation(node, package);
    } else if (name == "Comment") {
        readComment(node, package);
    } else if (name != "Stereotype" && name != "TagDefinition") { // both only name what elements have
        left(node);
        for (const pugi::xml_node member : parts(node, "ownedElement"))
            readMember(member, package);
    }
}

void Reader::describe(pugi::xml_node node, Element& element, const Package& package)
{
    element.id = xml::xmiAttribute(node, "id");
    element.name = value(node, "name");
    element.documentation = value(node, "comment");
    const std::string_view stereotype = value(node, "stereotype");
    const auto found = stereotypes_.find(stereotype);
    const std::string_view name = found == stereotypes_.end() ? stereotype : value(found->second, "name");
    if (std::find(impliedStereotypes.begin(), impliedStereotypes.end(), name) == impliedStereotypes.end())
        element.stereotype = name;
    for (const pugi::xml_node tagged : parts(node, "taggedValue")) {
        if (std::string_view(tagged.attribute("tag").value()) == "documentation")
            element.documentation = tagged.attribute("value").value();
    }
    for (const pugi::xml_node constraint : parts(node, "constraint")) {
        const std::string_view body = constraint.attribute("body").value();
        const std::string text(body.empty() ? value(constraint, "name") : body);
        if (!text.empty())
            model_.constraints.push_back({element.id, text, package.id});
    }
}

void Reader::readClassifier(pugi::xml_node node, const NamedClassifier& row, Package& package)
{
    Classifier classifier;
    describe(node, classifier, package);
    classifier.kind = row.kind;
    if (classifier.stereotype.empty())
        classifier.stereotype = row.stereotype;
    classifier.visibility = uml2::visibility(node.attribute("visibility").value());
    classifier.isAbstract = xml::flag(node, "isAbstract") && row.kind != ClassifierKind::Interface;
    classifier.isActive = xml::flag(node, "isActive");
    for (const pugi::xml_node parameter : parts(node, "templateParameter")) {
        const Attribute read = attribute(parameter, package);
        Parameter taken;
        static_cast<Element&>(taken) = static_cast<const Element&>(read);
        taken.type = read.type;
        classifier.templateParameters.push_back(std::move(taken));
    }
    for (const pugi::xml_node feature : parts(node, "feature"))
        readFeature(feature, classifier, package);
    for (const pugi::xml_node child : node.children())
        readFeature(child, classifier, package);
    for (const pugi::xml_node literal : parts(node, "literal"))
        readFeature(literal, classifier, package);
    package.classifiers.push_back(std::move(classifier));
    if (row.kind == ClassifierKind::AssociationClass)
        readAssociation(node, package);
    for (const pugi::xml_node member : parts(node, "ownedElement")) {
        if (xml::xmiAttribute(member, "idref").empty() && rowOf(classifierElements, xml::localName(member.name())))
            report_.made("nested classifier", xml::xmiAttribute(member, "id"), value(member, "name"),
                         "stands beside its owner, since classes of the host model do not hold others");
        readMember(member, package);
    }
}

void Reader::readFeature(pugi::xml_node node, Classifier& classifier, const Package& package)
{
    const std::string_view name = xml::localName(node.name());
    if (name == "Attribute") {
        classifier.attributes.push_back(attribute(node, package));
    } else if (name == "Operation") {
        classifier.operations.push_back(operation(node, package));
    } else if (name == "EnumerationLiteral") {
        Literal literal;
        describe(node, literal, package);
        literal.value = node.attribute("value").value();
        classifier.literals.push_back(std::move(literal));
    } else if (name == "EntityAttribute" || name == "Reception" || name == "Method") {
        left(node);
    }
}

Attribute Reader::attribute(pugi::xml_node node, const Package& package)
{
    Attribute attribute;
    describe(node, attribute, package);
    attribute.type.id = value(node, "type");
    for (const char* const key : {"initialValue", "value", "defaultValue"}) {
        if (attribute.initialValue.empty() && node.attribute(key))
            attribute.initialValue = node.attribute(key).value();
        for (const pugi::xml_node expression : parts(node, key)) {
            if (attribute.initialValue.empty())
                attribute.initialValue = expression.attribute("body").value();
        }
    }
    attribute.multiplicity = multiplicity(node);
    attribute.visibility = uml2::visibility(node.attribute("visibility").value());
    attribute.isStatic = std::string_view(node.attribute("ownerScope").value()) == "classifier";
    attribute.isReadOnly = std::string_view(node.attribute("changeability").value()) == "frozen";
    return attribute;
}

Operation Reader::operation(pugi::xml_node node, const Package& package)
{
    Operation operation;
    describe(node, operation, package);
    operation.visibility = uml2::visibility(node.attribute("visibility").value());
    operation.isStatic = std::string_view(node.attribute("ownerScope").value()) == "classifier";
    operation.isAbstract = xml::flag(node, "isAbstract");
    for (const pugi::xml_node child : parts(node, "parameter")) {
        const Attribute read = attribute(child, package);
        const std::string_view kind = child.attribute("kind").value();
        if (kind == "return") {
            operation.returnType = read.type;
            continue;
        }
        Parameter parameter;
        static_cast<Element&>(parameter) = static_cast<const Element&>(read);
        parameter.type = read.type;
        parameter.initialValue = read.initialValue;
        if (kind == "out" || kind == "inout")
            parameter.direction = kind == "out" ? Direction::Out : Direction::InOut;
        operation.parameters.push_back(std::move(parameter));
    }
    return operation;
}

void Reader::readRelationship(pugi::xml_node node, const NamedRelationship& row, Package& package)
{
    Relationship relationship;
    describe(node, relationship, package);
    relationship.kind = row.kind;
    addWord(relationship.stereotype, row.stereotype);
    relationship.client.id = value(node, row.client);
    relationship.supplier.id = value(node, row.supplier);
    package.relationships.push_back(std::move(relationship));
}

/// Here an end's aggregation says what the class at this same end is.
void Reader::readAssociation(pugi::xml_node node, Package& package)
{
    Association association;
    describe(node, association, package);
    if (xml::localName(node.name()) == "AssociationClass") {
        association.associationClassId = association.id;
        association.id = uml2::associationOf(association.associationClassId);
        association.documentation.clear();
    }
    for (const pugi::xml_node part : parts(node, "connection")) {
        AssociationEnd end;
        describe(part, end, package);
        end.participant.id = value(part, "type").empty() ? value(part, "participant") : value(part, "type");
        end.multiplicity = multiplicity(part);
        end.visibility = uml2::visibility(part.attribute("visibility").value());
        end.aggregation = uml2::aggregation(part.attribute("aggregation").value());
        end.isNavigable = xml::flag(part, "isNavigable");
        for (const pugi::xml_node qualifier : parts(part, "qualifier"))
            end.qualifiers.push_back(attribute(qualifier, package));
        association.ends.push_back(std::move(end));
    }
    package.associations.push_back(std::move(association));
}

void Reader::readComment(pugi::xml_node node, const Package& package)
{
    const std::string_view body = value(node, "body");
    const std::string text(body.empty() ? value(node, "name") : body);
    const std::vector<pugi::xml_node> annotated = parts(node, "annotatedElement");
    if (annotated.empty() && !text.empty())
        model_.notes.push_back({{}, text, package.id});
    for (const pugi::xml_node element : annotated)
        model_.notes.push_back({std::string(xml::xmiAttribute(element, "idref")), text, package.id});
}

} // namespace

bool hasModel(std::string_view head)
{
    return head.find("<XMI") != std::string_view::npos && head.find("xmi.version") != std::string_view::npos &&
           (head.find("UML:") != std::string_view::npos || head.find("<XMI.header>") != std::string_view::npos);
}

uml2::Model read(const xml::Document& document, Report& report)
{
    return Reader(document.root(), report).read();
}

} // namespace design::uml1
