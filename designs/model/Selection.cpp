#include "designs/model/Selection.h"

#include "designs/model/DataTypes.h"
#include "designs/model/Walk.h"

namespace design {

Selection::Selection(const Package& root, const Catalogue& catalogue)
{
    forEachPackage(root, [&](const Package& package) {
        for (const Classifier& classifier : package.classifiers)
            addTypesOf(classifier, catalogue);
        for (const Association& association : package.associations) {
            for (const AssociationEnd& end : association.ends)
                for (const Attribute& qualifier : end.qualifiers)
                    usedAsTypes.insert(catalogue.classifierOf(qualifier.type));
            shownOrJoined.insert(association.associationClassId);
            for (const AssociationEnd& end : association.ends)
                shownOrJoined.insert(end.participant.id);
        }
        for (const Relationship& relationship : package.relationships) {
            shownOrJoined.insert(relationship.client.id);
            shownOrJoined.insert(relationship.supplier.id);
        }
        for (const Diagram& diagram : package.diagrams)
            for (const Box& box : diagram.boxes)
                shownOrJoined.insert(box.elementId);
    });
}

void Selection::addTypesOf(const Classifier& classifier, const Catalogue& catalogue)
{
    const auto add = [&](const Reference& type) { usedAsTypes.insert(catalogue.classifierOf(type)); };
    for (const Attribute& attribute : classifier.attributes)
        add(attribute.type);
    for (const Operation& operation : classifier.operations) {
        add(operation.returnType);
        for (const Parameter& parameter : operation.parameters)
            add(parameter.type);
    }
    for (const Parameter& parameter : classifier.templateParameters)
        add(parameter.type);
}

bool Selection::isNeededAsClass(const Classifier& classifier) const
{
    return !classifier.attributes.empty() || !classifier.operations.empty() || shownOrJoined.contains(classifier.id);
}

bool Selection::isClass(const Classifier& classifier) const
{
    if (classifier.staysClass)
        return true;
    switch (classifier.kind) {
    case ClassifierKind::Class:
    case ClassifierKind::Interface:
    case ClassifierKind::AssociationClass:
    case ClassifierKind::Actor:
        return true;
    case ClassifierKind::UseCase:
        return false;
    case ClassifierKind::DataType:
        return isNeededAsClass(classifier) || !dataTypeNamed(classifier.name);
    case ClassifierKind::PrimitiveType:
        return isNeededAsClass(classifier);
    case ClassifierKind::Enumeration:
        break;
    }
    return isNeededAsClass(classifier) || classifier.literals.empty() || !usedAsTypes.contains(&classifier);
}

} // namespace design
