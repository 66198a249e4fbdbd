#include "kiv/KivObject.h"

#include <algorithm>
#include <atomic>
#include <utility>

void KivTraversalOperation::pre_process(KivObject* /*object*/, void*& /*context*/) {}
void KivTraversalOperation::post_process(KivObject* /*object*/, void* /*context*/) {}
KivTraversalOperation::~KivTraversalOperation() = default;

void KivSetGeneralPointerOperation::post_process(KivObject* object, void* /*context*/)
{
    object->generalPointer = value;
}

KivObject::KivObject(KivElementType code) : elementType(code) {}
KivObject::~KivObject() = default;

void KivObject::setFrom(const KivObject& /*other*/) {}
void KivObject::removeAggregationAssembly() {}
void KivObject::recursiveDelete() {}
void KivObject::isolate(bool /*isDeep*/) {}

bool KivObject::isInstanceOf(KivElementType code) const
{
    return isInstance(elementType, code);
}

KivObject* KivObject::getParent() const
{
    return nullptr;
}

int KivObject::getParentCount() const
{
    return getParent() ? 1 : 0;
}

bool KivObject::operator==(const KivObject& other) const
{
    return this == &other;
}

bool KivObject::operator!=(const KivObject& other) const
{
    return !(*this == other);
}

bool KivObject::equals(const KivObject& other) const
{
    return *this == other;
}

bool KivObject::isReferenced() const
{
    return false;
}

void KivObject::transcode(KivString (*convert)(const KivString&))
{
    KivString converted = convert(description);
    setName(convert(getName()));
    description = std::move(converted);
}

void KivObject::depthTraversal(KivTraversalOperation& operation, void* context)
{
    static std::atomic<std::uint32_t> passes = 0;
    operation.pass = ++passes;
    visit(this, operation, context);
}

void KivObject::setName(const KivString& newName)
{
    name = newName;
}

KivString KivObject::getDisplayName() const
{
    return getName();
}

void KivObject::_depthTraversal(KivTraversalOperation& /*operation*/, void* /*context*/) {}

const char* KivObject::getMetaClass() const
{
    const auto* const found = std::find_if(KivElementTree::classes.begin(), KivElementTree::classes.end(),
                                           [&](const KivElementClass& row) { return row.code == elementType; });
    return found == KivElementTree::classes.end() ? "KivObject" : found->name;
}

KivNote::KivNote() : KivObject(KivElementType::Note) {}

KivPresentationElement::KivPresentationElement(KivElementType code) : KivObject(code) {}
KivProjection::KivProjection() : KivProjection(KivElementType::Projection) {}
KivProjection::KivProjection(KivElementType code) : KivPresentationElement(code) {}
KivRelationshipProjection::KivRelationshipProjection() : KivProjection(KivElementType::RelationshipProjection) {}

KivModelObject::KivModelObject(KivElementType code) : KivObject(code) {}
KivModelElement::KivModelElement(KivElementType code) : KivModelObject(code) {}

KivMappingObject::KivMappingObject(KivElementType code) : KivObject(code) {}
KivClassifierMap::KivClassifierMap() : KivMappingObject(KivElementType::ClassifierMap) {}
KivTransformation::KivTransformation() : KivMappingObject(KivElementType::Transformation) {}
