#include "plugin/support/ModelBuilder.h"

#include <cstdlib>
#include <limits>
#include <new>

// Memory that runs out at each allocation of an export in turn, and stays short from there on.

namespace {

constexpr std::size_t plenty = std::numeric_limits<std::size_t>::max();
std::size_t allocationsLeft = plenty;
std::size_t allocationCount = 0;
bool hasRunOut = false;

void* allocate(std::size_t size) noexcept
{
    if (allocationsLeft == 0) {
        hasRunOut = true;
        return nullptr;
    }
    if (allocationsLeft != plenty)
        --allocationsLeft;
    ++allocationCount;
    return std::malloc(size != 0 ? size : 1);
}

class SilentLog : public KivLog {
public:
    void add(const KivLogEntry& /*entry*/) override { ++entries; }
    int entries = 0;
};

// A package in which every writer has something to do.
void fillPackage(ModelBuilder& builder, KivDesignPackage* package, int number, KivType* amount, KivType* color)
{
    KivClass* const a = builder.addClass("A", package);
    KivClass* const b = builder.addClass("B", package);
    KivClass* const c = builder.addClass("C", package);
    KivAttribute* const id = builder.attribute("amount", a, amount);
    id->position = 2;
    builder.attribute("color", a, color)->position = 1;
    auto* const key = builder.key<KivCandidateKey>("key", a, {id});
    auto* const foreign = builder.key<KivForeignKey>("foreign", b, {builder.attribute("amount", b, amount)});
    builder.argument("color", builder.operation("paint", b)->arguments, color);
    KivGeneralization* const is = builder.generalization("is", package, {a}, {b});
    KivRealization* const does = builder.realization("does", package, a, c);
    KivDependency* const uses = builder.dependency("uses", package, b, c);
    KivAssociation* const has = builder.association("has", package, a, b);
    has->associationClass = c;
    has->constraint = "ordered";
    has->roles.at(0)->multiplicity = {2, -1, true};
    has->roles.at(0)->key = key;
    has->roles.at(1)->key = foreign;
    KivClassDiagram* const diagram = builder.diagram("D", package, {a, b, c, is, does, uses, has});
    builder.note("note", a);
    builder.note("note", diagram);
    for (KivModelObject* const object : std::initializer_list<KivModelObject*>{a, b, c})
        builder.projection(object, diagram, 10 * number, 20, 300, 200);
    for (KivModelObject* const object : std::initializer_list<KivModelObject*>{is, does, uses})
        builder.lineProjection(object, diagram, "(1,2)\r\n(3,4)");
    for (KivAssociationRole* const role : has->roles)
        builder.lineProjection(role, diagram, "(1,2)\r\n(3,4)");
}

void fill(ModelBuilder& builder, int packages)
{
    KivType* const color = builder.enumeration("Color", {{"RED", "0"}, {"quote \"", "1"}});
    KivType* const amount = builder.type("Amount", "NUMERIC", 10, 2);
    for (int i = 0; i < packages; ++i)
        fillPackage(builder, builder.package(KivString("Package " + std::to_string(i))), i, amount, color);
}

constexpr int severalPackages = 10; // more than the collections hold without a table

const OptionValues everyOption = {{BP_SUPPORTED_TYPES, "Oracle 7.x/8"},
                                  {BP_GENERATE_QUALIFIERS, BOOLEAN_ENUM_VALUE_TRUE.getText()},
                                  {BP_EXPORT_FOREIGN_KEY_ATTRIBUTES, BOOLEAN_ENUM_VALUE_TRUE.getText()},
                                  {BP_SHOW_CONSTRAINTS_IN_DIAGRAMS, BOOLEAN_ENUM_VALUE_TRUE.getText()}};

// As after any export, however it ended; the logical view that it made stays.
void expectNoTraces(const KivModel& model, bool hasLogicalView)
{
    EXPECT_EQ(model.childPackages.count(), severalPackages + (hasLogicalView ? 1U : 0U));
    for (KivPackage* const package : model.childPackages) {
        EXPECT_EQ(package->pid, 0);
        EXPECT_EQ(package->getParent(), &model);
        EXPECT_EQ(package->childPackages.count(), 0U);
        for (KivObject* const element : package->modelElements)
            EXPECT_EQ(static_cast<KivModelObject*>(element)->pid, 0);
    }
    for (const KivType* const type : model.types)
        EXPECT_EQ(type->generalPointer, nullptr);
}

} // namespace

