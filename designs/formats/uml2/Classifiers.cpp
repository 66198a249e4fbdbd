#include "designs/formats/uml2/Reading.h"
#include "designs/model/Texts.h"

#include <array>
#include <utility>

namespace design::uml2 {

namespace {

constexpr std::array classifierTypes = {
    NamedClassifier{"Class", ClassifierKind::Class},
    NamedClassifier{"AssociationClass", ClassifierKind::AssociationClass},
    NamedClassifier{"Interface", ClassifierKind::Interface},
    NamedClassifier{"DataType", ClassifierKind::DataType},
    NamedClassifier{"PrimitiveType", ClassifierKind::PrimitiveType},
    NamedClassifier{"Enumeration", ClassifierKind::Enumeration},
    NamedClassifier{"Actor", ClassifierKind::Actor, "Actor"},
    NamedClassifier{"UseCase", ClassifierKind::UseCase},
    NamedClassifier{"Signal", ClassifierKind::Class, "signal"},
    NamedClassifier{"Component", ClassifierKind::Class, "component"},
    NamedClassifier{"InstanceSpecification", ClassifierKind::Class, "object"},
};

// What attributes and parameters have in common.
template <class Feature>
Feature readTyped(Reading& reading, pugi::xml_node node, Package& package)
{
    Feature feature;
    reading.describe(node, feature, package);
    feature.type = reference(node, "type", reading.outside);
    const pugi::xml_node value = node.child("defaultValue");
    feature.initialValue = value ? valueText(value, reading.index) : std::string(node.attribute("default").value());
    feature.multiplicity = multiplicity(node, reading.index);
    return feature;
}

// The texts of constraints that a role such as "precondition" holds or names.
std::string constraintsNamed(Reading& reading, pugi::xml_node node, const char* role)
{
    std::string text;
    for (const pugi::xml_node child : node.children(role))
        if (xml::xmiAttribute(child, "idref").empty())
            addLine(text, reading.constraintText(child));
    for (const Reference& named : references(node, role, reading.outside))
        if (const pugi::xml_node constraint = reading.find(named.id))
            addLine(text, reading.constraintText(constraint));
    return text;
}

Operation readOperation(Reading& reading, pugi::xml_node node, Package& package)
{
    Operation operation;
    reading.describe(node, operation, package);
    operation.visibility = visibilityNamed(node.attribute("visibility").value());
    operation.isStatic = xml::flag(node, "isStatic");
    operation.isAbstract = xml::flag(node, "isAbstract");
    operation.preCondition = constraintsNamed(reading, node, "precondition");
    operation.postCondition = constraintsNamed(reading, node, "postcondition");
    operation.semantics = constraintsNamed(reading, node, "bodyCondition");
    for (const pugi::xml_node child : node.children("ownedParameter")) {
        const std::string_view direction = child.attribute("direction").value();
        if (direction == "return" || direction == "result") {
            operation.returnType = reference(child, "type", reading.outside);
            operation.returnMultiplicity = multiplicity(child, reading.index);
            continue;
        }
        auto parameter = readTyped<Parameter>(reading, child, package);
        parameter.direction = directionNamed(direction);
        operation.parameters.push_back(std::move(parameter));
    }
    return operation;
}

// <ownedTemplateSignature><ownedParameter><ownedParameteredElement xmi:type="uml:Class" name="T"/>
void readTemplate(Reading& reading, pugi::xml_node signature, Classifier& classifier, Package& package)
{
    for (const pugi::xml_node owned : signature.children("ownedParameter")) {
        Parameter parameter;
        pugi::xml_node element = owned.child("ownedParameteredElement");
        if (!element)
            element = owned.child("ownedElement");
        reading.describe(element ? element : owned, parameter, package);
        const std::string_view type = xml::typeName(element);
        if (!type.empty() && type != "Class" && type != "TemplateParameter")
            parameter.type = reference(element, "type", reading.outside);
        classifier.templateParameters.push_back(std::move(parameter));
    }
}

// Whether it is a feature.
bool readFeature(Reading& reading, pugi::xml_node part, Classifier& classifier, Package& package)
{
    const std::string_view role = part.name();
    if (role == "ownedAttribute" && xml::typeName(part) != "Port") {
        if (!reading.isEnd(part))
            classifier.attributes.push_back(readAttribute(reading, part, package));
    } else if (role == "ownedOperation") {
        classifier.operations.push_back(readOperation(reading, part, package));
    } else if (role == "ownedLiteral") {
        Literal& literal = classifier.literals.emplace_back();
        reading.describe(part, literal, package);
        literal.value = valueText(part.child("specification"), reading.index);
    } else {
        return false;
    }
    return true;
}

void readPart(Reading& reading, pugi::xml_node part, Classifier& classifier, Package& package)
{
    constexpr std::array<std::string_view, 3> ofAssociation = {"ownedEnd", "navigableOwnedEnd", "memberEnd"};
    const std::string_view role = part.name();
    if (readFeature(reading, part, classifier, package) || isOneOf(ofAssociation, role))
        return;
    if (isMemberRole(role)) {
        reading.report.made("nested class", xml::xmiAttribute(part, "id"), xml::property(part, "name"), besideItsOwner);
        readMember(reading, part, package);
    } else if (role == "ownedTemplateSignature") {
        readTemplate(reading, part, classifier, package);
    } else if (role == "generalization") { // its type may be left out
        readRelationship(reading, part, *relationshipOf("Generalization"), classifier.id, package);
    } else {
        readOther(reading, part, package);
    }
}

} // namespace

const NamedClassifier* classifierOf(std::string_view type)
{
    return rowOf(classifierTypes, type);
}

Attribute readAttribute(Reading& reading, pugi::xml_node node, Package& package)
{
    auto attribute = readTyped<Attribute>(reading, node, package);
    attribute.visibility = visibilityNamed(node.attribute("visibility").value());
    attribute.isStatic = xml::flag(node, "isStatic");
    attribute.isDerived = xml::flag(node, "isDerived");
    attribute.isReadOnly = xml::flag(node, "isReadOnly");
    attribute.isIdentifier = xml::flag(node, "isID");
    return attribute;
}

void readClassifier(Reading& reading, pugi::xml_node node, const NamedClassifier& type, Package& package)
{
    Classifier classifier;
    reading.describe(node, classifier, package);
    classifier.kind = type.kind;
    if (classifier.stereotype.empty())
        classifier.stereotype = type.stereotype;
    classifier.visibility = visibilityNamed(node.attribute("visibility").value());
    classifier.isAbstract = xml::flag(node, "isAbstract");
    classifier.concurrency = concurrencyOf(xml::flag(node, "isActive"));
    for (const pugi::xml_node part : node.children())
        readPart(reading, part, classifier, package);
    package.classifiers.push_back(std::move(classifier));
    if (type.kind == ClassifierKind::AssociationClass)
        readAssociation(reading, node, package);
}

} // namespace design::uml2
