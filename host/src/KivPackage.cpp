#include "kiv/KivPackage.h"

#include <memory>
#include <memory_resource>
#include <vector>

KivPackage::KivPackage() : KivPackage(KivElementType::Package) {}
KivPackage::KivPackage(KivElementType code) : KivModelObject(code) {}
KivDesignPackage::KivDesignPackage() : KivPackage(KivElementType::DesignPackage) {}
KivDiagram::KivDiagram() : KivDiagram(KivElementType::Diagram) {}
KivDiagram::KivDiagram(KivElementType code) : KivModelObject(code) {}
KivClassDiagram::KivClassDiagram() : KivDiagram(KivElementType::ClassDiagram) {}

void KivPackage::addChildPackage(KivPackage* package)
{
    if (package->parent == this && childPackages.contains(package))
        return;
    reserveChildPackages(1);
    if (package->parent)
        package->parent->removeChildPackage(package);
    if (areChildrenAdded())
        childPackages.addNew(package);
    else
        childPackages.add(package);
    package->parent = this;
    ++addedChildren;
}

void KivPackage::removeChildPackage(KivPackage* package)
{
    if (!childPackages.remove(package))
        return;
    if (package->parent == this)
        --addedChildren;
    package->parent = nullptr;
}

void KivPackage::reserveChildPackages(std::size_t additional)
{
    if (areChildrenAdded())
        childPackages.reserveNew(additional);
    else
        childPackages.reserve(additional);
}

void KivPackage::addParentPackage(KivPackage* package)
{
    package->addChildPackage(this);
}

void KivPackage::setName(const KivString& newName)
{
    const KivString oldName = name;
    KivModelObject::setName(newName);
    if (parent)
        parent->childPackages.rename(this, oldName);
}

void KivPackage::traverseOwnContents(KivTraversalOperation& /*operation*/, void* /*context*/) {}

void KivPackage::beginTraversal(KivTraversalOperation& operation, KivPackage* cameFrom, void* context)
{
    traversal = {cameFrom, context, 0};
    traverseOwnContents(operation, context);
    visitAll(modelElements, operation, context);
}

void KivPackage::endTraversal(KivTraversalOperation& operation)
{
    visitAll(diagrams, operation, traversal.context);
    visitAll(notes, operation, traversal.context);
}

// The tree below this package, walked along the packages' own state instead of by recursion.
void KivPackage::_depthTraversal(KivTraversalOperation& operation, void* context)
{
    beginTraversal(operation, nullptr, context);
    KivPackage* current = this;
    for (;;) {
        if (current->traversal.nextChild < current->childPackages.count()) {
            KivPackage* const child = current->childPackages.at(current->traversal.nextChild++);
            if (child->enter(operation)) {
                void* childContext = current->traversal.context;
                if (operation.hearsOfEntering)
                    operation.pre_process(child, childContext);
                child->beginTraversal(operation, current, childContext);
                current = child;
            }
            continue;
        }
        current->endTraversal(operation);
        if (current == this)
            return;
        operation.post_process(current, current->traversal.context);
        current = current->traversal.cameFrom;
    }
}

// Objects lie in memory one behind the other as they were made, whatever their class, since hosts make them in about
// the order in which tools pass over them.
struct KivModel::Store {
    template <class Element>
    Element* create()
    {
        auto* const place = static_cast<Element*>(memory.allocate(sizeof(Element), alignof(Element)));
        objects.push_back(std::unique_ptr<KivObject, Destroy>(std::construct_at(place)));
        return place;
    }

private:
    struct Destroy {
        void operator()(KivObject* object) const noexcept { std::destroy_at(object); }
    };

    std::pmr::monotonic_buffer_resource memory;
    std::vector<std::unique_ptr<KivObject, Destroy>> objects;
};

KivModel::KivModel() : KivPackage(KivElementType::Model), store(std::make_unique<Store>()) {}
KivModel::~KivModel() = default;

void KivModel::traverseOwnContents(KivTraversalOperation& operation, void* context)
{
    visitAll(types, operation, context);
}

template <class Element>
Element* KivModel::create()
{
    return store->create<Element>();
}

template KivNote* KivModel::create();
template KivProjection* KivModel::create();
template KivRelationshipProjection* KivModel::create();
template KivBaseType* KivModel::create();
template KivDerivedType* KivModel::create();
template KivTypeValue* KivModel::create();
template KivPackage* KivModel::create();
template KivDesignPackage* KivModel::create();
template KivDiagram* KivModel::create();
template KivClassDiagram* KivModel::create();
template KivClass* KivModel::create();
template KivAttribute* KivModel::create();
template KivOperation* KivModel::create();
template KivArgument* KivModel::create();
template KivCandidateKey* KivModel::create();
template KivForeignKey* KivModel::create();
template KivAssociation* KivModel::create();
template KivAssociationRole* KivModel::create();
template KivGeneralization* KivModel::create();
template KivDependency* KivModel::create();
template KivRealization* KivModel::create();
