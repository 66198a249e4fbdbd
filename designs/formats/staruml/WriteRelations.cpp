#include "designs/formats/staruml/Write.h"

#include "designs/model/Texts.h"

namespace design::staruml {

namespace {

std::string_view wordFor(Aggregation aggregation)
{
    switch (aggregation) {
    case Aggregation::Shared:
        return "shared";
    case Aggregation::Composite:
        return "composite";
    case Aggregation::None:
        break;
    }
    return "none";
}

// That a part of a composition is held by value needs no word.
void leaveProperties(const Output& output, const AssociationEnd& end, const AssociationEnd& other)
{
    const bool isImplied = end.containment == Containment::ByValue && other.aggregation == Aggregation::Composite;
    if (end.containment != Containment::Unspecified && !isImplied)
        output.leave("containment of an end", end);
    if (end.isStatic)
        output.leave("static end", end);
    if (end.isFriend)
        output.leave("friendship of an end", end);
    output.leaveNotes(end);
}

void writeEnd(Output& output, std::string_view key, const AssociationEnd& end, const AssociationEnd& other,
              std::string_view parent)
{
    output.json.key(key);
    const std::string id = output.begin("UMLAssociationEnd", end, parent);
    output.textIfAny("stereotype", end.stereotype);
    output.ownedConstraints(end, id, {"ordered", "readOnly"});
    output.reference("reference", end.participant.id);
    output.json.member("visibility", staruml::wordFor(end.visibility)).member("navigable", end.isNavigable);
    output.json.member("aggregation", wordFor(end.aggregation));
    if (end.multiplicity)
        output.textIfAny("multiplicity", textOf(*end.multiplicity));
    output.json.member("isReadOnly", hasConstraint(end, "readOnly")).member("isOrdered", hasConstraint(end, "ordered"));
    output.json.member("isUnique", false).member("isDerived", end.isDerived).member("isID", false);
    if (!end.qualifiers.empty()) {
        output.json.beginList("qualifiers");
        for (const Attribute& qualifier : end.qualifiers)
            writeAttribute(output, qualifier, id);
        output.json.endList();
    }
    leaveProperties(output, end, other);
    output.end();
}

void writeAssociation(Output& output, const Association& association, std::string_view parent)
{
    if (association.ends.size() != 2) {
        output.report.left("association", association.id, association.name, "StarUML has those of two ends only");
        return;
    }
    const std::string id = output.begin("UMLAssociation", association, parent);
    output.textIfAny("stereotype", association.stereotype);
    output.ownedConstraints(association, id);
    writeEnd(output, "end1", association.ends[0], association.ends[1], id);
    writeEnd(output, "end2", association.ends[1], association.ends[0], id);
    output.json.member("visibility", "public").member("isDerived", association.isDerived);
    output.end();
    if (!output.writing.catalogue.classifier(association.associationClassId))
        return;
    output.begin("UMLAssociationClassLink", output.classLinkOf(association), parent);
    output.json.member("visibility", "public");
    output.reference("classSide", association.associationClassId);
    output.reference("associationSide", id);
    output.end();
}

void writeRelationship(Output& output, const Relationship& relationship, std::string_view parent)
{
    const std::string_view type = typeOf(relationship, output.writing.catalogue);
    const std::string id = output.begin(type, relationship, parent);
    if (type != "UMLInclude" && type != "UMLExtend")
        output.textIfAny("stereotype", relationship.stereotype);
    output.ownedConstraints(relationship, id);
    output.reference("source", relationship.client.id);
    output.reference("target", relationship.supplier.id);
    output.json.member("visibility", staruml::wordFor(relationship.visibility));
    if (relationship.isVirtual)
        output.leave("virtuality of a relation", relationship);
    if (relationship.isFriend)
        output.leave("friendship of a relation", relationship);
    output.end();
}

} // namespace

std::string_view typeOf(const Relationship& relationship, const Catalogue& catalogue)
{
    const Classifier* const client = catalogue.classifier(relationship.client.id);
    const Classifier* const supplier = catalogue.classifier(relationship.supplier.id);
    switch (relationship.kind) {
    case RelationshipKind::Generalization:
        return "UMLGeneralization";
    case RelationshipKind::Realization:
        return supplier && supplier->kind == ClassifierKind::Interface ? "UMLInterfaceRealization" : "UMLRealization";
    case RelationshipKind::Dependency:
        break;
    }
    if (client && supplier && client->kind == ClassifierKind::UseCase && supplier->kind == ClassifierKind::UseCase) {
        if (relationship.stereotype == "include")
            return "UMLInclude";
        if (relationship.stereotype == "extend")
            return "UMLExtend";
    }
    return "UMLDependency";
}

void writeRelations(Output& output, const OwnedRelations& relations, std::string_view parent)
{
    for (const Association* const association : relations.associations)
        writeAssociation(output, *association, parent);
    for (const Relationship* const relationship : relations.relationships)
        writeRelationship(output, *relationship, parent);
}

} // namespace design::staruml
