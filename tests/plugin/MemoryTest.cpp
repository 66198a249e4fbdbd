#include "plugin/support/ModelBuilder.h"
#include "support/Allocations.h"

#include <map>
#include <new>

// What an export takes, and what it does when there is none.

namespace {

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

// How packages stand at the top of a model; more of them than the collections hold without a table.
struct Arrangement {
    const char* description;
    int viewAt;  // where the Logical View stands, or below zero
    int otherAt; // where a package of another kind stands, or below zero
};
constexpr int severalPackages = 10;
constexpr Arrangement arrangements[] = {
    {"nothing but packages", -1, -1},
    {"the view in front", 0, -1},
    {"the view behind", severalPackages - 1, -1},
};

void arrange(ModelBuilder& builder, const Arrangement& arrangement)
{
    fill(builder, severalPackages);
    const std::vector<KivPackage*> packages(builder.model.childPackages.begin(), builder.model.childPackages.end());
    for (int i = 0; i < severalPackages; ++i) {
        if (i == arrangement.viewAt)
            packages[static_cast<std::size_t>(i)]->setName("Logical View");
        builder.model.removeChildPackage(packages[static_cast<std::size_t>(i)]);
        builder.model.addChildPackage(packages[static_cast<std::size_t>(i)]);
        if (i == arrangement.otherAt)
            builder.model.addChildPackage(builder.make<KivPackage>("other"));
    }
}

// Where every package stands, the Logical View's own contents in parentheses.
std::string placesOf(const KivPackage& parent)
{
    std::string places;
    for (const KivPackage* const package : parent.childPackages) {
        EXPECT_EQ(package->getParent(), &parent);
        EXPECT_EQ(package->pid, 0);
        for (KivObject* const element : package->modelElements)
            EXPECT_EQ(static_cast<KivModelObject*>(element)->pid, 0);
        places.append(package->getName().view()).append(" ");
        if (package->getName() == "Logical View")
            places.append("(").append(placesOf(*package)).append(") ");
    }
    return places;
}

const OptionValues everyOption = {{BP_SUPPORTED_TYPES, "Oracle 7.x/8"},
                                  {BP_GENERATE_QUALIFIERS, BOOLEAN_ENUM_VALUE_TRUE.getText()},
                                  {BP_EXPORT_FOREIGN_KEY_ATTRIBUTES, BOOLEAN_ENUM_VALUE_TRUE.getText()},
                                  {BP_SHOW_CONSTRAINTS_IN_DIAGRAMS, BOOLEAN_ENUM_VALUE_TRUE.getText()}};

} // namespace

// The packages are all where they were, or all where a run leaves them.
void expectFailuresLeaveTheModelWhole(const Arrangement& arrangement, Shortage shortage)
{
    ModelBuilder reference;
    arrange(reference, arrangement);
    const std::string before = placesOf(reference.model);
    const std::string expected = exportedFile(reference.model, everyOption);
    const std::string after = placesOf(reference.model);
    ModelBuilder referenceWithView;
    arrange(referenceWithView, arrangement);
    referenceWithView.package("Logical View");
    // Where packages may stand after a failure, and what the next run makes of that.
    const std::map<std::string, std::string> nextFiles = {
        {before, expected},
        {after, exportedFile(reference.model, everyOption)},
        {before + "Logical View () ", exportedFile(referenceWithView.model, everyOption)},
    };
    const TemporaryPath path;
    bool isReadingOptions = true;
    bool isShort = true;
    for (std::size_t room = 0; isShort; ++room) {
        SCOPED_TRACE(room);
        ModelBuilder builder;
        arrange(builder, arrangement);
        KivOptionList options = optionsFor(path.get(), everyOption);
        SilentLog log;
        std::string failure;
        try {
            const RefusedAllocation refused(room, shortage);
            KivIbmRationalRose98ExportDllInterface().run("", builder.model, options, log);
            isShort = refused.happened();
        } catch (const KivException& exception) {
            isReadingOptions = false;
            failure = exception.getIdentifier().getName();
            EXPECT_STRNE(exception.what(), "");
        } catch (const std::bad_alloc&) {
            EXPECT_TRUE(isReadingOptions) << "only there failures come through as they are";
            EXPECT_EQ(log.entries, 0);
            continue;
        }
        EXPECT_TRUE(failure.empty() ? path.content() == expected : expected.starts_with(path.content()));
        EXPECT_TRUE(failure.empty() || failure == "BRIDGE_UNEXPECTED_ERROR") << failure;
        const auto next = nextFiles.find(placesOf(builder.model));
        ASSERT_TRUE(next != nextFiles.end()) << placesOf(builder.model);
        EXPECT_TRUE(!failure.empty() || next->first == after);
        for (const KivType* const type : builder.model.types)
            EXPECT_EQ(type->generalPointer, nullptr);
        EXPECT_TRUE(exportedFile(builder.model, everyOption) == next->second) << "the next run";
    }
}

TEST(Memory, RunningOutAnywhereIsAFailureLikeAnyOther)
{
    for (const Arrangement& arrangement : arrangements)
        for (const Shortage shortage : {Shortage::Once, Shortage::FromThereOn}) {
            SCOPED_TRACE(arrangement.description);
            expectFailuresLeaveTheModelWhole(arrangement, shortage);
        }
}

std::size_t allocationsOf(KivModel& model)
{
    const TemporaryPath path;
    KivOptionList options = optionsFor(path.get(), everyOption);
    SilentLog log;
    const std::size_t before = allocationCount();
    KivIbmRationalRose98ExportDllInterface().run("", model, options, log);
    return allocationCount() - before;
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

// A large model leaves no more behind than a small one, once the host has taken it apart.
TEST(Memory, IsGivenBackAfterTheRun)
{
    const auto bytesLeftBy = [](int packages) {
        const std::size_t before = bytesInUse();
        {
            ModelBuilder builder;
            fill(builder, packages);
            KivPackage* const package = builder.model.childPackages.at(0);
            KivClass* const everywhere = builder.addClass("C", package);
            for (int i = 0; i < 20 * packages; ++i) {
                builder.attribute("a", everywhere)->position = static_cast<std::int16_t>(-i);
                builder.projection(everywhere, builder.diagram("D", package, {everywhere}), 1, 2, 3, 4);
            }
            exportedFile(builder.model, everyOption);
        }
        return bytesInUse() - before;
    };
    bytesLeftBy(1); // among it what is made once for the whole process
    EXPECT_EQ(bytesLeftBy(50), 0U);
}
