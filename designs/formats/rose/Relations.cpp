#include "designs/formats/rose/Reading.h"

#include "designs/formats/shared/Kinds.h"
#include "designs/model/Texts.h"

#include <algorithm>
#include <array>
#include <utility>

namespace design::rose {

namespace {

struct RelationshipType {
    std::string_view type; // of the objects
    const char* list;      // key of the list that they stand in
    RelationshipKind kind;
    std::string_view stereotype = {};
};
constexpr std::array relationshipTypes = {
    RelationshipType{"Inheritance_Relationship", "superclasses", RelationshipKind::Generalization},
    RelationshipType{"Realize_Relationship", "realized_interfaces", RelationshipKind::Realization},
    RelationshipType{"Uses_Relationship", "used_nodes", RelationshipKind::Dependency},
    RelationshipType{"Dependency_Relationship", "used_nodes", RelationshipKind::Dependency},
    RelationshipType{"Instantiation_Relationship", "instantiation_relationship", RelationshipKind::Dependency, "bind"},
    RelationshipType{"Visibility_Relationship", "visible_categories", RelationshipKind::Dependency},
};

AssociationEnd readRole(const Reading& reading, const Object& role)
{
    AssociationEnd end;
    reading.describe(role, end);
    end.participant = reading.elementOf(role);
    end.multiplicity = parseMultiplicity(role.text("client_cardinality"));
    end.visibility = visibilityOf(role, "exportControl", Visibility::Public);
    end.containment = containmentOf(role);
    end.isNavigable = role.flag("is_navigable");
    end.isStatic = role.flag("static");
    end.isFriend = role.flag("friend");
    if (std::string constraint = role.text("Constraints"); !constraint.empty())
        end.constraints.push_back(std::move(constraint));
    for (const Object* const key : role.objects("keys"))
        end.qualifiers.push_back(readAttribute(reading, *key));
    return end;
}

// The whole is where the diamond is; its part is held by value in a composition.
void settleAggregation(const std::vector<const Object*>& roles, std::vector<AssociationEnd>& ends)
{
    for (std::size_t i = 0; i < ends.size(); ++i) {
        if (!roles[i]->flag("is_aggregate"))
            continue;
        const auto isPart = [&](const AssociationEnd& end) {
            return &end != &ends[i] && end.containment == Containment::ByValue;
        };
        const bool isComposite = std::any_of(ends.begin(), ends.end(), isPart);
        ends[i].aggregation = isComposite ? Aggregation::Composite : Aggregation::Shared;
    }
}

} // namespace

void readAssociation(Reading& reading, const Object& object, Package& package)
{
    Association association;
    reading.describe(object, association);
    const std::vector<const Object*> roles = object.objects("roles");
    for (const Object* const role : roles)
        association.ends.push_back(readRole(reading, *role));
    settleAggregation(roles, association.ends);
    association.isDerived = object.flag("derived");
    if (std::string constraint = object.text("Constraints"); !constraint.empty())
        association.constraints.push_back(std::move(constraint));
    if (const std::string name = object.text("AssociationClass"); !name.empty()) {
        const reader::Reference found = reading.index.lookUp("", name);
        association.associationClassId = found.element ? reading.idOf(*found.element) : name;
    }
    package.associations.push_back(std::move(association));
}

void readRelationships(Reading& reading, const Object& owner, Package& package)
{
    for (const RelationshipType& type : relationshipTypes)
        for (const Object* const object : owner.objects(type.list)) {
            if (object->kind() != type.type)
                continue;
            Relationship relationship;
            reading.describe(*object, relationship);
            relationship.name = object->text("label");
            relationship.kind = type.kind;
            addWord(relationship.stereotype, relationship.stereotype.empty() ? type.stereotype : std::string_view());
            relationship.visibility = visibilityOf(*object, "exportControl", Visibility::Public);
            relationship.isVirtual = object->flag("virtual");
            relationship.isFriend = object->flag("friend");
            relationship.client.id = reading.idOf(owner);
            relationship.supplier = reading.elementOf(*object);
            package.relationships.push_back(std::move(relationship));
        }
}

} // namespace design::rose
