#include "model/Numbering.h"

long KivSetPID::blockSize(const KivObject& object)
{
    switch (object.elementType) {
    case KivElementType::ClassDiagram:
        return 3000;
    case KivElementType::Dependency:
        return 2;
    case KivElementType::Association:
        return static_cast<const KivAssociation&>(object).associationClass ? 5 : 4;
    case KivElementType::AssociationRole:
        return 4;
    case KivElementType::Generalization: {
        const auto& generalization = static_cast<const KivGeneralization&>(object);
        const auto subtypes = static_cast<long>(generalization.subtypes.count());
        const auto supertypes = static_cast<long>(generalization.supertypes.count());
        return (3 * subtypes + 1) * supertypes;
    }
    default:
        return 1;
    }
}

void KivSetPID::post_process(KivObject* object, void* /*context*/)
{
    if (!isModelObject(object->elementType))
        return;
    static_cast<KivModelObject*>(object)->pid = counter;
    counter += blockSize(*object);
    if (object->elementType == KivElementType::ClassDiagram)
        ++diagramCount;
}

void KivZeroPID::post_process(KivObject* object, void* /*context*/)
{
    if (isModelObject(object->elementType))
        static_cast<KivModelObject*>(object)->pid = 0;
}
