#include "kiv/KivClass.h"

KivArgument::KivArgument() : KivModelObject(KivElementType::Argument) {}
KivOperation::KivOperation() : KivModelObject(KivElementType::Operation) {}
KivAttribute::KivAttribute() : KivStructuralFeature(KivElementType::Attribute) {}
KivClass::KivClass() : KivClassifier(KivElementType::Class) {}

void KivOperation::_depthTraversal(KivTraversalOperation& operation, void* context)
{
    visitAll(arguments, operation, context);
}

void KivClass::fetch(int step) const noexcept
{
    switch (step) {
    case 0:
        fetchBytes(sizeof(KivClass));
        return;
    case 1:
        attributes.fetchPlaces();
        operations.fetchPlaces();
        return;
    case 2:
        attributes.fetchElements();
        operations.fetchEach([](const KivOperation& each) {
            fetchMemory(&each);
            fetchMemory(&each.arguments);
        });
        return;
    case 3:
        operations.fetchEach([](const KivOperation& each) { each.arguments.fetchPlaces(); });
        return;
    case 4:
        operations.fetchEach([](const KivOperation& each) { each.arguments.fetchElements(); });
        return;
    case 5:
        fetchTexts();
        attributes.fetchEach([](const KivAttribute& each) {
            each.fetchTexts();
            fetchMemory(&each.type);
        });
        operations.fetchEach([](const KivOperation& each) { each.fetchTexts(); });
        return;
    case 6:
        operations.fetchEach([](const KivOperation& each) {
            each.arguments.fetchEach([](const KivArgument& argument) {
                argument.fetchTexts();
                fetchMemory(&argument.type);
            });
        });
        return;
    default:
        return;
    }
}

void KivClass::_depthTraversal(KivTraversalOperation& operation, void* context)
{
    visitAll(attributes, operation, context);
    visitAll(operations, operation, context);
    visitAll(parameters, operation, context);
    visitAll(keys, operation, context);
}
