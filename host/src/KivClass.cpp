#include "kiv/KivClass.h"

KivArgument::KivArgument() : KivModelObject(KivElementType::Argument) {}
KivOperation::KivOperation() : KivModelObject(KivElementType::Operation) {}
KivAttribute::KivAttribute() : KivStructuralFeature(KivElementType::Attribute) {}
KivFeature::KivFeature(KivElementType code) : KivModelObject(code) {}
KivStructuralFeature::KivStructuralFeature(KivElementType code) : KivFeature(code) {}
KivClassifier::KivClassifier(KivElementType code) : KivModelElement(code) {}
KivClass::KivClass() : KivClassifier(KivElementType::Class) {}
KivJoin::KivJoin() : KivClassifier(KivElementType::Join) {}
KivJoinRole::KivJoinRole() : KivModelObject(KivElementType::JoinRole) {}

void KivOperation::_depthTraversal(KivTraversalOperation& operation, void* context)
{
    visitAll(arguments, operation, context);
}

void KivClass::_depthTraversal(KivTraversalOperation& operation, void* context)
{
    visitAll(attributes, operation, context);
    visitAll(operations, operation, context);
    visitAll(parameters, operation, context);
    visitAll(keys, operation, context);
}
