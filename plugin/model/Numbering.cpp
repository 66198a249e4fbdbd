#include "model/Numbering.h"

#include "model/NumberBlocks.h"

#include <optional>

namespace {

// How many numbers an object reserves; what is no model object has none.
std::optional<long> blockSize(const KivObject& object)
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
        return object.isInstanceOf(KivElementType::ModelObject) ? std::optional<long>(1) : std::nullopt;
    }
}

} // namespace

void KivSetPID::post_process(KivObject* object, void* /*context*/)
{
    const std::optional<long> size = blockSize(*object);
    if (!size)
        return;
    static_cast<KivModelObject*>(object)->pid = counter;
    counter += *size;
    if (object->elementType == KivElementType::ClassDiagram)
        ++diagramCount;
}

void KivZeroPID::post_process(KivObject* object, void* /*context*/)
{
    if (object->isInstanceOf(KivElementType::ModelObject))
        static_cast<KivModelObject*>(object)->pid = 0;
}
