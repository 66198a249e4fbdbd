#include "designs/formats/ea/write/Extension.h"

#include "designs/model/Counts.h"
#include "designs/model/Walk.h"

namespace design::ea {

namespace {

void leaveValues(const Output& output, const Element& element)
{
    for (const Property& property : element.properties)
        output.report.left("property", element.id, property.tool + " " + property.name, noPlaceFor);
}

void leaveIf(const Output& output, bool isThere, std::string_view kind, const Element& element)
{
    if (isThere)
        output.left(kind, element, noPlaceFor);
}

void leaveOfOperation(const Output& output, const Operation& operation)
{
    leaveIf(output, operation.isVirtual, "virtual operation", operation);
    leaveIf(output, operation.isFriend, "friend", operation);
}

void leaveOfClassifier(const Output& output, const Classifier& classifier)
{
    const bool isOfTemplate = classifier.form == ClassForm::Parameterized && !classifier.templateParameters.empty();
    leaveIf(output, classifier.form != ClassForm::Plain && !isOfTemplate, "form of a class", classifier);
    const bool isKept =
        classifier.concurrency == Concurrency::Sequential || classifier.concurrency == Concurrency::Active;
    leaveIf(output, !isKept, "concurrency of a class", classifier);
    leaveIf(output, classifier.isPersistent, "persistence", classifier);
    leaveIf(output, !classifier.cardinality.empty(), "cardinality of a class", classifier);
    leaveIf(output, classifier.space != 0, "space", classifier);
    for (const Operation& operation : classifier.operations)
        leaveOfOperation(output, operation);
    for (const Parameter& parameter : classifier.templateParameters) {
        leaveIf(output, !parameter.initialValue.empty(), "default of a template parameter", parameter);
        leaveIf(output, !parameter.documentation.empty(), "documentation of a template parameter", parameter);
        leaveIf(output, !parameter.stereotype.empty(), "stereotype of a template parameter", parameter);
        leaveValues(output, parameter);
    }
    const bool isAssociationClass = output.associationOf.contains(classifier.id);
    if (isAssociationClass != (classifier.kind == ClassifierKind::AssociationClass)) {
        const std::string_view kind = isAssociationClass ? "association class" : "class";
        output.left(nameOf(classifier.kind), classifier, "it is written as " + std::string(kind));
        output.report.made(kind, classifier.id, classifier.name,
                           "it was " + std::string(nameOf(classifier.kind)) + " before");
    }
}

// What an association of more than two ends, or an end of it, has that only a connector could tell.
void leaveOfConnector(const Output& output, const Element& element)
{
    leaveIf(output, !element.documentation.empty(), "documentation", element);
    leaveIf(output, !element.stereotype.empty(), "stereotype", element);
    leaveValues(output, element);
}

void leaveOfAssociation(const Output& output, const Association& association)
{
    const bool isOfClass = output.isInClass(association);
    leaveIf(output, isOfClass && association.isDerived, "derivation of an association", association);
    leaveIf(output, isOfClass && !association.constraints.empty(), "constraint of an association", association);
    leaveIf(output, isOfClass && !association.notes.empty(), "note on an association", association);
    const bool hasConnector = association.ends.size() == 2;
    if (!hasConnector)
        leaveOfConnector(output, association);
    for (const AssociationEnd& end : association.ends) {
        leaveIf(output, end.isFriend, "friend", end);
        if (!hasConnector) {
            leaveOfConnector(output, end);
            leaveIf(output, end.containment != Containment::Unspecified, "containment of an end", end);
        }
        for (const Attribute& qualifier : end.qualifiers) {
            leaveIf(output, !qualifier.documentation.empty(), "documentation of a qualifier", qualifier);
            leaveIf(output, !qualifier.stereotype.empty(), "stereotype of a qualifier", qualifier);
            leaveIf(output, !qualifier.notes.empty(), "note on a qualifier", qualifier);
            leaveValues(output, qualifier);
        }
    }
}

void leaveOfRelationship(const Output& output, const Relationship& relationship)
{
    leaveIf(output, relationship.isFriend, "friend", relationship);
    leaveIf(output, relationship.visibility != Visibility::Public, "visibility of a relation", relationship);
}

} // namespace

void leaveProperties(const Output& output)
{
    forEachPackage(output.writing.design.root, [&](const Package& package) {
        for (const Classifier& classifier : package.classifiers)
            leaveOfClassifier(output, classifier);
        for (const Association& association : package.associations)
            leaveOfAssociation(output, association);
        for (const Relationship& relationship : package.relationships)
            leaveOfRelationship(output, relationship);
        for (const Diagram& diagram : package.diagrams) {
            leaveIf(output, !diagram.stereotype.empty(), "stereotype of a diagram", diagram);
            leaveIf(output, !diagram.constraints.empty(), "constraint of a diagram", diagram);
        }
    });
}

} // namespace design::ea
