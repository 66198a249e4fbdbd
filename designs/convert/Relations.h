#pragma once

#include "designs/convert/Classes.h"

#include <string_view>
#include <unordered_map>

namespace design {

/// The classes that classifiers have become, by identifier.
using ClassesById = std::unordered_map<std::string_view, KivClass*>;

/// Makes the relations between classes.
class RelationConverter {
public:
    RelationConverter(ModelBuilder& theBuilder, ClassConverter& theFeatures, const ClassesById& theClasses)
        : builder(theBuilder), features(theFeatures), classes(theClasses)
    {
    }

    [[nodiscard]] KivAssociation* create(const Association& association);
    [[nodiscard]] KivRelationship* create(const Relationship& relationship);

    /// Another class gets the supertype of the generalization.
    void addSubtype(KivGeneralization& generalization, const Relationship& relationship);

private:
    [[nodiscard]] KivClass* classOf(std::string_view id) const;
    [[nodiscard]] KivAssociationRole* createRole(const Association& association, const AssociationEnd& end);
    template <class Directed>
    [[nodiscard]] KivRelationship* createDirected(const Relationship& relationship);

    ModelBuilder& builder;
    ClassConverter& features;
    const ClassesById& classes;
};

} // namespace design
