#pragma once

#include "kiv/KivClass.h"

/// How many objects stand at an end of an association; may be absent.
struct __attribute__((visibility("default"))) KivMultiplicity {
    int lower = 0;
    int upper = 0;
    bool isPresent = false;
};

/// Gives the bounds of a multiplicity; -1 means unlimited. An absent multiplicity gives 0 and 0.
__attribute__((visibility("default"))) void decodeMultiplicity(const KivMultiplicity& multiplicity, int* lower,
                                                               int* upper);

/// The cardinality text of two bounds: `n` when both are unlimited (-1), one number when they are equal, else lower,
/// two dots, upper, with `n` for unlimited.
[[nodiscard]] __attribute__((visibility("default"))) KivString buildMultiplicity(int lower, int upper);

class __attribute__((visibility("default"))) KivRelationship : public KivModelElement {
protected:
    explicit KivRelationship(KivElementType code = KivElementType::Relationship);
};

/// One end of an association.
class __attribute__((visibility("default"))) KivAssociationRole : public KivModelObject {
public:
    KivAssociationRole();

    /// Fills `view` with the role's own qualifier attributes in ascending position.
    void getQualifierAttributeByPosition(KivAttributeByPosition& view) const { view.fill(qualifiers); }
    void _depthTraversal(KivTraversalOperation& operation, void* context) override;

    KivClass* participant = nullptr; ///< the class at this end; a role without one is not exported
    KivKey* key = nullptr;           ///< the key behind the role, or null
    KivString constraint;
    KivVector<KivAttribute> qualifiers;
    KivMultiplicity multiplicity;
    int visibility = KivVisibility::Public;
    int containment = KivContainment::Unspecified;
    bool isAggregateEnd = false;
    bool isNavigable = false;
    bool isStatic = false;
    bool isFriend = false;
};

/// The names that the foreign key behind a role gives to what it refers to.
class __attribute__((visibility("default"))) KivAssociationRoleNameMap : public KivModelObject {
public:
    KivAssociationRoleNameMap();
};

class __attribute__((visibility("default"))) KivAssociation : public KivRelationship {
public:
    KivAssociation();

    void _depthTraversal(KivTraversalOperation& operation, void* context) override;

    KivVector<KivAssociationRole> roles;
    KivClass* associationClass = nullptr; ///< or null
    KivString constraint;
    bool isAggregation = false;
};

class __attribute__((visibility("default"))) KivGeneralization : public KivRelationship {
public:
    KivGeneralization();

    /// A place may hold null: it counts for the numbers formed from indexes, and gives no entry in the file.
    KivVector<KivClass> supertypes;
    KivVector<KivClass> subtypes;
    int visibility = KivVisibility::Public;
    bool isVirtual = false;
    bool isFriend = false;
};

class __attribute__((visibility("default"))) KivDependency : public KivRelationship {
public:
    KivDependency();

    KivClass* client = nullptr;   ///< the using class
    KivClass* supplier = nullptr; ///< the used class
};

class __attribute__((visibility("default"))) KivRealization : public KivRelationship {
public:
    KivRealization();

    KivClass* client = nullptr;   ///< the realizing class
    KivClass* supplier = nullptr; ///< the realized interface
};
