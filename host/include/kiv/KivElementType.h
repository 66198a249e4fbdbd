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

/// A class of the tree that the codes stand for.
struct KivElementClass {
    KivElementType code;
    KivElementType base; ///< the class one step up; `Object` is its own
    const char* name;
};

/// The class tree, every class behind the one it derives from.
struct KivElementTree {
    using enum KivElementType;
    static constexpr auto classes = std::to_array<KivElementClass>({
        {Object, Object, "KivObject"},
        {Note, Object, "KivNote"},
        {ModelObject, Object, "KivModelObject"},
        {Package, ModelObject, "KivPackage"},
        {Model, Package, "KivModel"},
        {DesignPackage, Package, "KivDesignPackage"},
        {Type, ModelObject, "KivType"},
        {ConcreteType, Type, "KivConcreteType"},
        {BaseType, ConcreteType, "KivBaseType"},
        {DerivedType, ConcreteType, "KivDerivedType"},
        {TypeValue, ModelObject, "KivTypeValue"},
        {Diagram, ModelObject, "KivDiagram"},
        {ClassDiagram, Diagram, "KivClassDiagram"},
        {ModelElement, ModelObject, "KivModelElement"},
        {Classifier, ModelElement, "KivClassifier"},
        {Class, Classifier, "KivClass"},
        {Join, Classifier, "KivJoin"},
        {Relationship, ModelElement, "KivRelationship"},
        {Association, Relationship, "KivAssociation"},
        {Generalization, Relationship, "KivGeneralization"},
        {Dependency, Relationship, "KivDependency"},
        {Realization, Relationship, "KivRealization"},
        {Feature, ModelObject, "KivFeature"},
        {StructuralFeature, Feature, "KivStructuralFeature"},
        {Attribute, StructuralFeature, "KivAttribute"},
        {AssociationRole, ModelObject, "KivAssociationRole"},
        {AssociationRoleNameMap, ModelObject, "KivAssociationRoleNameMap"},
        {Operation, ModelObject, "KivOperation"},
        {Argument, ModelObject, "KivArgument"},
        {JoinRole, ModelObject, "KivJoinRole"},
        {Key, ModelObject, "KivKey"},
        {CandidateKey, Key, "KivCandidateKey"},
        {ForeignKey, Key, "KivForeignKey"},
        {PresentationElement, Object, "KivPresentationElement"},
        {Projection, PresentationElement, "KivProjection"},
        {RelationshipProjection, Projection, "KivRelationshipProjection"},
        {MappingObject, Object, "KivMappingObject"},
        {ClassifierMap, MappingObject, "KivClassifierMap"},
        {Transformation, MappingObject, "KivTransformation"},
    });
};

inline constexpr auto kivElementBases = [] {
    std::array<KivElementType, static_cast<std::size_t>(KivElementType::Package) + 1> result = {};
    result.fill(KivElementType::Object);
    for (const KivElementClass& row : KivElementTree::classes)
        result[static_cast<std::size_t>(row.code)] = row.base;
    return result;
}();

/// The code one step up the class tree; `Object` for `Object` itself and for a code that is not in the tree.
[[nodiscard]] constexpr KivElementType baseOf(KivElementType code) noexcept
{
    const auto place = static_cast<std::size_t>(code);
    return place < kivElementBases.size() ? kivElementBases[place] : KivElementType::Object;
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
