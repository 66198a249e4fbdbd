#include "plugin/support/Runs.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <locale>
#include <sstream>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

Names split(const std::string& list)
{
    Names names;
    std::istringstream stream(list);
    for (std::string name; std::getline(stream, name, ',');)
        names.push_back(name);
    return names;
}

} // namespace

TEST(LogicalView, IsFoundOrMade)
{
    const struct {
        const char* description;
        const char* top; // with a minus sign: no design package
        const char* written;
        const char* topAfterwards;
    } rows[] = {
        {"nothing at all", "", "Logical View", "Logical View"},
        {"made, moved back", "A,B", "Logical View,A,B", "Logical View,A,B"},
        {"exact name, stay under it", "A,Logical View,B", "Logical View,A,B", "Logical View"},
        {"exact before longer", "My Logical View,Logical View", "Logical View,My Logical View", "Logical View"},
        {"first longer name", "A,Logical Views,The Logical View", "Logical Views,A,The Logical View", "Logical Views"},
        {"case counts", "logical view", "Logical View,logical view", "Logical View,logical view"},
        {"others stay, not written", "-Views,A", "Logical View,A", "-Views,Logical View,A"},
        {"exact is another kind", "-Logical View,x Logical View,A", "x Logical View,A", "-Logical View,x Logical View"},
        {"longer is another kind", "-x Logical View,A", "Logical View,A", "-x Logical View,Logical View,A"},
        {"a second one is moved, not written", "Logical View,Logical View,A", "Logical View,A", "Logical View"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.description);
        ModelBuilder builder;
        for (const std::string& name : split(row.top))
            if (name.front() == '-')
                builder.model.addChildPackage(builder.make<KivPackage>(name.c_str() + 1));
            else
                builder.package(name.c_str());
        const std::string view = exportedLogicalView(builder.model);
        EXPECT_EQ(namesAfter(view, "(object Class_Category \""), split(row.written));
        EXPECT_TRUE(view.starts_with("\r\n\troot_category \t(object Class_Category \"" + split(row.written).front()));
        EXPECT_EQ(childNames(builder.model), split(row.topAfterwards));
        for (const KivPackage* const package : builder.model.childPackages)
            EXPECT_EQ(package->getParent(), &builder.model) << package->getName().text();
        expectNoTraces(builder.model);
    }
}

TEST(LogicalView, HoldsWhatIsAtTheTopTooOnlyOnce)
{
    for (const bool isParent : {false, true})
        for (const bool hasOthers : {false, true}) {
            ModelBuilder builder;
            KivDesignPackage* const view = builder.package("Logical View");
            KivDesignPackage* const orders = builder.package("Orders", isParent ? view : nullptr);
            if (hasOthers)
                for (int i = 0; i < 20; ++i)
                    builder.package("Other", view);
            (isParent ? builder.model.childPackages : view->childPackages).add(orders);
            const std::string written = exportedLogicalView(builder.model);
            EXPECT_EQ(namesAfter(written, "(object Class_Category \"Orders").size(), 1U);
            EXPECT_EQ(view->childPackages.count(), hasOthers ? 21U : 1U);
            expectNoTraces(builder.model);
        }
}

TEST(LogicalView, MadeByTheFirstRunIsTheHostsInTheSecond)
{
    ModelBuilder builder;
    fill(builder, nullptr);
    EXPECT_THAT(exportedLogicalView(builder.model), HasSubstr("quidu\t\"344A14000000\"")) << "made after numbering";
    ASSERT_THAT(childNames(builder.model), ElementsAre("Logical View", "Orders", "Stock"));
    EXPECT_THAT(childNames(*builder.model.childPackages.at(0)), IsEmpty());

    EXPECT_THAT(exportedLogicalView(builder.model), Not(HasSubstr("\"344A14000000\"")));
    ASSERT_THAT(childNames(builder.model), ElementsAre("Logical View"));
    EXPECT_THAT(childNames(*builder.model.childPackages.at(0)), ElementsAre("Orders", "Stock"));
}

