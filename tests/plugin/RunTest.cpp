#include "plugin/support/ModelBuilder.h"

#include "kiv/KivPositionComparators.h"

#include <algorithm>
#include <clocale>
#include <csignal>
#include <gmock/gmock.h>
#include <locale>
#include <new>
#include <sstream>
#include <sys/resource.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using Names = std::vector<std::string>;

int runPlugin(KivModel& model, KivOptionList& options, KivLog& log)
{
    return KivIbmRationalRose98ExportDllInterface().run("any name", model, options, log);
}

// What a run throws: the identifier's name and the argument.
std::string failureOf(KivModel& model, KivOptionList& options, KivLog& log)
{
    try {
        runPlugin(model, options, log);
        return "nothing";
    } catch (const KivException& exception) {
        return exception.getIdentifier().getName() + std::string(" ") + exception.getArgument().text();
    }
}

// A minus sign marks those that are no design packages.
Names childNames(const KivPackage& package)
{
    Names names;
    for (const KivPackage* const child : package.childPackages) {
        const std::string name = child->getName().text();
        names.push_back(child->elementType == KivElementType::DesignPackage ? name : "-" + name);
    }
    return names;
}

// The names that follow each occurrence of `opening`, in file order.
Names namesAfter(std::string_view file, std::string_view opening)
{
    Names names;
    for (std::size_t at = file.find(opening); at != std::string_view::npos; at = file.find(opening, at)) {
        at += opening.size();
        names.emplace_back(file.substr(at, file.find('"', at) - at));
    }
    return names;
}

Names split(const std::string& list)
{
    Names names;
    std::istringstream stream(list);
    for (std::string name; std::getline(stream, name, ',');)
        names.push_back(name);
    return names;
}

class NumberSum : public KivTraversalOperation {
public:
    void post_process(KivObject* object, void* /*context*/) override
    {
        if (object->isInstanceOf(KivElementType::ModelObject))
            sum += std::abs(static_cast<KivModelObject*>(object)->pid);
    }
    long sum = 0;
};

// What an export may leave behind in a model: numbers, marks.
void expectNoTraces(KivModel& model)
{
    NumberSum numbers;
    model.depthTraversal(numbers, nullptr);
    EXPECT_EQ(numbers.sum, 0);
    for (const KivType* const type : model.types)
        EXPECT_EQ(type->generalPointer, nullptr) << type->getName().text();
}

// Some of everything that the Logical View has, in two packages below `top`, or at the top of the model.
void fill(ModelBuilder& builder, KivPackage* top)
{
    KivDesignPackage* const orders = builder.package("Orders", top);
    KivDesignPackage* const stock = builder.package("Stock", top);
    KivType* const color = builder.enumeration("Color", {{"RED", "0"}, {"GREEN", "1"}});
    KivClass* const order = builder.addClass("Order", orders);
    KivClass* const item = builder.addClass("Item", stock);
    KivAttribute* const number = builder.attribute("number", order, builder.type("Number", "INTEGER"));
    builder.attribute("color", item, color);
    builder.argument("shade", builder.operation("paint", item)->arguments, color);
    KivAssociation* const holds = builder.association("holds", stock, order, item);
    holds->constraint = "at least one";
    holds->roles.at(0)->key = builder.key<KivForeignKey>("orderKey", order, {number});
    KivClassDiagram* const diagram = builder.diagram("Main", orders, {order, item, holds});
    builder.projection(order, diagram, 1000, 700, 300, 200);
    builder.projection(item, diagram, 400, 300, 300, 200);
    for (KivAssociationRole* const role : holds->roles)
        builder.lineProjection(role, diagram, "(1000,700)\r\n(400,300)");
}

