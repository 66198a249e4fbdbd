#include "modelfile/write/KnownClasses.h"

#include "kiv/KivPackage.h"

#include <array>
#include <typeinfo>

namespace modelfile {

namespace {

struct KnownClass {
    KivElementType code;
    const std::type_info& type;
};

const KnownClass knownClasses[] = {
    {KivElementType::Note, typeid(KivNote)},
    {KivElementType::BaseType, typeid(KivBaseType)},
    {KivElementType::DerivedType, typeid(KivDerivedType)},
    {KivElementType::TypeValue, typeid(KivTypeValue)},
    {KivElementType::Package, typeid(KivPackage)},
    {KivElementType::DesignPackage, typeid(KivDesignPackage)},
    {KivElementType::Diagram, typeid(KivDiagram)},
    {KivElementType::ClassDiagram, typeid(KivClassDiagram)},
    {KivElementType::Class, typeid(KivClass)},
    {KivElementType::Attribute, typeid(KivAttribute)},
    {KivElementType::Operation, typeid(KivOperation)},
    {KivElementType::Argument, typeid(KivArgument)},
    {KivElementType::CandidateKey, typeid(KivCandidateKey)},
    {KivElementType::ForeignKey, typeid(KivForeignKey)},
    {KivElementType::Association, typeid(KivAssociation)},
    {KivElementType::AssociationRole, typeid(KivAssociationRole)},
    {KivElementType::Generalization, typeid(KivGeneralization)},
    {KivElementType::Dependency, typeid(KivDependency)},
    {KivElementType::Realization, typeid(KivRealization)},
    {KivElementType::Projection, typeid(KivProjection)},
    {KivElementType::RelationshipProjection, typeid(KivRelationshipProjection)},
};

using TypesByCode = std::array<const std::type_info*, static_cast<std::size_t>(KivElementType::Package) + 1>;

TypesByCode typesByCode()
{
    TypesByCode types = {};
    for (const KnownClass& known : knownClasses)
        types[static_cast<std::size_t>(known.code)] = &known.type;
    return types;
}

} // namespace

bool isKnownClass(const KivObject& object)
{
    static const TypesByCode types = typesByCode();
    const auto code = static_cast<std::size_t>(object.elementType);
    return code < types.size() && types[code] && *types[code] == typeid(object);
}

} // namespace modelfile
