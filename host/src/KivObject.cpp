#include "kiv/KivObject.h"

#include <atomic>

KivTraversalOperation::~KivTraversalOperation() = default;
void KivTraversalOperation::pre_process(KivObject* /*object*/, void*& /*context*/) {}
void KivTraversalOperation::post_process(KivObject* /*object*/, void* /*context*/) {}

KivObject::KivObject(KivElementType code) : elementType(code) {}
KivObject::~KivObject() = default;

bool KivObject::isInstanceOf(KivElementType code) const
{
    return isInstance(elementType, code);
}

void KivObject::setName(const KivString& newName)
{
    name = newName;
}

void KivObject::depthTraversal(KivTraversalOperation& operation, void* context)
{
    static std::atomic<std::uint32_t> passes = 0;
    operation.pass = ++passes;
    visit(this, operation, context);
}

void KivObject::_depthTraversal(KivTraversalOperation& /*operation*/, void* /*context*/) {}

KivNote::KivNote() : KivObject(KivElementType::Note) {}

KivProjection::KivProjection() : KivProjection(KivElementType::Projection) {}
KivProjection::KivProjection(KivElementType code) : KivPresentationElement(code) {}

KivRelationshipProjection::KivRelationshipProjection() : KivProjection(KivElementType::RelationshipProjection) {}