TEST(Run, GivesTheSameBytesEveryTime)
{
    ModelBuilder builder;
    fill(builder, builder.package("Logical View"));
    const std::string first = exportedFile(builder.model);
    EXPECT_THAT(logicalViewOf(first), HasSubstr("{RED=0, GREEN=1}"));
    expectNoTraces(builder.model);
    EXPECT_EQ(exportedFile(builder.model), first);
    EXPECT_EQ(referenceFile(), first) << "a second model of the same content";
    ModelBuilder other;
    other.diagram("D", other.package("P"));
    exportedFile(other.model, {{BP_SUPPORTED_TYPES, "Java"}});
    EXPECT_EQ(exportedFile(builder.model), first) << "after the export of another model";
    expectNoTraces(builder.model);
}

namespace {

// Numbers as 1.234.567,8
class CommaNumbers : public std::numpunct<char> {
protected:
    [[nodiscard]] char do_decimal_point() const override { return ','; }
    [[nodiscard]] char do_thousands_sep() const override { return '.'; }
    [[nodiscard]] std::string do_grouping() const override { return "\3"; }
};

} // namespace

TEST(Run, GivesTheSameBytesInAnyLocale)
{
    ModelBuilder builder;
    KivDesignPackage* const package = builder.package("Logical View");
    KivClass* const wide = builder.addClass("Wide", package);
    KivType* const type = builder.type("T", "NUMERIC", 12345, 6789);
    builder.attribute("a", wide, type);
    builder.projection(wide, builder.diagram("D", package, {wide}), 123456, 234567, 3456, 4567);
    const auto exported = [&] {
        return exportedFile(builder.model, {{BP_SUPPORTED_TYPES, "Oracle 7.x/8"},
                                            {BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM, "1337"}});
    };
    const std::string expected = exported();
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new CommaNumbers));
    const std::string inOtherLocale = exported();
    std::locale::global(before);
    EXPECT_EQ(inOtherLocale, expected);
}

TEST(Run, LogsInWalkOrder)
{
    ModelBuilder builder;
    KivDesignPackage* const root = builder.package("Logical View");
    KivDesignPackage* const a = builder.package("A", root);
    builder.package("AA", a);
    builder.package("B", root);
    builder.package("Logical View", a);
    RecordingLog log;
    exportedFile(builder.model, log);
    const Names package = {"ROS_E_PRINTING_CLASSES", "ROS_E_PRINTING_ASSOCIATIONS"};
    Names expected;
    const auto enter = [&](const std::string& name) {
        expected.push_back("ROS_E_PRINTING_PACKAGE " + name);
        expected.insert(expected.end(), package.begin(), package.end());
    };
    const auto leave = [&] { expected.emplace_back("ROS_E_PRINTING_DIAGRAM"); };
    enter("Logical View"), enter("A"), enter("AA"), leave(), leave(), enter("B"), leave(), leave();
    EXPECT_EQ(log.entries, expected);
}

TEST(Run, SaysOnceWhenViewNumbersNoLongerFit)
{
    // Numbers 10 and up: 3000 for each diagram, the package, the model. 846 x 2538012 is below 2^31.
    for (const auto& [diagrams, expected] : {std::pair(846, 0L), {847, 1L}}) {
        SCOPED_TRACE(diagrams);
        ModelBuilder builder;
        KivDesignPackage* const root = builder.package("Logical View");
        for (int i = 0; i < diagrams; ++i)
            builder.diagram("D", root);
        RecordingLog log;
        exportedFile(builder.model, log);
        EXPECT_EQ(std::count(log.entries.begin(), log.entries.end(), "ROS_E_VIEW_NUMBERS_WRAP"), expected);
        EXPECT_EQ(log.entries.front() == "ROS_E_VIEW_NUMBERS_WRAP", expected == 1) << "before the package walk";
    }
}
