#include "kiv/KivObject.h"

#include <array>
#include <atomic>

namespace {

constexpr std::size_t codeCount = static_cast<std::size_t>(KivElementType::Package) + 1;

constexpr std::array<bool, codeCount> modelObjects = [] {
    std::array<bool, codeCount> result = {};
    for (std::size_t code = 0; code < codeCount; ++code)
        result[code] = isInstance(static_cast<KivElementType>(code), KivElementType::ModelObject);
    return result;
}();

} // namespace

KivTraversalOperation::~KivTraversalOperation() = default;
void KivTraversalOperation::pre_process(KivObject* /*object*/, void*& /*context*/) {}
void KivTraversalOperation::post_process(KivObject* /*object*/, void* /*context*/) {}

KivObject::KivObject(KivElementType code) : elementType(code) {}
KivObject::~KivObject() = default;

bool KivObject::isInstanceOf(KivElementType code) const
{
    if (code == KivElementType::ModelObject) // what passes over a whole model ask of every object
        return modelObjects[static_cast<std::size_t>(elementType)];
    return isInstance(elementType, code);
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

void KivObject::fetch(int /*step*/) const noexcept {}

void KivObject::_depthTraversal(KivTraversalOperation& /*operation*/, void* /*context*/) {}

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
