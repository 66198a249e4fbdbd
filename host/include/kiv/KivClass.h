#pragma once

#include "kiv/KivCodes.h"
#include "kiv/KivKey.h"
#include "kiv/KivType.h"

class KivDependency;
class KivGeneralization;
class KivRealization;

/// An argument of an operation, or a template parameter of a class.
class __attribute__((visibility("default"))) KivArgument : public KivModelObject {
public:
    KivArgument();

    std::int16_t position = 0;
    KivType* type = nullptr; ///< null: no type
    KivString initialValue;
};

class __attribute__((visibility("default"))) KivOperation : public KivModelObject {
public:
    KivOperation();

    void _depthTraversal(KivTraversalOperation& operation, void* context) override;

    int visibility = KivVisibility::Public;
    KivLinkTree<KivArgument> arguments;
    KivType* returnType = nullptr; ///< null: no result
    KivString semantics;
    KivString preCondition;
    KivString postCondition;
    int concurrency = KivConcurrency::Sequential;
    std::int16_t position = 0;
    bool isAbstract = false;
    bool isFriend = false;
    bool isStatic = false;
    bool isVirtual = false;
};

class __attribute__((visibility("default"))) KivFeature : public KivModelObject {
protected:
    explicit KivFeature(KivElementType code = KivElementType::Feature);
};

class __attribute__((visibility("default"))) KivStructuralFeature : public KivFeature {
protected:
    explicit KivStructuralFeature(KivElementType code = KivElementType::StructuralFeature);
};

/// An attribute of a class, or a qualifier of an association role.
class __attribute__((visibility("default"))) KivAttribute : public KivStructuralFeature {
public:
    KivAttribute();

    int visibility = KivVisibility::Public;
    KivType* type = nullptr; ///< null: no type
    KivString initialValue;
    KivVector<KivKey> keys; ///< the candidate and foreign keys that the attribute belongs to
    KivKeyMappings keyMappings;
    int containment = KivContainment::Unspecified;
    std::int16_t position = 0;
    bool isStatic = false;
    bool isDerived = false;
};

class __attribute__((visibility("default"))) KivClassifier : public KivModelElement {
protected:
    explicit KivClassifier(KivElementType code = KivElementType::Classifier);
};

class __attribute__((visibility("default"))) KivClass : public KivClassifier {
public:
    KivClass();

    [[nodiscard]] std::size_t getAttributeCount() const noexcept { return attributes.count(); }
    /// `index` must be below `getAttributeCount()`.
    [[nodiscard]] KivAttribute* getAttribute(std::size_t index) const noexcept { return attributes.at(index); }
    /// Fills `view` with the operations in ascending position.
    void getOperationByPosition(KivOperationByPosition& view) const { view.fill(operations); }
    void _depthTraversal(KivTraversalOperation& operation, void* context) override;

    KivVector<KivAttribute> attributes;
    KivVector<KivOperation> operations;
    KivLinkTree<KivArgument> parameters;
    KivVector<KivKey> keys;
    KivVector<KivGeneralization> generalizations; ///< those in which the class is a subtype
    KivLinkTree<KivRealization> realizations;     ///< those whose client is the class
    KivLinkTree<KivDependency> dependencies;      ///< those whose client is the class
    KivLinkTree<KivObject> links;                 ///< among others every class diagram that draws the class
    KivString cardinality;
    int classType = KivClassType::Class;
    int visibility = KivVisibility::Public;
    int concurrency = KivConcurrency::Sequential;
    int space = 0;
    bool isAbstract = false;
    bool isPersistent = false;
};

/// A join of classes: data that comes from several of them.
class __attribute__((visibility("default"))) KivJoin : public KivClassifier {
public:
    KivJoin();
};

/// One of the classes in a join.
class __attribute__((visibility("default"))) KivJoinRole : public KivModelObject {
public:
    KivJoinRole();
};
