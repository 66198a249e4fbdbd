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
    using KivModelElement::KivModelElement;
};

/// One end of an association.
class __attribute__((visibility("default"))) KivAssociationRole final : public KivModelObject {
public:
    KivAssociationRole();

    /// Fills `view` with the role's own qualifier attributes in ascending position.
    void getQualifierAttributeByPosition(KivAttributeByPosition& view) const { view.fill(qualifiers); }

    KivClass* participant = nullptr; ///< the class at this end; a role without one is not exported
    KivKey* key = nullptr;           ///< the key behind the role, or null
    KivString constraint;
    KivVector<KivAttribute> qualifiers;
    KivMultiplicity multiplicity;
    int visibility = 0;  ///< 0 public, 1 protected, 2 private, other implementation
    int containment = 2; ///< 0 by value, 1 by reference, other unspecified
    bool isAggregateEnd = false;
    bool isNavigable = false;
    bool isStatic = false;
    bool isFriend = false;

protected:
    void _depthTraversal(KivTraversalOperation& operation, void* context) override;
};

class __attribute__((visibility("default"))) KivAssociation final : public KivRelationship {
public:
    KivAssociation();

    KivVector<KivAssociationRole> roles;
    KivClass* associationClass = nullptr; ///< or null
    KivString constraint;
    bool isAggregation = false;

protected:
    void _depthTraversal(KivTraversalOperation& operation, void* context) override;
};

class __attribute__((visibility("default"))) KivGeneralization final : public KivRelationship {
public:
    KivGeneralization();

    /// A place may hold null: it counts for the numbers formed from indexes, and gives no entry in the file.
    KivVector<KivClass> supertypes;
    KivVector<KivClass> subtypes;
    int visibility = 0; ///< 0 public, 1 protected, 2 private, other implementation
    bool isVirtual = false;
    bool isFriend = false;
};

class __attribute__((visibility("default"))) KivDependency final : public KivRelationship {
public:
    KivDependency();

    KivClass* client = nullptr;   ///< the using class
    KivClass* supplier = nullptr; ///< the used class
};

class __attribute__((visibility("default"))) KivRealization final : public KivRelationship {
public:
    KivRealization();

    KivClass* client = nullptr;   ///< the realizing class
    KivClass* supplier = nullptr; ///< the realized interface
};
