#include "model/Numbering.h"

#include "plugin/support/ModelBuilder.h"

#include <gmock/gmock.h>

namespace {

constexpr long firstNumber = 10;

// Numbers the model and returns the counter.
long number(KivModel& model, long first = firstNumber)
{
    KivSetPID numbering(first);
    model.depthTraversal(numbering, nullptr);
    return numbering.counter;
}

} // namespace

TEST(Numbering, ReservesABlockForEachKind)
{
    ModelBuilder builder;
    KivDesignPackage* const package = builder.package("P");
    KivClass* const a = builder.addClass("A", package);
    const auto classes = [&](std::size_t count) {
        KivVector<KivClass> result;
        for (std::size_t i = 0; i < count; ++i)
            result.add(a);
        return result;
    };
    const auto generalization = [&](std::size_t subtypes, std::size_t supertypes) {
        auto* const result = builder.make<KivGeneralization>("G");
        result->subtypes = classes(subtypes);
        result->supertypes = classes(supertypes);
        return result;
    };
    auto* const withClass = builder.make<KivAssociation>("with class");
    withClass->associationClass = a;
    auto* const withNulls = generalization(1, 1);
    withNulls->subtypes.add(nullptr);
    withNulls->supertypes.add(nullptr);
    const struct {
        const char* description;
        KivModelObject* object;
        long reserved;
    } rows[] = {
        {"class diagram", builder.make<KivClassDiagram>("D"), 3000},
        {"other diagram", builder.make<KivDiagram>("D"), 1},
        {"dependency", builder.make<KivDependency>("D"), 2},
        {"realization", builder.make<KivRealization>("R"), 1},
        {"association", builder.make<KivAssociation>("A"), 4},
        {"association with class", withClass, 5},
        {"role", builder.make<KivAssociationRole>("R"), 4},
        {"2 subtypes, 1 supertype", generalization(2, 1), 7},
        {"3 subtypes, 2 supertypes", generalization(3, 2), 20},
        {"no subtype, 2 supertypes", generalization(0, 2), 2},
        {"3 subtypes, no supertype", generalization(3, 0), 0},
        {"null ends count", withNulls, 14},
        {"class", builder.make<KivClass>("C"), 1},
        {"attribute", builder.make<KivAttribute>("A"), 1},
        {"operation", builder.make<KivOperation>("O"), 1},
        {"argument", builder.make<KivArgument>("A"), 1},
        {"type", builder.make<KivDerivedType>("T"), 1},
        {"literal", builder.make<KivTypeValue>("L"), 1},
        {"key", builder.make<KivForeignKey>("K"), 1},
        {"package", builder.make<KivPackage>("P"), 1},
    };
    for (const auto& row : rows) {
        KivSetPID numbering(firstNumber);
        row.object->depthTraversal(numbering, nullptr);
        EXPECT_EQ(row.object->pid, firstNumber) << row.description;
        EXPECT_EQ(numbering.counter, firstNumber + row.reserved) << row.description;
    }
}

