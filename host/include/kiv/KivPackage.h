#pragma once

#include "kiv/KivRelationship.h"

#include <memory>

class KivDesignPackage;
class KivDiagram;

/// A package. A package has one parent; `childPackages` is read by anyone and changed through the operations here.
class __attribute__((visibility("default"))) KivPackage : public KivModelObject {
public:
    KivPackage();

    /// Makes `package` the last child of this one; it leaves the parent it had. Throws `std::bad_alloc` and changes
    /// nothing when there is no memory for it (see `KivSequence::reserve`).
    void addChildPackage(KivPackage* package);
    /// Takes `package` out of this one's children; nothing happens when it is not among them.
    void removeChildPackage(KivPackage* package);
    /// Makes room: the next `additional` children are added without allocating.
    void reserveChildPackages(std::size_t additional);
    /// The same as `package->addChildPackage` of this one.
    void addParentPackage(KivPackage* package);
    /// The package that this one is a child of, or null.
    [[nodiscard]] KivPackage* getParent() const override { return parent; }
    void setName(const KivString& newName) override;
    void _depthTraversal(KivTraversalOperation& operation, void* context) override;

    KivNameLinkTree<KivPackage> childPackages;
    KivVector<KivDiagram> diagrams;
    /// Classes, relationships and loose notes.
    KivVector<KivObject> modelElements;

protected:
    explicit KivPackage(KivElementType code);
    /// Visits what the package holds besides and before what every package holds. A pass goes through packages within
    /// packages without a call of `_depthTraversal` for each, so this is what a package with more in it overrides.
    virtual void traverseOwnContents(KivTraversalOperation& operation, void* context);

private:
    // Whether this is the parent of all its children; then a package of another parent is none of them.
    [[nodiscard]] bool areChildrenItsOwn() const noexcept { return parentOf == childPackages.count(); }
    void setParent(KivPackage* newParent) noexcept;

    KivPackage* parent = nullptr;
    std::size_t parentOf = 0; // so many packages

    // Where a pass through the tree stands; kept here because the tree may be deeper than any stack.
    struct TraversalState {
        KivPackage* cameFrom = nullptr;
        void* context = nullptr;
        std::size_t nextChild = 0;
    } traversal;
    void beginTraversal(KivTraversalOperation& operation, KivPackage* cameFrom, void* context);
    void endTraversal(KivTraversalOperation& operation);
};

class __attribute__((visibility("default"))) KivDesignPackage : public KivPackage {
public:
    KivDesignPackage();
};

class __attribute__((visibility("default"))) KivDiagram : public KivModelObject {
public:
    KivDiagram();

protected:
    explicit KivDiagram(KivElementType code);
};

class __attribute__((visibility("default"))) KivClassDiagram : public KivDiagram {
public:
    KivClassDiagram();

    KivPackage* package = nullptr;        ///< the package that lists the diagram; never null in a complete model
    KivLinkTree<KivModelObject> elements; ///< what is drawn, in order
};

/// A design, and the owner of the objects it is made of.
class __attribute__((visibility("default"))) KivModel : public KivPackage {
public:
    KivModel();
    ~KivModel() override;

    /// Makes an object that lives as long as the model. It stands nowhere yet: add it to the collection that is to
    /// hold it. Defined for every class that can be made.
    template <class Element>
    Element* create();

    KivVector<KivType> types;

protected:
    void traverseOwnContents(KivTraversalOperation& operation, void* context) override;

private:
    struct Store;
    std::unique_ptr<Store> store;
};
