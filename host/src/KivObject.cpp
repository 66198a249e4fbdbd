#include "kiv/KivObject.h"

#include <atomic>

KivTraversalOperation::~KivTraversalOperation() = default;
void KivTraversalOperation::pre_process(KivObject* /*object*/, void*& /*context*/) {}
void KivTraversalOperation::post_process(KivObject* /*object*/, void* /*context*/) {}

KivObject::KivObject(KivElementType code) : elementType(code) {}
KivObject::~KivObject() = default;

bool KivObject::isInstanceOf(KivElementType code) const
{
    for (KivElementType own = elementType; own != code; own = baseOf(own))
        if (own == KivElementType::Object)
            return false;
    return true;
}

void KivObject::setName(const KivString& newName)
{
    name = newName;
}

const KivString& KivObject::getName() const
{
    return name;
}

void KivObject::depthTraversal(KivTraversalOperation& operation, void* context)
{
    static std::atomic<std::uint32_t> passes = 0;
    operation.pass = ++passes;
    visit(this, operation, context);
}

void KivObject::_depthTraversal(KivTraversalOperation& /*operation*/, void* /*context*/) {}

bool KivObject::enter(const KivTraversalOperation& operation) noexcept
{
    if (lastPass == operation.pass)
        return false;
    lastPass = operation.pass;
    return true;
}

void KivObject::visit(KivObject* object, KivTraversalOperation& operation, void* context)
{
    if (!object || !object->enter(operation))
        return;
    operation.pre_process(object, context);
    object->_depthTraversal(operation, context);
    operation.post_process(object, context);
}

KivNote::KivNote() : KivObject(KivElementType::Note) {}

KivProjection::KivProjection() : KivProjection(KivElementType::Projection) {}
KivProjection::KivProjection(KivElementType code) : KivPresentationElement(code) {}

KivRelationshipProjection::KivRelationshipProjection() : KivProjection(KivElementType::RelationshipProjection) {}
