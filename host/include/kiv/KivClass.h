#pragma once

#include "kiv/KivKey.h"
#include "kiv/KivType.h"

class KivDependency;
class KivGeneralization;
class KivRealization;

/// An argument of an operation, or a template parameter of a class.
class __attribute__((visibility("default"))) KivArgument final : public KivModelObject {
public:
    KivArgument();
    static constexpr bool endsPasses = true;

    std::int16_t position = 0;
    KivType* type = nullptr; ///< null: no type
    KivString initialValue;
};

class __attribute__((visibility("default"))) KivOperation final : public KivModelObject {
public:
    KivOperation();

    int visibility = 0; ///< 0 public, 1 protected, 2 private, other implementation
    KivLinkTree<KivArgument> arguments;
    KivType* returnType = nullptr; ///< null: no result
    KivString semantics;
    KivString preCondition;
    KivString postCondition;
    int concurrency = 0; ///< 0 sequential, 1 guarded, 2 active, other synchronous
    std::int16_t position = 0;
    bool isAbstract = false;
    bool isFriend = false;
    bool isStatic = false;
    bool isVirtual = false;

protected:
    void _depthTraversal(KivTraversalOperation& operation, void* context) override;
};

class __attribute__((visibility("default"))) KivFeature : public KivModelObject {
protected:
    using KivModelObject::KivModelObject;
};

class __attribute__((visibility("default"))) KivStructuralFeature : public KivFeature {
protected:
    using KivFeature::KivFeature;
};

/// An attribute of a class, or a qualifier of an association role.
class __attribute__((visibility("default"))) KivAttribute final : public KivStructuralFeature {
public:
    KivAttribute();
    static constexpr bool endsPasses = true;

    int visibility = 0;      ///< 0 public, 1 protected, 2 private, other implementation
    KivType* type = nullptr; ///< null: no type
    KivString initialValue;
    KivVector<KivKey> keys; ///< the candidate and foreign keys that the attribute belongs to
    KivKeyMappings keyMappings;
    int containment = 2; ///< 0 by value, 1 by reference, other unspecified
    std::int16_t position = 0;
    bool isStatic = false;
    bool isDerived = false;
};

class __attribute__((visibility("default"))) KivClassifier : public KivModelElement {
protected:
    using KivModelElement::KivModelElement;
};

class __attribute__((visibility("default"))) KivClass final : public KivClassifier {
public:
    KivClass();

    [[nodiscard]] std::size_t getAttributeCount() const noexcept { return attributes.count(); }
    /// `index` must be below `getAttributeCount()`.
    [[nodiscard]] KivAttribute* getAttribute(std::size_t index) const noexcept { return attributes.at(index); }
    /// Fills `view` with the operations in ascending position.
    void getOperationByPosition(KivOperationByPosition& view) const { view.fill(operations); }

    KivVector<KivAttribute> attributes;
    KivVector<KivOperation> operations;
    KivLinkTree<KivArgument> parameters;
    KivVector<KivKey> keys;
    KivVector<KivGeneralization> generalizations; ///< those in which the class is a subtype
    KivLinkTree<KivRealization> realizations;     ///< those whose client is the class
    KivLinkTree<KivDependency> dependencies;      ///< those whose client is the class
    KivLinkTree<KivObject> links;                 ///< among others every class diagram that draws the class
    KivString cardinality;
    /// 0 data class, 1 class, 2 parameterized class, 3 instantiated class, 4 class utility, 5 parameterized class
    /// utility, 6 instantiated class utility, 8 metaclass, 9 interface, other class.
    int classType = 1;
    int visibility = 0;  ///< 0 public, other implementation
    int concurrency = 0; ///< 0 sequential, 1 guarded, 2 active, other synchronous
    int space = 0;
    bool isAbstract = false;
    bool isPersistent = false;

protected:
    void _depthTraversal(KivTraversalOperation& operation, void* context) override;
};
