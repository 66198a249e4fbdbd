#include "modelfile/write/ModelOutput.h"

namespace modelfile {

namespace {

// The text that hosts show, where it says both bounds.
void writeMultiplicity(ModelOutput& out, const KivMultiplicity& multiplicity)
{
    const auto& [lower, upper, isPresent] = multiplicity;
    if (!isPresent)
        return;
    if (lower >= -1 && upper >= -1)
        out.json.member("multiplicity", buildMultiplicity(lower, upper).view());
    else
        out.json.beginObject("multiplicity").member("lower", lower).member("upper", upper).endObject();
}

void writeRole(ModelOutput& out, const KivAssociationRole& role)
{
    out.common(role);
    out.reference(role, "participant", role.participant);
    writeMultiplicity(out, role.multiplicity);
    out.flag("isAggregateEnd", role.isAggregateEnd);
    out.flag("isNavigable", role.isNavigable);
    out.flag("isStatic", role.isStatic);
    out.flag("isFriend", role.isFriend);
    out.code("visibility", role.visibility, 0, visibilityNames);
    out.code("containment", role.containment, 2, containmentNames);
    out.text(role, "constraint", role.constraint);
    out.reference(role, "key", role.key);
    out.list("qualifiers", "qualifier", role.qualifiers, role,
             [&](const KivAttribute& qualifier, std::size_t index) { writeAttribute(out, qualifier, index); });
    out.projections(role);
}

template <class Relationship>
void writeClientAndSupplier(ModelOutput& out, const Relationship& relationship)
{
    out.common(relationship);
    out.reference(relationship, "client", relationship.client);
    out.reference(relationship, "supplier", relationship.supplier);
    out.projections(relationship);
}

} // namespace

void writeAssociation(ModelOutput& out, const KivAssociation& association)
{
    out.common(association);
    out.flag("isAggregation", association.isAggregation);
    out.text(association, "constraint", association.constraint);
    out.reference(association, "associationClass", association.associationClass);
    out.list("roles", "role", association.roles, association,
             [&](const KivAssociationRole& role, std::size_t) { writeRole(out, role); });
    out.projections(association);
}

void writeGeneralization(ModelOutput& out, const KivGeneralization& generalization)
{
    out.common(generalization);
    out.references(generalization, "supertypes", generalization.supertypes);
    out.references(generalization, "subtypes", generalization.subtypes);
    out.code("visibility", generalization.visibility, 0, visibilityNames);
    out.flag("isVirtual", generalization.isVirtual);
    out.flag("isFriend", generalization.isFriend);
    out.projections(generalization);
}

void writeDependency(ModelOutput& out, const KivDependency& dependency)
{
    writeClientAndSupplier(out, dependency);
}

void writeRealization(ModelOutput& out, const KivRealization& realization)
{
    writeClientAndSupplier(out, realization);
}

} // namespace modelfile
