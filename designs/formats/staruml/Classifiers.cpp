#include "designs/formats/staruml/Reading.h"
#include "designs/model/Texts.h"
#include "text/Words.h"

#include <array>
#include <utility>

namespace design::staruml {

namespace {

constexpr std::array classifierTypes = {
    NamedClassifier{"UMLClass", ClassifierKind::Class},
    NamedClassifier{"UMLInterface", ClassifierKind::Interface},
    NamedClassifier{"UMLSignal", ClassifierKind::Class, "signal"},
    NamedClassifier{"UMLDataType", ClassifierKind::DataType},
    NamedClassifier{"UMLPrimitiveType", ClassifierKind::PrimitiveType},
    NamedClassifier{"UMLEnumeration", ClassifierKind::Enumeration},
    NamedClassifier{"UMLStereotype", ClassifierKind::Class, "stereotype"},
    NamedClassifier{"UMLActor", ClassifierKind::Actor, "Actor"},
    NamedClassifier{"UMLUseCase", ClassifierKind::UseCase},
    NamedClassifier{"UMLComponent", ClassifierKind::Class, "component"},
    NamedClassifier{"UMLObject", ClassifierKind::Class, "object"},
};

// What attributes and parameters have in common. A type is an element or a text.
template <class Feature>
Feature readTyped(Reading& reading, const Object& object, Package& package)
{
    Feature feature;
    reading.describe(object, feature, package);
    if (const std::string_view id = referenceIn(object, "type"); !id.empty())
        feature.type = reading.referenceTo(id);
    else
        feature.type.name = text::trimmed(json::text(object, "type"));
    feature.initialValue = json::text(object, "defaultValue");
    feature.multiplicity = parseMultiplicity(json::text(object, "multiplicity"));
    if (json::flag(object, "isOrdered"))
        feature.constraints.emplace_back("ordered");
    return feature;
}

Parameter readTemplateParameter(Reading& reading, const Object& object, Package& package)
{
    auto parameter = readTyped<Parameter>(reading, object, package);
    parameter.type = {{}, std::string(json::text(object, "parameterType"))};
    return parameter;
}

Concurrency concurrencyNamed(std::string_view word)
{
    if (word == "guarded")
        return Concurrency::Guarded;
    return word == "concurrent" ? Concurrency::Synchronous : Concurrency::Sequential;
}

// What an attribute holds is a part of it, or is shared with others.
Containment containmentNamed(std::string_view aggregation)
{
    if (aggregation == "composite")
        return Containment::ByValue;
    return aggregation == "shared" ? Containment::ByReference : Containment::Unspecified;
}

std::string conditionsIn(const Object& object, std::string_view key)
{
    std::string text;
    json::forEach(object, key, [&](const Object& condition) { addLine(text, textOfConstraint(condition)); });
    return text;
}

Operation readOperation(Reading& reading, const Object& object, Package& package)
{
    Operation operation;
    reading.describe(object, operation, package);
    operation.visibility = visibilityNamed(json::text(object, "visibility"));
    operation.isStatic = json::flag(object, "isStatic");
    operation.isAbstract = json::flag(object, "isAbstract");
    operation.concurrency = concurrencyNamed(json::text(object, "concurrency"));
    operation.semantics = json::text(object, "specification");
    operation.preCondition = conditionsIn(object, "preconditions");
    operation.postCondition = conditionsIn(object, "postconditions");
    if (json::flag(object, "isQuery"))
        operation.constraints.emplace_back("query");
    json::forEach(object, "bodyConditions", [&](const Object& condition) { reading.leave(condition); });
    json::forEach(object, "parameters", [&](const Object& each) {
        auto parameter = readTyped<Parameter>(reading, each, package);
        const std::string_view direction = json::text(each, "direction");
        parameter.direction = directionNamed(direction);
        if (direction != "return") {
            operation.parameters.push_back(std::move(parameter));
            return;
        }
        operation.returnType = std::move(parameter.type);
        operation.returnMultiplicity = std::move(parameter.multiplicity);
    });
    return operation;
}

void readFeatures(Reading& reading, const Object& object, Classifier& classifier, Package& package)
{
    json::forEach(object, "attributes", [&](const Object& attribute) {
        classifier.attributes.push_back(readAttribute(reading, attribute, package));
    });
    json::forEach(object, "operations", [&](const Object& operation) {
        classifier.operations.push_back(readOperation(reading, operation, package));
    });
    json::forEach(object, "templateParameters", [&](const Object& parameter) {
        classifier.templateParameters.push_back(readTemplateParameter(reading, parameter, package));
    });
    json::forEach(object, "literals", [&](const Object& literal) {
        reading.describe(literal, classifier.literals.emplace_back(), package);
    });
    for (const std::string_view key : {"receptions", "ports", "slots", "extensionPoints", "behaviors"})
        json::forEach(object, key, [&](const Object& member) { reading.leave(member); });
}

} // namespace

const NamedClassifier* classifierOf(std::string_view type)
{
    return rowOf(classifierTypes, type);
}

Attribute readAttribute(Reading& reading, const Object& object, Package& package)
{
    auto attribute = readTyped<Attribute>(reading, object, package);
    attribute.visibility = visibilityNamed(json::text(object, "visibility"));
    attribute.isStatic = json::flag(object, "isStatic");
    attribute.isDerived = json::flag(object, "isDerived");
    attribute.isReadOnly = json::flag(object, "isReadOnly");
    attribute.containment = containmentNamed(json::text(object, "aggregation"));
    attribute.isIdentifier = json::flag(object, "isID");
    return attribute;
}

void readClassifier(Reading& reading, const Object& object, const NamedClassifier& type, Package& package)
{
    Classifier classifier;
    reading.describe(object, classifier, package);
    classifier.kind = type.kind;
    if (classifier.stereotype.empty())
        classifier.stereotype = type.stereotype;
    classifier.visibility = visibilityNamed(json::text(object, "visibility"));
    classifier.isAbstract = json::flag(object, "isAbstract");
    classifier.concurrency = concurrencyOf(json::flag(object, "isActive"));
    readFeatures(reading, object, classifier, package);
    package.classifiers.push_back(std::move(classifier));
    json::forEach(object, "ownedElements", [&](const Object& member) {
        if (classifierOf(typeOf(member)))
            reading.report.made("nested class", idOf(member), nameOf(member), besideItsOwner);
        readMember(reading, member, package);
    });
}

} // namespace design::staruml