// Every form, since a sanitizer would bring the ones that are missing and tell them apart.
void* operator new(std::size_t size)
{
    if (void* const block = allocate(size))
        return block;
    throw std::bad_alloc();
}
void* operator new[](std::size_t size)
{
    return operator new(size);
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return allocate(size);
}
void operator delete(void* block) noexcept
{
    std::free(block);
}
void operator delete[](void* block) noexcept
{
    std::free(block);
}
void operator delete(void* block, std::size_t /*size*/) noexcept
{
    std::free(block);
}
void operator delete[](void* block, std::size_t /*size*/) noexcept
{
    std::free(block);
}

TEST(Memory, RunningOutAnywhereIsAFailureLikeAnyOther)
{
    ModelBuilder reference;
    fill(reference, severalPackages);
    const std::string expected = exportedFile(reference.model, everyOption);
    // The next run finds the logical view of this one: in front of the packages once they were on the move, else
    // behind.
    const std::string expectedWithViewInFront = exportedFile(reference.model, everyOption);
    ModelBuilder otherReference;
    fill(otherReference, severalPackages);
    otherReference.package("Logical View");
    const std::string expectedWithViewBehind = exportedFile(otherReference.model, everyOption);
    const TemporaryPath path;
    bool isReadingOptions = true;
    hasRunOut = true;
    for (std::size_t room = 0; hasRunOut; ++room) {
        SCOPED_TRACE(room);
        ModelBuilder builder;
        fill(builder, severalPackages);
        KivOptionList options = optionsFor(path.get(), everyOption);
        SilentLog log;
        int result = 0;
        hasRunOut = false;
        allocationsLeft = room;
        try {
            result = KivIbmRationalRose98ExportDllInterface().run("", builder.model, options, log);
            allocationsLeft = plenty;
        } catch (const KivException& exception) {
            allocationsLeft = plenty;
            isReadingOptions = false;
            EXPECT_EQ(&exception.getIdentifier(), &BRIDGE_UNEXPECTED_ERROR);
            EXPECT_EQ(exception.getArgument(), "KivIbmRationalRose98Export");
            EXPECT_STRNE(exception.what(), "");
        } catch (const std::bad_alloc&) {
            allocationsLeft = plenty;
            EXPECT_TRUE(isReadingOptions) << "only there failures come through as they are";
            EXPECT_EQ(log.entries, 0);
            continue;
        }
        const std::string content = path.content();
        EXPECT_TRUE(result == 1 ? content == expected : expected.starts_with(content));
        const KivPackage* const logicalView = builder.model.childPackages.find("Logical View");
        expectNoTraces(builder.model, logicalView);
        const bool isInFront = logicalView == builder.model.childPackages.at(0);
        const std::string& expectedNext = !logicalView ? expected
                                          : isInFront  ? expectedWithViewInFront
                                                       : expectedWithViewBehind;
        EXPECT_TRUE(exportedFile(builder.model, everyOption) == expectedNext) << "the next run";
    }
}

std::size_t allocationsOf(KivModel& model)
{
    const TemporaryPath path;
    KivOptionList options = optionsFor(path.get(), everyOption);
    SilentLog log;
    const std::size_t before = allocationCount;
    KivIbmRationalRose98ExportDllInterface().run("", model, options, log);
    return allocationCount - before;
}

TEST(Memory, IsTakenForPackagesAndDiagramsButNotForLines)
{
    const auto allocations = [](int packages, int attributes) {
        ModelBuilder builder;
        fill(builder, packages);
        for (KivPackage* const package : builder.model.childPackages)
            for (int i = 0; i < attributes && !package->modelElements.isEmpty(); ++i)
                builder.attribute("attribute", static_cast<KivClass*>(package->modelElements.at(0)),
                                  builder.model.types.at(1));
        return allocationsOf(builder.model);
    };
    constexpr std::size_t forGrowingBuffers = 12;
    constexpr std::size_t forAPackageAndItsDiagram = 12;
    const std::size_t few = allocations(10, 0);
    EXPECT_LE(allocations(10, 1000), few + forGrowingBuffers) << "with 10000 attributes more";
    EXPECT_LE(allocations(100, 0), few + forGrowingBuffers + 90 * forAPackageAndItsDiagram);
}
