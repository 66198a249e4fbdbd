#include "modelfile/write/KnownClasses.h"

#include "kiv/KivPackage.h"

#include <typeinfo>

namespace modelfile {

bool isKnownClass(const KivObject& object)
{
    const std::type_info& type = typeid(object);
    switch (object.elementType) {
    case KivElementType::Note:
        return type == typeid(KivNote);
    case KivElementType::BaseType:
        return type == typeid(KivBaseType);
    case KivElementType::DerivedType:
        return type == typeid(KivDerivedType);
    case KivElementType::TypeValue:
        return type == typeid(KivTypeValue);
    case KivElementType::Package:
        return type == typeid(KivPackage);
    case KivElementType::DesignPackage:
        return type == typeid(KivDesignPackage);
    case KivElementType::Diagram:
        return type == typeid(KivDiagram);
    case KivElementType::ClassDiagram:
        return type == typeid(KivClassDiagram);
    case KivElementType::Class:
        return type == typeid(KivClass);
    case KivElementType::Attribute:
        return type == typeid(KivAttribute);
    case KivElementType::Operation:
        return type == typeid(KivOperation);
    case KivElementType::Argument:
        return type == typeid(KivArgument);
    case KivElementType::CandidateKey:
        return type == typeid(KivCandidateKey);
    case KivElementType::ForeignKey:
        return type == typeid(KivForeignKey);
    case KivElementType::Association:
        return type == typeid(KivAssociation);
    case KivElementType::AssociationRole:
        return type == typeid(KivAssociationRole);
    case KivElementType::Generalization:
        return type == typeid(KivGeneralization);
    case KivElementType::Dependency:
        return type == typeid(KivDependency);
    case KivElementType::Realization:
        return type == typeid(KivRealization);
    case KivElementType::Projection:
        return type == typeid(KivProjection);
    case KivElementType::RelationshipProjection:
        return type == typeid(KivRelationshipProjection);
    default:
        return false;
    }
}

} // namespace modelfile
