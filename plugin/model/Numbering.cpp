#include "model/Numbering.h"

#include "model/NumberBlocks.h"

namespace {

long blockSize(const KivObject& object)
{
    switch (object.elementType) {
    case KivElementType::ClassDiagram:
        return classDiagramBlock::size;
    case KivElementType::Dependency:
        return dependencyBlock::size;
    case KivElementType::Association:
        return associationBlock::size + (static_cast<const KivAssociation&>(object).associationClass ? 1 : 0);
    case KivElementType::AssociationRole:
        return roleBlock::size;
    case KivElementType::Generalization:
        return GeneralizationBlock(static_cast<const KivGeneralization&>(object)).size();
    default:
        return 1;
    }
}

} // namespace

void KivSetPID::post_process(KivObject* object, void* /*context*/)
{
    if (!object->isInstanceOf(KivElementType::ModelObject))
        return;
    static_cast<KivModelObject*>(object)->pid = counter;
    counter += blockSize(*object);
    if (object->elementType == KivElementType::ClassDiagram)
        ++diagramCount;
}

void KivZeroPID::post_process(KivObject* object, void* /*context*/)
{
    if (object->isInstanceOf(KivElementType::ModelObject))
        static_cast<KivModelObject*>(object)->pid = 0;
}
