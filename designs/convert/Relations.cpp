#include "designs/convert/Relations.h"

#include "designs/convert/Documentation.h"

#include <algorithm>

namespace design {

namespace {

bool isOwner(const AssociationEnd& end)
{
    return end.aggregation == Aggregation::Composite;
}

// Whether another end owns what is at this end for good: the part of a composition.
bool isPart(const Association& association, const AssociationEnd& end)
{
    return !isOwner(end) && std::any_of(association.ends.begin(), association.ends.end(), isOwner);
}

} // namespace

KivClass* RelationConverter::classOf(std::string_view id) const
{
    const auto found = classes.find(id);
    return found == classes.end() ? nullptr : found->second;
}

KivAssociation* RelationConverter::create(const Association& association)
{
    builder.count(Kind::Associations);
    auto* const added = builder.create<KivAssociation>(association, association.documentation);
    added->constraint = builder.text(association, constraintOf(association));
    added->associationClass = classOf(association.associationClassId);
    for (const AssociationEnd& end : association.ends) {
        added->isAggregation = added->isAggregation || end.aggregation != Aggregation::None;
        added->roles.add(createRole(association, end));
    }
    return added;
}

KivAssociationRole* RelationConverter::createRole(const Association& association, const AssociationEnd& end)
{
    auto* const role = builder.create<KivAssociationRole>(end, documentationOf(end));
    role->participant = classOf(end.participant.id);
    if (end.multiplicity && end.multiplicity->text.empty())
        role->multiplicity = {end.multiplicity->lower, end.multiplicity->upper, true};
    role->isAggregateEnd = end.aggregation != Aggregation::None;
    role->isNavigable = end.isNavigable;
    role->isStatic = end.isStatic;
    role->visibility = numberOf(end.visibility);
    const bool isLeftOpen = end.containment == Containment::Unspecified;
    role->containment = numberOf(isLeftOpen && isPart(association, end) ? Containment::ByValue : end.containment);
    role->isFriend = end.isFriend;
    role->constraint = builder.text(end, constraintOf(end));
    for (const Attribute& qualifier : end.qualifiers)
        features.addTo(role->qualifiers, qualifier);
    return role;
}

void RelationConverter::addSubtype(KivGeneralization& generalization, const Relationship& relationship)
{
    builder.count(Kind::Generalizations);
    generalization.subtypes.add(classOf(relationship.client.id));
}

template <class Directed>
KivRelationship* RelationConverter::createDirected(const Relationship& relationship)
{
    auto* const added = builder.create<Directed>(relationship, documentationOf(relationship));
    added->client = classOf(relationship.client.id);
    added->supplier = classOf(relationship.supplier.id);
    return added;
}

KivRelationship* RelationConverter::create(const Relationship& relationship)
{
    switch (relationship.kind) {
    case RelationshipKind::Generalization: {
        builder.count(Kind::Generalizations);
        auto* const added = builder.create<KivGeneralization>(relationship, documentationOf(relationship));
        added->visibility = numberOf(relationship.visibility);
        added->isVirtual = relationship.isVirtual;
        added->isFriend = relationship.isFriend;
        added->supertypes.add(classOf(relationship.supplier.id));
        added->subtypes.add(classOf(relationship.client.id));
        return added;
    }
    case RelationshipKind::Realization:
        builder.count(Kind::Realizations);
        return createDirected<KivRealization>(relationship);
    case RelationshipKind::Dependency:
        break;
    }
    builder.count(Kind::Dependencies);
    return createDirected<KivDependency>(relationship);
}

} // namespace design