std::string referenceFile()
{
    ModelBuilder builder;
    fill(builder, builder.package("Logical View"));
    return exportedFile(builder.model);
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

// Failures

namespace {

struct TaggedException : KivException {
    TaggedException() : KivException(ROS_E_PRINTING_DIAGRAM, "tag") {}
    int tag = 42;
};

} // namespace

TEST(Failure, OfTheLogEndsTheFileWhereItStandsAndUndoesTheRest)
{
    ModelBuilder reference;
    fill(reference, nullptr);
    RecordingLog log;
    const std::string whole = exportedFile(reference.model, log);
    const std::vector<std::string> allEntries = log.entries;
    ASSERT_EQ(allEntries.size(), 12U);
    const std::pair<const char*, std::size_t> firstEntryBehind[] = {
        {"diagram_item_list))))", 0},   {"root_category", 1},          {"(object Class \"Order\"", 5},
        {"(object ClassDiagram", 7},    {"(object Class \"Item\"", 9}, {"enum Color", 9},
        {"(object Association \"", 10}, {"root_subsystem", 12},
    };
    for (std::size_t failing = 0; failing < allEntries.size(); ++failing) {
        SCOPED_TRACE("entry " + std::to_string(failing) + ": " + allEntries[failing]);
        ModelBuilder builder;
        fill(builder, nullptr);
        const TemporaryPath path;
        KivOptionList options = optionsFor(path.get());
        RecordingLog failingLog;
        failingLog.onEntry = [&](const KivLogEntry&) {
            if (failingLog.entries.size() == failing + 1)
                throw TaggedException();
        };
        try {
            runPlugin(builder.model, options, failingLog);
            ADD_FAILURE() << "nothing thrown";
        } catch (const TaggedException& exception) {
            EXPECT_EQ(exception.tag, 42);
            EXPECT_STREQ(exception.what(), "writing diagrams");
        }
        const std::string part = path.content();
        EXPECT_TRUE(whole.starts_with(part));
        for (const auto& [text, entry] : firstEntryBehind)
            EXPECT_EQ(part.find(text) != std::string::npos, failing >= entry) << text;
        EXPECT_THAT(childNames(builder.model), ElementsAre("Logical View", "Orders", "Stock"));
        EXPECT_THAT(childNames(*builder.model.childPackages.at(0)), IsEmpty());
        expectNoTraces(builder.model);
    }
}

TEST(Failure, OfAnotherKindBecomesAnUnexpectedError)
{
    const struct {
        const char* description;
        std::function<void()> fail;
    } rows[] = {
        {"std::runtime_error", [] { throw std::runtime_error("broken"); }},
        {"std::bad_alloc", [] { throw std::bad_alloc(); }},
        {"int", [] { throw 7; }},
    };
    const std::string expected = referenceFile();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.description);
        ModelBuilder builder;
        fill(builder, builder.package("Logical View"));
        const TemporaryPath path;
        KivOptionList options = optionsFor(path.get());
        RecordingLog log;
        log.onEntry = [&](const KivLogEntry& entry) {
            if (entry.argument == "Stock")
                row.fail();
        };
        EXPECT_EQ(failureOf(builder.model, options, log), "BRIDGE_UNEXPECTED_ERROR KivIbmRationalRose98Export");
        expectNoTraces(builder.model);
        EXPECT_EQ(exportedFile(builder.model), expected) << "the next run starts from the beginning";
    }
}

TEST(Failure, ToOpenLeavesTheModelAlone)
{
    const struct {
        const char* locale;
        const char* path;
        const char* identifier;
    } rows[] = {
        {"C", "/nowhere/to be/found.mdl", "ROS_E_UNABLE_TO_OPEN_OUTPUT_FILE"},
        {"C", "/nowhere/\xC3\xA4\xFF.mdl", "ROS_E_UNABLE_TO_OPEN_OUTPUT_FILE"},
        {"C", "", "ROS_E_UNABLE_TO_OPEN_OUTPUT_FILE"},
        {"C", "/", "ROS_E_UNABLE_TO_OPEN_OUTPUT_FILE"},
        {"C.UTF-8", "/nowhere/\xC3\xA4.mdl", "ROS_E_UNABLE_TO_OPEN_OUTPUT_FILE"},
        {"C.UTF-8", "/nowhere/\xFF.mdl", "BRIDGE_UNCONVERTIBLE_TEXT"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.locale) + " " + row.path);
        ASSERT_TRUE(std::setlocale(LC_ALL, row.locale));
        ModelBuilder builder;
        fill(builder, nullptr);
        KivOptionList options = optionsFor(row.path);
        RecordingLog log;
        EXPECT_EQ(failureOf(builder.model, options, log), row.identifier + std::string(" ") + row.path);
        EXPECT_THAT(log.entries, IsEmpty());
        EXPECT_THAT(childNames(builder.model), ElementsAre("Orders", "Stock"));
        expectNoTraces(builder.model);
        std::setlocale(LC_ALL, "C");
        exportedFile(builder.model);
    }
}

