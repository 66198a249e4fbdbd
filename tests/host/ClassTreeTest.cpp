#include "kiv/KivPackage.h"
#include "support/KivStringPrinting.h"

#include <algorithm>
#include <array>
#include <bit>
#include <gmock/gmock.h>
#include <string>
#include <type_traits>
#include <vector>

namespace {

TEST(ElementTypes, KnowTheirBases)
{
    const struct {
        std::vector<int> codes;
        std::vector<int> bases; // of each of them
    } rows[] = {{{33}, {}},
                {{1, 59, 60, 61}, {33}},
                {{3, 7, 10, 12, 18, 19, 20, 23, 24, 77, 93, 144}, {59, 33}},
                {{2, 9}, {144, 59, 33}},
                {{50}, {3, 59, 33}},
                {{4, 5}, {50, 3, 59, 33}},
                {{11}, {10, 59, 33}},
                {{15, 75}, {12, 59, 33}},
                {{13, 92}, {75, 12, 59, 33}},
                {{16, 17, 40, 41}, {15, 12, 59, 33}},
                {{99}, {77, 59, 33}},
                {{14}, {99, 77, 59, 33}},
                {{21, 22}, {20, 59, 33}},
                {{62}, {61, 33}},
                {{63}, {62, 61, 33}},
                {{76, 79}, {60, 33}}};
    KivNote object;
    for (const auto& row : rows)
        for (const int code : row.codes) {
            object.elementType = static_cast<KivElementType>(code);
            for (int asked = 0; asked < 200; ++asked) {
                const bool isBase = std::find(row.bases.begin(), row.bases.end(), asked) != row.bases.end();
                EXPECT_EQ(object.isInstanceOf(static_cast<KivElementType>(asked)), isBase || asked == code)
                    << code << " is " << asked;
            }
        }
}

// A class of a host, derived from one of the tree.
template <class Base>
struct Derived : Base {
};

template <class Class>
void expectClass(int code, const char* name)
{
    const Derived<Class> object;
    EXPECT_EQ(static_cast<int>(object.elementType), code) << name;
    EXPECT_STREQ(object.getMetaClass(), name);
}

TEST(ElementTypes, AreTheCodesOfTheirClasses)
{
    expectClass<KivNote>(1, "KivNote");
    expectClass<KivModel>(2, "KivModel");
    expectClass<KivType>(3, "KivType");
    expectClass<KivBaseType>(4, "KivBaseType");
    expectClass<KivDerivedType>(5, "KivDerivedType");
    expectClass<KivTypeValue>(7, "KivTypeValue");
    expectClass<KivDesignPackage>(9, "KivDesignPackage");
    expectClass<KivDiagram>(10, "KivDiagram");
    expectClass<KivClassDiagram>(11, "KivClassDiagram");
    expectClass<KivModelElement>(12, "KivModelElement");
    expectClass<KivClass>(13, "KivClass");
    expectClass<KivAttribute>(14, "KivAttribute");
    expectClass<KivRelationship>(15, "KivRelationship");
    expectClass<KivGeneralization>(16, "KivGeneralization");
    expectClass<KivAssociation>(17, "KivAssociation");
    expectClass<KivAssociationRole>(18, "KivAssociationRole");
    expectClass<KivAssociationRoleNameMap>(19, "KivAssociationRoleNameMap");
    expectClass<KivKey>(20, "KivKey");
    expectClass<KivCandidateKey>(21, "KivCandidateKey");
    expectClass<KivForeignKey>(22, "KivForeignKey");
    expectClass<KivOperation>(23, "KivOperation");
    expectClass<KivArgument>(24, "KivArgument");
    expectClass<KivObject>(33, "KivObject");
    expectClass<KivDependency>(40, "KivDependency");
    expectClass<KivRealization>(41, "KivRealization");
    expectClass<KivConcreteType>(50, "KivConcreteType");
    expectClass<KivModelObject>(59, "KivModelObject");
    expectClass<KivMappingObject>(60, "KivMappingObject");
    expectClass<KivPresentationElement>(61, "KivPresentationElement");
    expectClass<KivProjection>(62, "KivProjection");
    expectClass<KivRelationshipProjection>(63, "KivRelationshipProjection");
    expectClass<KivClassifier>(75, "KivClassifier");
    expectClass<KivClassifierMap>(76, "KivClassifierMap");
    expectClass<KivFeature>(77, "KivFeature");
    expectClass<KivTransformation>(79, "KivTransformation");
    expectClass<KivJoin>(92, "KivJoin");
    expectClass<KivJoinRole>(93, "KivJoinRole");
    expectClass<KivStructuralFeature>(99, "KivStructuralFeature");
    expectClass<KivPackage>(144, "KivPackage");
}

// The classes stand in the tree where their codes do: each converts to that of the next.
template <class Class, class Base, class... Bases>
constexpr bool isChain = std::is_convertible_v<Class*, Base*>&& [] {
    if constexpr (sizeof...(Bases) > 0)
        return isChain<Base, Bases...>;
    return true;
}();
static_assert(isChain<KivJoin, KivClassifier, KivModelElement, KivModelObject, KivObject>);
static_assert(isChain<KivAttribute, KivStructuralFeature, KivFeature, KivModelObject>);
static_assert(isChain<KivDerivedType, KivConcreteType, KivType, KivModelObject>);
static_assert(isChain<KivRealization, KivRelationship, KivModelElement>);
static_assert(isChain<KivForeignKey, KivKey, KivModelObject>);
static_assert(isChain<KivModel, KivPackage, KivModelObject>);
static_assert(isChain<KivClassDiagram, KivDiagram, KivModelObject>);
static_assert(isChain<KivRelationshipProjection, KivProjection, KivPresentationElement, KivObject>);
static_assert(isChain<KivClassifierMap, KivMappingObject, KivObject> && isChain<KivTransformation, KivMappingObject>);
static_assert(isChain<KivJoinRole, KivModelObject> && isChain<KivAssociationRoleNameMap, KivModelObject>);

// Where the address of a virtual operation stands in the table of its class.
template <class Operation>
std::size_t slotOf(Operation operation)
{
    const auto offset = static_cast<std::size_t>(std::bit_cast<std::array<std::ptrdiff_t, 2>>(operation)[0]);
    return (offset & ~std::size_t{1}) / sizeof(void*);
}

// Hosts are compiled against these orders. The destructor takes two slots.
TEST(VirtualOperations, KeepTheirSlots)
{
    const std::vector<std::size_t> ofObjects = {
        slotOf(&KivObject::setFrom),         slotOf(&KivObject::removeAggregationAssembly),
        slotOf(&KivObject::recursiveDelete), slotOf(&KivObject::isolate),
        slotOf(&KivObject::isInstanceOf),    slotOf(&KivObject::getParent),
        slotOf(&KivObject::getParentCount),  slotOf(&KivObject::operator==),
        slotOf(&KivObject::operator!=),      slotOf(&KivObject::equals),
        slotOf(&KivObject::isReferenced),    slotOf(&KivObject::transcode),
        slotOf(&KivObject::depthTraversal),  slotOf(&KivObject::setName),
        slotOf(&KivObject::getName),         slotOf(&KivObject::getDisplayName),
        slotOf(&KivObject::_depthTraversal), slotOf(&KivObject::getMetaClass)};
    EXPECT_THAT(ofObjects, testing::ElementsAre(0, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19));
    EXPECT_EQ(slotOf(&KivPackage::getParent), 7U) << "returns a narrower type";

    const std::vector<std::size_t> ofTypes = {
        slotOf(&KivBaseType::getDataType),
        slotOf(&KivBaseType::getLength),
        slotOf(&KivBaseType::getScale),
        slotOf(&KivBaseType::getInitialValue),
        slotOf(&KivBaseType::getLowerBound),
        slotOf(&KivBaseType::getUpperBound),
        slotOf(&KivBaseType::getUserDefined),
        slotOf(&KivBaseType::getNativeDataType),
        slotOf(&KivBaseType::getUserDataType),
        slotOf(&KivBaseType::getNativeLogicalDataType),
        slotOf(&KivBaseType::getActualType),
        slotOf(&KivBaseType::getTypeValueCount),
        slotOf(&KivBaseType::containsTypeValue),
        slotOf(static_cast<KivTypeValue* (KivType::*)(int) const>(&KivBaseType::getTypeValue)),
        slotOf(static_cast<KivTypeValue* (KivType::*)(const KivString&, int*) const>(&KivBaseType::getTypeValue)),
        slotOf(&KivBaseType::getTypeValueByPosition)};
    EXPECT_THAT(ofTypes, testing::ElementsAre(20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 34, 35));

    EXPECT_EQ(slotOf(&KivTraversalOperation::pre_process), 0U);
    EXPECT_EQ(slotOf(&KivTraversalOperation::post_process), 1U);
}

// Of operations that no export calls: what a host that overrides none of them gets.
TEST(VirtualOperations, HaveTheHostsDefaults)
{
    KivModel model;
    KivPackage package;
    KivPackage other;
    package.setName("P");
    model.addChildPackage(&package);
    EXPECT_EQ(static_cast<KivObject&>(package).getParent(), &model);
    EXPECT_EQ(package.getParentCount(), 1);
    EXPECT_EQ(static_cast<KivObject&>(model).getParent(), nullptr);
    EXPECT_EQ(KivClass().getParentCount(), 0);
    EXPECT_TRUE(package == package && package.equals(package) && !(package != package));
    EXPECT_TRUE(package != other && !(package == other) && !package.equals(other));
    EXPECT_EQ(package.getDisplayName(), "P");
    other.removeAggregationAssembly();
    other.recursiveDelete();
    other.isolate(true);
    other.setFrom(package);
    EXPECT_TRUE(other.getName().isEmpty());
    EXPECT_FALSE(other.isReferenced());

    const KivBaseType type;
    EXPECT_EQ(type.getActualType(), &type);
    EXPECT_EQ(type.getUpperBound(), -1);
    EXPECT_EQ(type.getLowerBound(), 0);
    EXPECT_FALSE(type.getUserDefined());
}

KivString withMark(const KivString& text)
{
    KivString result = text;
    return result.add(std::string_view("!"));
}

TEST(VirtualOperations, TranscodeNamesWhereTheyAreLookedUp)
{
    KivModel model;
    std::vector<KivPackage*> packages;
    for (int i = 0; i < 40; ++i) {
        packages.push_back(model.create<KivPackage>());
        packages.back()->setName(KivString(std::to_string(i)));
        packages.back()->description = "about";
        model.addChildPackage(packages.back());
    }
    for (int time = 0; time < 10; ++time)
        EXPECT_EQ(model.childPackages.find("39"), packages[39]);
    packages[39]->transcode(withMark);
    EXPECT_EQ(packages[39]->description, "about!");
    EXPECT_EQ(model.childPackages.find("39!"), packages[39]);
    EXPECT_EQ(model.childPackages.find("39"), nullptr);
}

TEST(VirtualOperations, FindLiterals)
{
    KivModel model;
    auto* const type = model.create<KivDerivedType>();
    auto* const red = model.create<KivTypeValue>();
    auto* const blue = model.create<KivTypeValue>();
    red->setName("red");
    blue->setName("blue");
    type->typeValues.add(nullptr);
    type->typeValues.add(red);
    type->typeValues.add(blue);
    EXPECT_EQ(type->getTypeValue(2), blue);
    EXPECT_EQ(type->getTypeValue(0), nullptr);
    EXPECT_EQ(type->getTypeValue(3), nullptr);
    EXPECT_EQ(type->getTypeValue(-1), nullptr);
    int index = 7;
    EXPECT_EQ(type->getTypeValue("green", &index), nullptr);
    EXPECT_EQ(index, 7);
    EXPECT_EQ(type->getTypeValue("blue", &index), blue);
    EXPECT_EQ(index, 2);
    EXPECT_EQ(type->getTypeValue("red", nullptr), red);
    EXPECT_TRUE(type->containsTypeValue(red));
    EXPECT_FALSE(type->containsTypeValue(nullptr));
    EXPECT_FALSE(type->containsTypeValue(model.create<KivTypeValue>()));
}

TEST(SetGeneralPointer, StoresIntoEveryObject)
{
    KivModel model;
    auto* const package = model.create<KivDesignPackage>();
    auto* const attribute = model.create<KivAttribute>();
    auto* const class_ = model.create<KivClass>();
    model.addChildPackage(package);
    package->modelElements.add(class_);
    class_->attributes.add(attribute);
    int mark = 0;
    KivSetGeneralPointerOperation operation(&mark);
    package->depthTraversal(operation, nullptr);
    EXPECT_EQ(package->generalPointer, &mark);
    EXPECT_EQ(class_->generalPointer, &mark);
    EXPECT_EQ(attribute->generalPointer, &mark);
    EXPECT_EQ(model.generalPointer, nullptr);
}

// What a host's class holds is visited by what it overrides, whichever class it derives from.
TEST(HostClasses, AreVisitedAsTheyWant)
{
    struct HostAttribute : KivAttribute {
        void _depthTraversal(KivTraversalOperation& operation, void* context) override
        {
            visit(&inner, operation, context);
        }
        KivArgument inner;
    } attribute;
    KivClass class_;
    class_.attributes.add(&attribute);
    KivSetGeneralPointerOperation operation(&class_);
    class_.depthTraversal(operation, nullptr);
    EXPECT_EQ(attribute.inner.generalPointer, &class_);
}

} // namespace
