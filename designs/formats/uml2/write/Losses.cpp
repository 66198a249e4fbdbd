#include "designs/formats/uml2/write/Writer.h"
#include "designs/model/Texts.h"
#include "designs/model/Walk.h"

namespace design::uml2 {

namespace {

constexpr std::string_view noPlaceFor = "UML 2 has no place for it";

// Tells of what is in a design and not in the file.
class Losses {
public:
    explicit Losses(Report& theReport) : report(theReport) {}

    void ofClassifier(const Classifier& classifier)
    {
        const bool isOfTemplate = classifier.form == ClassForm::Parameterized && !classifier.templateParameters.empty();
        const bool isKept =
            classifier.concurrency == Concurrency::Sequential || classifier.concurrency == Concurrency::Active;
        leaveIf(classifier.form != ClassForm::Plain && !isOfTemplate, "form of a class", classifier);
        leaveIf(!isKept, "concurrency of a class", classifier);
        leaveIf(classifier.isPersistent, "persistence of a class", classifier);
        leaveIf(!classifier.cardinality.empty(), "cardinality of a class", classifier);
        leaveIf(classifier.space != 0, "space of a class", classifier);
        forEachFeature(classifier, [&](const Element& feature) { leaveNotes(feature); });
        for (const Attribute& attribute : classifier.attributes)
            ofAttribute(attribute);
        for (const Operation& operation : classifier.operations)
            ofOperation(operation);
        for (const Literal& literal : classifier.literals)
            leaveIf(literal.hasEmptyValue, "value of a literal", literal);
        for (const Parameter& parameter : classifier.templateParameters) {
            leaveIf(parameter.multiplicity.has_value(), "multiplicity of a template parameter", parameter);
            leaveIf(!parameter.initialValue.empty(), "default of a template parameter", parameter);
        }
    }

    // `itsClass`: what the association is one element with, or null.
    void ofAssociation(const Association& association, const Classifier* itsClass)
    {
        const bool isInClass = itsClass != nullptr;
        const bool isCalledOtherwise = isInClass && !association.name.empty() && association.name != itsClass->name;
        leaveIf(isCalledOtherwise, "name of an association", association);
        leaveIf(isInClass && association.isDerived, "derivation of an association", association);
        leaveIf(isInClass && !association.constraints.empty(), "constraint of an association", association);
        leaveIf(isInClass && !association.properties.empty(), "properties of an association", association);
        for (const AssociationEnd& end : association.ends) {
            leaveNotes(end);
            leaveIf(end.isFriend, "friendship of an end", end);
            leaveIf(end.containment != Containment::Unspecified, "containment of an end", end);
            for (const Attribute& qualifier : end.qualifiers) {
                leaveNotes(qualifier);
                ofAttribute(qualifier);
            }
        }
    }

    void ofRelationship(const Relationship& relationship)
    {
        const bool hasName = relationship.kind != RelationshipKind::Generalization;
        leaveIf(!hasName && !relationship.name.empty(), "name of a generalization", relationship);
        leaveIf(relationship.visibility != Visibility::Public, "visibility of a relation", relationship);
        leaveIf(relationship.isVirtual, "virtuality of a relation", relationship);
        leaveIf(relationship.isFriend, "friendship of a relation", relationship);
    }

private:
    void leaveIf(bool isThere, std::string_view property, const Element& element)
    {
        if (isThere)
            report.left(property, element.id, element.name, noPlaceFor);
    }

    void leaveNotes(const Element& element)
    {
        for (const std::string& text : element.notes)
            report.left("note", element.id, text, "comments are on classes and relations here");
    }

    void ofAttribute(const Attribute& attribute)
    {
        leaveIf(attribute.containment != Containment::Unspecified, "containment of an attribute", attribute);
    }

    void ofOperation(const Operation& operation)
    {
        leaveIf(operation.concurrency != Concurrency::Sequential, "concurrency of an operation", operation);
        leaveIf(operation.isVirtual, "virtuality of an operation", operation);
        leaveIf(operation.isFriend, "friendship of an operation", operation);
    }

    Report& report;
};

} // namespace

void Writer::tellLosses()
{
    Losses losses(report);
    forEachPackage(writing.design.root, [&](const Package& package) {
        for (const Classifier& classifier : package.classifiers)
            losses.ofClassifier(classifier);
        for (const Association& association : package.associations)
            losses.ofAssociation(association, isItsClass(association)
                                                  ? writing.catalogue.classifier(association.associationClassId)
                                                  : nullptr);
        for (const Relationship& relationship : package.relationships)
            losses.ofRelationship(relationship);
    });
}

} // namespace design::uml2