TEST(Failure, OfOneRunDoesNotReachTheModelOfAnother)
{
    ModelBuilder first;
    fill(first, nullptr);
    exportedFile(first.model);
    first.package("Later", first.model.childPackages.at(0));
    ModelBuilder second;
    fill(second, nullptr);
    KivOptionList options = optionsFor("/nowhere/found.mdl");
    RecordingLog log;
    EXPECT_THROW(runPlugin(second.model, options, log), KivException);
    EXPECT_THAT(childNames(first.model), ElementsAre("Logical View", "Orders", "Stock"));
    EXPECT_THAT(childNames(*first.model.childPackages.at(0)), ElementsAre("Later"));
    EXPECT_THAT(childNames(second.model), ElementsAre("Orders", "Stock"));
}

TEST(Failure, ToWriteIsNotReported)
{
    ModelBuilder builder;
    fill(builder, nullptr);
    KivOptionList options = optionsFor("/dev/full");
    RecordingLog log;
    EXPECT_EQ(runPlugin(builder.model, options, log), 1);
    EXPECT_EQ(log.entries.size(), 12U);
    EXPECT_THAT(childNames(builder.model), ElementsAre("Logical View", "Orders", "Stock"));
    expectNoTraces(builder.model);
}

TEST(Failure, ToWriteLeavesABeginningOfTheFile)
{
    ModelBuilder builder;
    KivDesignPackage* const root = builder.package("Logical View");
    for (const char* const name : {"A", "B", "C"}) {
        KivDesignPackage* const package = builder.package(name, root);
        for (char text = 'a'; text <= 'z'; ++text)
            builder.addClass("Class", package)->description = KivString(std::string(20000, text));
    }
    const std::string whole = exportedFile(builder.model);
    ASSERT_GT(whole.size(), 1500000U);
    rlimit limit = {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    for (const std::size_t room : {0U, 1U, 262143U, 262144U, 262145U, 300000U, 524288U, 786432U}) {
        SCOPED_TRACE(room);
        const TemporaryPath path;
        KivOptionList options = optionsFor(path.get());
        RecordingLog log;
        log.onEntry = [&](const KivLogEntry& entry) {
            if (entry.argument == "C") // by now writing has failed, and room is no help any more
                setrlimit(RLIMIT_FSIZE, &limit);
        };
        const rlimit smaller = {room, limit.rlim_max};
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &smaller), 0);
        EXPECT_EQ(runPlugin(builder.model, options, log), 1);
        EXPECT_TRUE(path.content() == whole.substr(0, room)) << path.content().size() << " bytes";
    }
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_TRUE(exportedFile(builder.model) == whole);
}

TEST(Failure, OfARunInsideARunLeavesTheOuterOneAlone)
{
    ModelBuilder builder;
    fill(builder, builder.package("Logical View"));
    ModelBuilder inner;
    fill(inner, nullptr);
    const TemporaryPath innerPath;
    int refused = 0;
    RecordingLog log;
    log.onEntry = [&](const KivLogEntry&) {
        for (KivModel* const model : {&builder.model, &inner.model}) {
            RecordingLog innerLog;
            KivOptionList options = optionsFor(innerPath.get(), {{BP_SUPPORTED_TYPES, "Java"}});
            refused += failureOf(*model, options, innerLog) == "ROS_E_EXPORT_RUNNING " ? 1 : 0;
            EXPECT_THAT(innerLog.entries, IsEmpty());
        }
    };
    EXPECT_EQ(exportedFile(builder.model, log), referenceFile());
    EXPECT_EQ(refused, 24);
    EXPECT_EQ(innerPath.content(), "");
    EXPECT_THAT(childNames(inner.model), ElementsAre("Orders", "Stock"));
}

TEST(Failure, OfAPackageTreeThatIsTooDeep)
{
    const struct {
        const char* description;
        int levels;
        bool isCycle;
        const char* tooDeep; // or null
    } rows[] = {
        {"512 levels", 512, false, nullptr},
        {"513 levels", 513, false, "Level 513"},
        {"100000 levels", 100000, false, "Level 513"},
        {"holds itself", 1, true, "Level 1"},
        {"two that hold each other", 2, true, "Level 1"},
        {"five in a circle", 5, true, "Level 3"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.description);
        ModelBuilder builder;
        KivPackage* deepest = nullptr;
        for (int level = 1; level <= row.levels; ++level)
            deepest = builder.package(KivString("Level " + std::to_string(level)), deepest);
        KivPackage* const top = builder.model.childPackages.at(0);
        if (row.isCycle)
            deepest->childPackages.add(top);
        const TemporaryPath path;
        KivOptionList options = optionsFor(path.get());
        RecordingLog log;
        EXPECT_EQ(failureOf(builder.model, options, log),
                  row.tooDeep ? "ROS_E_PACKAGES_NESTED_TOO_DEEP " + std::string(row.tooDeep) : "nothing");
        EXPECT_EQ(namesAfter(path.content(), "(object Class_Category \"Level ").size(), 512U);
        EXPECT_THAT(childNames(builder.model), ElementsAre("Logical View", "Level 1"));
        expectNoTraces(builder.model);
    }
}

