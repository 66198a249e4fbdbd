#include "kiv/KivClass.h"

#include <algorithm>

namespace {

// Of how many operations of a class the arguments are asked for before they are visited.
constexpr std::size_t mostFetched = 16;

} // namespace

KivArgument::KivArgument() : KivModelObject(KivElementType::Argument) {}
KivOperation::KivOperation() : KivModelObject(KivElementType::Operation) {}
KivAttribute::KivAttribute() : KivStructuralFeature(KivElementType::Attribute) {}
KivClass::KivClass() : KivClassifier(KivElementType::Class) {}

void KivOperation::_depthTraversal(KivTraversalOperation& operation, void* context)
{
    visitAll(arguments, operation, context);
}

void KivClass::fetchParts() const noexcept
{
    fetchBytes(sizeof(KivClass));
    attributes.fetchPlaces();
    operations.fetchPlaces();
}

void KivClass::fetchContents() const noexcept
{
    attributes.fetchElements();
    operations.fetchElements();
}

void KivClass::_depthTraversal(KivTraversalOperation& operation, void* context)
{
    const std::size_t fetched = std::min(operations.count(), mostFetched);
    for (std::size_t i = 0; i < fetched; ++i)
        if (const KivOperation* const each = operations.at(i))
            each->arguments.fetchPlaces();
    visitAll(attributes, operation, context);
    for (std::size_t i = 0; i < fetched; ++i)
        if (const KivOperation* const each = operations.at(i))
            each->arguments.fetchElements();
    visitAll(operations, operation, context);
    visitAll(parameters, operation, context);
    visitAll(keys, operation, context);
}
