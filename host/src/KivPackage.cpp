#include "kiv/KivPackage.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
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
    childPackages.reserve(1);
    if (package->parent)
        package->parent->childPackages.remove(package);
    if (areChildrenItsOwn())
        childPackages.append(package);
    else
        childPackages.add(package);
    package->setParent(this);
}

void KivPackage::removeChildPackage(KivPackage* package)
{
    const bool isStranger = package->parent != this && areChildrenItsOwn();
    if (!isStranger && childPackages.remove(package))
        package->setParent(nullptr);
}

void KivPackage::setParent(KivPackage* newParent) noexcept
{
    if (parent)
        --parent->parentOf;
    parent = newParent;
    if (parent)
        ++parent->parentOf;
}

void KivPackage::reserveChildPackages(std::size_t additional)
{
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
// the order in which tools pass over them. To find them again at the end, a byte for each is enough.
struct KivModel::Store {
    Store() = default;
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;
    ~Store()
    {
        for (const Block& block : blocks) {
            std::byte* at = block.memory.get();
            for (const std::uint8_t words : block.objects) {
                std::destroy_at(reinterpret_cast<KivObject*>(at));
                at += words * word;
            }
        }
    }

    template <class Element>
    Element* create()
    {
        static_assert(alignof(Element) <= word && sizeof(Element) % word == 0 && sizeof(Element) / word <= 0xFF);
        Block& block = blockFor(sizeof(Element));
        block.objects.push_back(static_cast<std::uint8_t>(sizeof(Element) / word));
        try {
            auto* const object = std::construct_at(reinterpret_cast<Element*>(block.memory.get() + block.used));
            block.used += sizeof(Element);
            return object;
        } catch (...) {
            block.objects.pop_back();
            throw;
        }
    }

private:
    static constexpr std::size_t word = 8;

    struct Block {
        std::unique_ptr<std::byte[]> memory;
        std::size_t size = 0;
        std::size_t used = 0;
        std::vector<std::uint8_t> objects; // their sizes in words
    };

    // The last block, or a new one when there is no room in it for that many bytes.
    Block& blockFor(std::size_t bytes)
    {
        constexpr std::size_t least = 4096;
        constexpr std::size_t most = std::size_t{1} << 20;
        if (blocks.empty() || blocks.back().size - blocks.back().used < bytes) {
            const std::size_t size = blocks.empty() ? least : std::min(2 * blocks.back().size, most);
            Block block;
            block.memory = std::make_unique_for_overwrite<std::byte[]>(size);
            block.size = size;
            blocks.push_back(std::move(block));
        }
        return blocks.back();
    }

    std::vector<Block> blocks;
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
template KivJoin* KivModel::create();
template KivJoinRole* KivModel::create();
template KivAssociationRoleNameMap* KivModel::create();
template KivClassifierMap* KivModel::create();
template KivTransformation* KivModel::create();