TEST(Numbering, GivesContentsTheirNumbersBeforeTheirHolder)
{
    ModelBuilder builder;
    KivDesignPackage* const outer = builder.package("Outer");
    KivDesignPackage* const inner = builder.package("Inner", outer);
    KivClassDiagram* const diagram = builder.diagram("D", outer);
    KivClass* const theClass = builder.addClass("C", outer);
    KivOperation* const operation = builder.operation("o", theClass);
    KivArgument* const argument = builder.argument("a", operation->arguments);
    KivArgument* const parameter = builder.argument("p", theClass->parameters);
    KivAttribute* const attribute = builder.attribute("x", theClass);
    auto* const key = builder.key<KivCandidateKey>("k", theClass, {attribute});
    KivAssociation* const association = builder.association("A", outer, theClass, theClass);
    association->associationClass = theClass;
    auto* const qualifier = builder.make<KivAttribute>("q");
    association->roles.at(1)->qualifiers.add(qualifier);
    KivGeneralization* const useless = builder.generalization("no supertype", outer, {theClass}, {});
    KivDependency* const dependency = builder.dependency("d", outer, theClass, theClass);
    KivType* const color = builder.enumeration("Color", {{"RED", "0"}});
    builder.note("no number", theClass);
    builder.projection(theClass, diagram, 1, 2, 3, 4);
    const struct {
        const char* description;
        KivModelObject* object;
        long number;
    } rows[] = {
        {"literal", color->typeValues.at(0), 10},
        {"type", color, 11},
        {"attribute", attribute, 12},
        {"argument", argument, 13},
        {"operation", operation, 14},
        {"parameter", parameter, 15},
        {"key", key, 16},
        {"class", theClass, 17},
        {"first role", association->roles.at(0), 18},
        {"qualifier", qualifier, 22},
        {"second role", association->roles.at(1), 23},
        {"association", association, 27},
        {"generalization without supertypes", useless, 32},
        {"dependency, with the same number", dependency, 32},
        {"inner package", inner, 34},
        {"diagram", diagram, 35},
        {"outer package", outer, 3035},
        {"model", &builder.model, 3036},
    };
    for (int pass = 1; pass <= 2; ++pass) {
        EXPECT_EQ(number(builder.model), 3037);
        for (const auto& row : rows)
            EXPECT_EQ(row.object->pid, row.number) << row.description << ", pass " << pass;
        KivZeroPID reset;
        builder.model.depthTraversal(reset, nullptr);
        for (const auto& row : rows)
            EXPECT_EQ(row.object->pid, 0) << row.description;
    }
}

namespace {

// A class of a host's own: its code is in no table, so only it can say what it is.
class HostElement final : public KivModelElement {
public:
    explicit HostElement(bool isModelObject)
        : KivModelElement(static_cast<KivElementType>(200)), saysModelObject(isModelObject)
    {
    }
    [[nodiscard]] bool isInstanceOf(KivElementType code) const override
    {
        return code == KivElementType::ModelObject ? saysModelObject : KivModelElement::isInstanceOf(code);
    }

private:
    bool saysModelObject;
};

} // namespace

TEST(Numbering, AsksAHostsOwnClassWhetherItIsAModelObject)
{
    ModelBuilder builder;
    KivDesignPackage* const package = builder.package("P");
    HostElement counted(true);
    HostElement other(false);
    for (KivObject* const element : std::initializer_list<KivObject*>{&counted, &other})
        package->modelElements.add(element);
    other.pid = 7;
    EXPECT_EQ(number(builder.model), firstNumber + 3) << "counted, package, model";
    EXPECT_EQ(counted.pid, firstNumber);
    EXPECT_EQ(other.pid, 7);
    KivZeroPID reset;
    builder.model.depthTraversal(reset, nullptr);
    EXPECT_EQ(counted.pid, 0);
    EXPECT_EQ(other.pid, 7);
}

TEST(Numbering, GoesPast32Bits)
{
    ModelBuilder builder;
    KivDesignPackage* const package = builder.package("P");
    KivClassDiagram* const diagram = builder.diagram("D", package);
    constexpr long first = (1L << 32) - 1000;
    EXPECT_EQ(number(builder.model, first), first + 3002);
    EXPECT_EQ(diagram->pid, first);
    EXPECT_EQ(package->pid, first + 3000);
    const struct {
        long number;
        int view;
    } rows[] = {{2147483647L, 2147483647}, {2147483648L, -2147483647 - 1}, {4294967295L, -1}, {4294967306L, 10}};
    for (const auto& row : rows)
        EXPECT_EQ(lowBits(row.number), row.view) << row.number;
}

TEST(Numbering, OfManyWideGeneralizationsReachesTheQuids)
{
    // One generalization of 40000 subtypes and 40000 supertypes reserves more than 2^32 numbers.
    ModelBuilder builder;
    KivDesignPackage* const root = builder.package("Logical View");
    KivClass* const a = builder.addClass("A", root);
    auto* const wide = builder.generalization("wide", root, {}, {});
    for (int i = 0; i < 40000; ++i) {
        wide->subtypes.add(a);
        wide->supertypes.add(a);
    }
    builder.addClass("Z", root);
    // 11 + (3 x 40000 + 1) x 40000 = 4800040011
    EXPECT_THAT(exportedLogicalView(builder.model), testing::HasSubstr("\"Z\"\r\n\t\tquid\t\"3449E211E1ACC4B\""));
}
