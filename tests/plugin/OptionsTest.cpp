#include "plugin/support/Runs.h"

#include "kiv/KivPositionComparators.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;

TEST(Options, ReplaceWhatTheListHolds)
{
    KivOptionList options;
    options.append(BP_FILE.generateOption(false));
    KivIbmRationalRose98ExportDllInterface().getOptionList(options);
    Names names;
    for (const KivOption& option : options.getOptions())
        names.emplace_back(option.name.view());
    EXPECT_THAT(names, ElementsAre("BP_FILE", "BP_SUPPORTED_TYPES", "BP_EXPORT_FOREIGN_KEY_ATTRIBUTES",
                                   "BP_GENERATE_QUALIFIERS", "BP_SHOW_CONSTRAINTS_IN_DIAGRAMS",
                                   "BP_USE_GRAPHICAL_INFORMATION", "BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM",
                                   "BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM"));
    ASSERT_EQ(options.getOptions().front().extensions.size(), 1U);
    EXPECT_EQ(options.getOptions().front().extensions.front(), "mdl");
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

// What the log does to the model counts from then on, as the host's other changes do.
TEST(Options, NameATypeAsItIsAtThatMoment)
{
    const std::pair<const char*, std::vector<std::string>> rows[] = {
        {"As is", {"Old", "New", "New"}},
        {"C++", {"Old", "New", "int"}},
        {"Java", {"Void", "Void", "Integer"}},
        {"Oracle 7.x/8", {"TEXT", "TEXT(5)", "INTEGER(5)"}},
    };
    for (const auto& [system, names] : rows) {
        ModelBuilder builder;
        KivDesignPackage* const root = builder.package("Logical View");
        KivType* const type = builder.type("Old");
        for (const char* const name : {"First", "Second", "Third"})
            builder.attribute("a", builder.addClass("C", builder.package(name, root)), type);
        RecordingLog log;
        log.onEntry = [&](const KivLogEntry& entry) {
            if (entry.argument == "Second") {
                type->setName("New");
                type->length = 5;
            } else if (entry.argument == "Third") {
                type->dataType = "INTEGER";
            }
        };
        const std::string file = exportedFile(builder.model, log, {{BP_SUPPORTED_TYPES, system}});
        EXPECT_EQ(namesAfter(logicalViewOf(file), "type\t\""), names) << system;
    }
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
