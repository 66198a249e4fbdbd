#include "designs/formats/staruml/Reading.h"
#include "designs/model/Texts.h"

#include <array>
#include <utility>

namespace design::staruml {

namespace {

constexpr std::array relationshipTypes = {
    NamedRelationship{"UMLGeneralization", RelationshipKind::Generalization},
    NamedRelationship{"UMLInterfaceRealization", RelationshipKind::Realization},
    NamedRelationship{"UMLRealization", RelationshipKind::Realization},
    NamedRelationship{"UMLDependency", RelationshipKind::Dependency},
    NamedRelationship{"UMLUsage", RelationshipKind::Dependency, "use"},
    NamedRelationship{"UMLAbstraction", RelationshipKind::Dependency, "abstraction"},
    NamedRelationship{"UMLRefinement", RelationshipKind::Dependency, "refine"},
    NamedRelationship{"UMLInclude", RelationshipKind::Dependency, "include"},
    NamedRelationship{"UMLExtend", RelationshipKind::Dependency, "extend"},
    NamedRelationship{"UMLTemplateBinding", RelationshipKind::Dependency, "bind"},
};

constexpr std::string_view associationType = "UMLAssociation";

void readRelationship(Reading& reading, const Object& object, const NamedRelationship& type, Package& package)
{
    Relationship relationship;
    reading.describe(object, relationship, package);
    relationship.kind = type.kind;
    if (relationship.stereotype.empty())
        relationship.stereotype = type.stereotype;
    relationship.visibility = visibilityNamed(json::text(object, "visibility"));
    relationship.client = reading.referenceTo(referenceIn(object, "source"));
    relationship.supplier = reading.referenceTo(referenceIn(object, "target"));
    if (const std::string_view mapping = json::text(object, "mapping"); !mapping.empty())
        relationship.constraints.emplace_back(mapping);
    package.relationships.push_back(std::move(relationship));
}

AssociationEnd readEnd(Reading& reading, const Object& object, Package& package)
{
    AssociationEnd end;
    reading.describe(object, end, package);
    end.participant = reading.referenceTo(referenceIn(object, "reference"));
    end.multiplicity = parseMultiplicity(json::text(object, "multiplicity"));
    end.visibility = visibilityNamed(json::text(object, "visibility"));
    end.aggregation = aggregationNamed(json::text(object, "aggregation"));
    end.isDerived = json::flag(object, "isDerived");
    end.isNavigable = json::flag(object, "navigable") || json::text(object, "navigable") == "navigable";
    for (const auto& [key, word] : {std::pair{"isReadOnly", "readOnly"}, std::pair{"isOrdered", "ordered"}})
        if (json::flag(object, key))
            end.constraints.emplace_back(word);
    json::forEach(object, "qualifiers", [&](const Object& qualifier) {
        end.qualifiers.push_back(readAttribute(reading, qualifier, package));
    });
    return end;
}

// Whether the file leaves open if the end can be reached.
bool isNavigabilityOpen(const Object& end)
{
    bool flag = false;
    const std::string_view word = json::text(end, "navigable");
    return end["navigable"].get(flag) != simdjson::SUCCESS && (word.empty() || word == "unspecified");
}

// An end that says nothing about it can be reached, unless the other one alone says that it can.
void settleNavigability(const std::array<Object, 2>& objects, std::vector<AssociationEnd>& ends)
{
    const std::array isReached = {ends[0].isNavigable, ends[1].isNavigable};
    for (std::size_t i = 0; i < objects.size(); ++i)
        if (isNavigabilityOpen(objects[i]))
            ends[i].isNavigable = !isReached[1 - i];
}

void readAssociation(Reading& reading, const Object& object, Package& package)
{
    Association association;
    reading.describe(object, association, package);
    association.isDerived = json::flag(object, "isDerived");
    association.associationClassId = reading.associationClassOf(idOf(object));
    std::array<Object, 2> ends;
    if (object["end1"].get(ends[0]) == simdjson::SUCCESS && object["end2"].get(ends[1]) == simdjson::SUCCESS) {
        for (const Object& end : ends)
            association.ends.push_back(readEnd(reading, end, package));
        settleNavigability(ends, association.ends);
    }
    package.associations.push_back(std::move(association));
}

} // namespace

bool isRelation(std::string_view type)
{
    return type == associationType || rowOf(relationshipTypes, type);
}

void readRelation(Reading& reading, const Object& object, Package& package)
{
    if (const auto* const type = rowOf(relationshipTypes, typeOf(object)))
        readRelationship(reading, object, *type, package);
    else
        readAssociation(reading, object, package);
}

} // namespace design::staruml
