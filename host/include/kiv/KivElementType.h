#pragma once

#include <array>
#include <cstddef>

/// The element type codes: every object of a model carries one.
enum class KivElementType : int {
    Note = 1,
    Model = 2,
    Type = 3,
    BaseType = 4,
    DerivedType = 5,
    TypeValue = 7,
    DesignPackage = 9,
    Diagram = 10,
    ClassDiagram = 11,
    ModelElement = 12,
    Class = 13,
    Attribute = 14,
    Relationship = 15,
    Generalization = 16,
    Association = 17,
    AssociationRole = 18,
    AssociationRoleNameMap = 19,
    Key = 20,
    CandidateKey = 21,
    ForeignKey = 22,
    Operation = 23,
    Argument = 24,
    Object = 33,
    Dependency = 40,
    Realization = 41,
    ConcreteType = 50,
    ModelObject = 59,
    MappingObject = 60,
    PresentationElement = 61,
    Projection = 62,
    RelationshipProjection = 63,
    Classifier = 75,
    ClassifierMap = 76,
    Feature = 77,
    Transformation = 79,
    Join = 92,
    JoinRole = 93,
    StructuralFeature = 99,
    Package = 144,
};

/// The code one step up the class tree; `Object` for `Object` itself and for a code that is not in the tree.
[[nodiscard]] constexpr KivElementType baseOf(KivElementType code) noexcept
{
    using enum KivElementType;
    switch (code) {
    case Model:
    case DesignPackage:
        return Package;
    case BaseType:
    case DerivedType:
        return ConcreteType;
    case ConcreteType:
        return Type;
    case ClassDiagram:
        return Diagram;
    case Class:
    case Join:
        return Classifier;
    case Generalization:
    case Association:
    case Dependency:
    case Realization:
        return Relationship;
    case Classifier:
    case Relationship:
        return ModelElement;
    case Attribute:
        return StructuralFeature;
    case StructuralFeature:
        return Feature;
    case CandidateKey:
    case ForeignKey:
        return Key;
    case RelationshipProjection:
        return Projection;
    case Projection:
        return PresentationElement;
    case ClassifierMap:
    case Transformation:
        return MappingObject;
    case Package:
    case Type:
    case TypeValue:
    case Diagram:
    case ModelElement:
    case Feature:
    case AssociationRole:
    case AssociationRoleNameMap:
    case Operation:
    case Argument:
    case JoinRole:
    case Key:
        return ModelObject;
    case Note:
    case ModelObject:
    case MappingObject:
    case PresentationElement:
    case Object:
        return Object;
    }
    return Object;
}

/// Whether an object with the code `own` is an instance of `code`: of its own code, or of one further up the tree.
[[nodiscard]] constexpr bool isInstance(KivElementType own, KivElementType code) noexcept
{
    for (; own != code; own = baseOf(own))
        if (own == KivElementType::Object)
            return false;
    return true;
}

/// `isInstance(code, KivElementType::ModelObject)` for each code: passes over a whole model ask it of every object.
inline constexpr auto modelObjectCodes = [] {
    std::array<bool, static_cast<std::size_t>(KivElementType::Package) + 1> result = {};
    for (std::size_t code = 0; code < result.size(); ++code)
        result[code] = isInstance(static_cast<KivElementType>(code), KivElementType::ModelObject);
    return result;
}();

/// The same by one look into a table.
[[nodiscard]] constexpr bool isModelObject(KivElementType code) noexcept
{
    const auto place = static_cast<std::size_t>(code);
    return place < modelObjectCodes.size() && modelObjectCodes[place];
}
