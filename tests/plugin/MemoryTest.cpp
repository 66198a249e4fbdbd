#include "plugin/support/ModelBuilder.h"

#include <cstdlib>
#include <limits>
#include <new>

// Memory that runs out at each allocation of an export in turn, and stays short from there on.

namespace {

constexpr std::size_t plenty = std::numeric_limits<std::size_t>::max();
std::size_t allocationsLeft = plenty;
bool hasRunOut = false;

void* allocate(std::size_t size) noexcept
{
    if (allocationsLeft == 0) {
        hasRunOut = true;
        return nullptr;
    }
    if (allocationsLeft != plenty)
        --allocationsLeft;
    return std::malloc(size != 0 ? size : 1);
}

class SilentLog : public KivLog {
public:
    void add(const KivLogEntry& /*entry*/) override { ++entries; }
    int entries = 0;
};

void fill(ModelBuilder& builder, KivPackage* top)
{
    KivType* const color = builder.enumeration("Color", {{"RED", "0"}, {"quote \"", "1"}});
    KivType* const amount = builder.type("Amount", "NUMERIC", 10, 2);
    for (int i = 0; i < 10; ++i) { // more than the collections hold without a table
        KivDesignPackage* const package = builder.package(KivString("Package " + std::to_string(i)), top);
        KivClass* const a = builder.addClass("A", package);
        KivClass* const b = builder.addClass("B", package);
        builder.attribute("amount", a, amount)->position = 2;
        builder.attribute("color", a, color)->position = 1;
        builder.argument("color", builder.operation("paint", b)->arguments, color);
        KivGeneralization* const is = builder.generalization("is", package, {a}, {b});
        KivAssociation* const has = builder.association("has", package, a, b);
        has->roles.at(0)->multiplicity = {2, -1, true};
        KivClassDiagram* const diagram = builder.diagram("D", package, {a, b, is, has});
        builder.note("note", a);
        for (KivModelObject* const object : std::initializer_list<KivModelObject*>{a, b})
            builder.projection(object, diagram, 10 * i, 20, 300, 200);
        builder.lineProjection(is, diagram, "(1,2)\r\n(3,4)");
        for (KivAssociationRole* const role : has->roles)
            builder.lineProjection(role, diagram, "(1,2)\r\n(3,4)");
    }
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
    fill(reference, nullptr);
    const std::string expected = exportedFile(reference.model, {{BP_SUPPORTED_TYPES, "Oracle 7.x/8"}});
    const TemporaryPath path;
    bool isReadingOptions = true;
    hasRunOut = true;
    for (std::size_t room = 0; hasRunOut; ++room) {
        SCOPED_TRACE(room);
        ModelBuilder builder;
        fill(builder, nullptr);
        KivOptionList options = optionsFor(path.get(), {{BP_SUPPORTED_TYPES, "Oracle 7.x/8"}});
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
        const bool hasLogicalView = builder.model.childPackages.find("Logical View");
        EXPECT_EQ(builder.model.childPackages.count(), hasLogicalView ? 11U : 10U);
        for (KivPackage* const package : builder.model.childPackages) {
            EXPECT_EQ(package->pid, 0);
            EXPECT_EQ(package->getParent(), &builder.model);
            EXPECT_EQ(package->childPackages.count(), 0U);
        }
        for (const KivType* const type : builder.model.types)
            EXPECT_EQ(type->generalPointer, nullptr);
    }
}