// Options

TEST(Options, AreTheEightOfTheBridge)
{
    KivOptionList options;
    KivOption stranger;
    stranger.name = "BP_FILE";
    stranger.value = "old";
    options.append(stranger);
    const Names booleans = {"True", "False"};
    const struct {
        const char* name;
        KivOptionKind kind;
        const char* value;
        Names literals;
        Names extensions;
    } rows[] = {
        {"BP_FILE", KivOptionKind::OutputFile, "", {}, {"mdl"}},
        {"BP_SUPPORTED_TYPES", KivOptionKind::Enumeration, "C++", {"As is", "C++", "Java", "Oracle 7.x/8"}, {}},
        {"BP_EXPORT_FOREIGN_KEY_ATTRIBUTES", KivOptionKind::Boolean, "False", booleans, {}},
        {"BP_GENERATE_QUALIFIERS", KivOptionKind::Boolean, "False", booleans, {}},
        {"BP_SHOW_CONSTRAINTS_IN_DIAGRAMS", KivOptionKind::Boolean, "False", booleans, {}},
        {"BP_USE_GRAPHICAL_INFORMATION", KivOptionKind::Boolean, "True", booleans, {}},
        {"BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM", KivOptionKind::IntegerPercent, "100", {}, {}},
        {"BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM", KivOptionKind::IntegerPercent, "100", {}, {}},
    };
    const auto texts = [](const std::vector<KivString>& strings) {
        Names names;
        for (const KivString& string : strings)
            names.emplace_back(string.view());
        return names;
    };
    for (int call = 1; call <= 2; ++call) {
        KivIbmRationalRose98ExportDllInterface().getOptionList(options);
        ASSERT_EQ(options.getOptions().size(), std::size(rows)) << "call " << call;
        for (std::size_t i = 0; i < std::size(rows); ++i) {
            const KivOption& option = options.getOptions()[i];
            EXPECT_EQ(option.name, rows[i].name);
            EXPECT_EQ(option.kind, rows[i].kind) << rows[i].name;
            EXPECT_EQ(option.value, rows[i].value) << rows[i].name;
            EXPECT_EQ(option.defaultValue, rows[i].value) << rows[i].name;
            EXPECT_FALSE(option.description.isEmpty()) << rows[i].name;
            EXPECT_EQ(texts(option.literals), rows[i].literals) << rows[i].name;
            EXPECT_EQ(texts(option.extensions), rows[i].extensions) << rows[i].name;
        }
    }
    EXPECT_EQ(KivIbmRationalRose98ExportDllInterface().getMappingSpecificationXmlFile(), "KivIbmRationalRoseExport");
}

TEST(Options, BooleansAreTrueForTheOneTextOnly)
{
    const struct {
        const KivBridgeOptionLiteral& option;
        const char* sign; // in the file exactly when the option is true
    } options[] = {
        {BP_USE_GRAPHICAL_INFORMATION, "\tlocation\t\t\t(1000,700)"},
        {BP_GENERATE_QUALIFIERS, "keys\t(list class_attribute_list"},
        {BP_EXPORT_FOREIGN_KEY_ATTRIBUTES, "type\t\"int\""},
        {BP_SHOW_CONSTRAINTS_IN_DIAGRAMS, "\"{at least one}\""},
    };
    for (const auto& [option, sign] : options)
        for (const char* const value : {"True", "true", "TRUE", "True ", " True", "Tru", "1", "yes", "", "False"}) {
            ModelBuilder builder;
            fill(builder, nullptr);
            const bool isTrue = exportedLogicalView(builder.model, {{option, value}}).find(sign) != std::string::npos;
            EXPECT_EQ(isTrue, std::string_view(value) == "True") << option.getName().text() << " '" << value << "'";
        }
}

TEST(Options, ScalesAreNumbersInPercent)
{
    const struct {
        const char* text;
        const char* coordinate; // 1000 scaled
    } rows[] = {
        {"100", "1000"},
        {"150", "1500"},
        {"75", "750"},
        {"120%", "1200"},
        {" \t120", "1200"},
        {"+30", "300"},
        {"-50", "-500"},
        {"0", "0"},
        {"", "0"},
        {"abc", "0"},
        {"0x10", "0"},
        {"1e3", "9"}, // the factor is a float, a little below 0.01,
        {"7.9", "70"},
        {"99999999999999999999", "2147483647"},
        {"-99999999999999999999", "-2147483648"},
    };
    for (const auto& [text, coordinate] : rows) {
        ModelBuilder builder;
        KivDesignPackage* const root = builder.package("Logical View");
        KivClass* const theClass = builder.addClass("C", root);
        builder.projection(theClass, builder.diagram("D", root, {theClass}), 1000, 1000, 0, 0);
        const auto location = [](const std::string& x, const std::string& y) {
            return "\tlocation\t\t\t(" + x + "," + y + ")";
        };
        EXPECT_THAT(exportedLogicalView(builder.model, {{BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM, text}}),
                    HasSubstr(location(coordinate, "1000")))
            << "'" << text << "'";
        EXPECT_THAT(exportedLogicalView(builder.model, {{BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM, text}}),
                    HasSubstr(location("1000", coordinate)))
            << "'" << text << "'";
    }
}

TEST(Options, ChangedByTheLogCountForTheTypesNamedLater)
{
    ModelBuilder builder;
    KivDesignPackage* const root = builder.package("Logical View");
    for (const char* const name : {"First", "Second", "Third", "Fourth"}) {
        KivClass* const theClass = builder.addClass("C", builder.package(name, root));
        builder.attribute("a", theClass, builder.type("Own", "DATE"));
        KivClassDiagram* const diagram = builder.diagram("D", root, {theClass});
        builder.projection(theClass, diagram, 10, 20, 30, 40);
    }
    const TemporaryPath path;
    KivOptionList options = optionsFor(path.get());
    RecordingLog log;
    log.onEntry = [&](const KivLogEntry& entry) {
        options.setValue(BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM.getName(), "900"); // read once, at the start
        if (entry.argument == "Second")
            options.setValue(BP_SUPPORTED_TYPES.getName(), "Java");
        else if (entry.argument == "Third")
            options = optionsFor("/nowhere", {{BP_SUPPORTED_TYPES, "Oracle 7.x/8"}});
        else if (entry.argument == "Fourth")
            options.removeAll();
    };
    EXPECT_EQ(runPlugin(builder.model, options, log), 1);
    const std::string view = logicalViewOf(path.content());
    EXPECT_THAT(namesAfter(view, "type\t\""),
                ElementsAre("std::chrono::year_month_day", "Date", "DATE", "std::chrono::year_month_day"));
    EXPECT_THAT(namesAfter(view, "language    \""), ElementsAre("C++", "Java", "Java", "Java"));
    EXPECT_THAT(view, HasSubstr("\tlocation\t\t\t(10,20)"));
}

TEST(Options, AreEmptyTextsWhenTheyAreMissing)
{
    ModelBuilder builder;
    fill(builder, nullptr);
    const TemporaryPath path;
    KivOptionList options;
    KivOption file = BP_FILE.generateOption(false);
    file.value = path.get();
    options.append(file);
    RecordingLog log;
    EXPECT_EQ(runPlugin(builder.model, options, log), 1);
    EXPECT_THAT(logicalViewOf(path.content()), HasSubstr("\tlocation\t\t\t(0,0)"));
    EXPECT_THAT(logicalViewOf(path.content()), HasSubstr("language    \"Java\""));
    options.removeAll();
    EXPECT_THROW(runPlugin(builder.model, options, log), KivException) << "no path";
}

template <class Element>
void expectOrder(int (*compare)(const void*, const void*))
{
    const struct {
        std::int16_t a;
        std::int16_t b;
        int expected;
    } rows[] = {
        {3, 7, -1}, {7, 3, 1}, {5, 5, 0}, {-1, 0, -1}, {0, -1, 1}, {-32768, 32767, -1}, {32767, -32768, 1},
    };
    ModelBuilder builder;
    auto* const a = builder.make<Element>("a");
    auto* const b = builder.make<Element>("b");
    for (const auto& row : rows) {
        a->position = row.a;
        b->position = row.b;
        EXPECT_EQ(compare(&a, &b), row.expected) << row.a << " and " << row.b;
    }
}

TEST(Comparators, OrderByPosition)
{
    expectOrder<KivAttribute>(compareAttributePos);
    expectOrder<KivArgument>(compareArgumentPos);
}
