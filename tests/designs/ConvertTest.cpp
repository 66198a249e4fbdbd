#include "designs/Files.h"
#include "designs/Importing.h"
#include "designs/model/DataTypes.h"
#include "designs/model/Texts.h"
#include "designs/SmallDesigns.h"
#include "support/ModelTexts.h"

#include <functional>
#include <gmock/gmock.h>

namespace {

using design::Design;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string package = "/childPackages/0";

TEST(Convert, NamesTypesByTheirDataTypes)
{
    const struct {
        const char* name;
        const char* identifier; ///< null: none
        int length = 0;
        int scale = 0;
    } rows[] = {
        {"String", "VARCHAR"},
        {"EString", "VARCHAR"},
        {"java.lang.String", "VARCHAR"},
        {"std::string", "VARCHAR"},
        {"CharacterString", "VARCHAR"},
        {"int", "INTEGER"},
        {"UnlimitedNatural", "INTEGER"},
        {"EInt", "INTEGER"},
        {"Real", "DOUBLE"},
        {"float", "REAL"},
        {"DateTime", "TIMESTAMP"},
        {"EDate", "TIMESTAMP"},
        {"Date", "DATE"},
        {"Decimal", "NUMERIC"},
        {" boolean ", "BOOLEAN"},
        {"VARCHAR(40)", "VARCHAR", 40},
        {"NUMBER(10,2)", "NUMERIC", 10, 2},
        {"Customer", nullptr},
        {"Stringency", nullptr},
        {"", nullptr},
    };
    for (const auto& row : rows) {
        const auto type = design::dataTypeNamed(row.name);
        ASSERT_EQ(type.has_value(), row.identifier != nullptr) << row.name;
        if (!type)
            continue;
        EXPECT_EQ(type->identifier, row.identifier) << row.name;
        EXPECT_EQ(type->length, row.length) << row.name;
        EXPECT_EQ(type->scale, row.scale) << row.name;
    }
}

TEST(Convert, ReadsMultiplicities)
{
    const struct {
        const char* text;
        const char* shown; ///< null: none
    } rows[] = {
        {"1", "1"},
        {"0..1", "0..1"},
        {"*", "0..*"},
        {"1..n", "1..*"},
        {"[2..3]", "2..3"},
        {" 0 .. * ", "0..*"},
        {"1,3", "1,3"},
        {"-2", "-2"},
        {"", nullptr},
        {"  ", nullptr},
        {"9999999999", "9999999999"},
    };
    for (const auto& row : rows) {
        const auto multiplicity = design::parseMultiplicity(row.text);
        ASSERT_EQ(multiplicity.has_value(), row.shown != nullptr) << row.text;
        EXPECT_EQ(multiplicity ? design::textOf(*multiplicity) : "", row.shown ? row.shown : "") << row.text;
    }
}

std::string minified(std::string_view json)
{
    simdjson::dom::parser parser;
    return simdjson::minify(parser.parse(json.data(), json.size()));
}

// Designs with everything that a design may have. Beside each lies the model file that comes of it.
TEST(Convert, MakesAModelOfWhateverADesignHas)
{
    for (const char* const name : {"shop.mdj", "all-kinds.xmi"}) {
        const std::string bytes = bytesOf(name);
        const std::string expected = bytesOf(std::filesystem::path(name).stem().string() + ".model.json");
        const Imported imported = importWith(*design::formatOf({bytes, name}), bytes);
        EXPECT_EQ(minified(imported.model), minified(expected)) << name;
    }
}

// A tool may put anything into its file; a model has texts only.
TEST(Convert, MendsWhatIsNoText)
{
    Design design = designOf({classNamed("a"), classNamed("b")});
    design.root.packages[0].classifiers[0].name = "caf\xE9";
    design.root.packages[0].classifiers[1].documentation = std::string("a\0b", 3);
    const Imported imported = convert(design);
    EXPECT_EQ(imported.at(package + "/modelElements/0/name"), "\"caf\xC3\xA9\"");
    EXPECT_EQ(imported.at(package + "/modelElements/1/description"), "\"ab\"");
    EXPECT_THAT(imported.made(), ElementsAre("text caf\xC3\xA9: bytes that are no text were replaced",
                                             "text b: bytes that are no text were replaced"));
}

TEST(Convert, PutsInPlaceWhatIsMissing)
{
    const struct {
        const char* what;
        std::function<void(design::Package&)> change;
        std::string pointer;
        const char* value;
        const char* made;
    } rows[] = {
        {"a supertype outside of the file", [](auto& p) { p.relationships = {generalization("a", "far")}; },
         "/childPackages/1/modelElements/0", "{'kind':'class','id':'far','name':'far'}",
         "class far: it lies outside of the file; a placeholder is in the package External"},
        {"a supertype by a name that a class has",
         [](auto& p) {
             p.relationships = {generalization("a", "")};
             p.relationships[0].supplier = {"", "b"};
         },
         package + "/modelElements/2/supertypes", "['b']", nullptr},
        {"an identifier given twice", [](auto& p) { p.classifiers[1].id = "a"; }, package + "/modelElements/1/id",
         "'petal-1'", "identifier b: it is given twice; the second element got another one"},
        {"a class without a name", [](auto& p) { p.classifiers[1].name = ""; }, package + "/modelElements/1/name",
         "'Unnamed 1'", "name Unnamed 1: a class has none"},
        {"a line end in a name", [](auto& p) { p.classifiers[1].name = "two\nlines"; },
         package + "/modelElements/1/name", "'two lines'",
         "name two lines: it had line ends or other control characters"},
        {"a type outside of the file",
         [](auto& p) {
             p.classifiers[0].attributes.resize(1);
             p.classifiers[0].attributes[0].type = {"far", "Money"};
         },
         "/types/0", "{'id':'type Money','name':'Money','dataType':'NUMERIC'}",
         "type Money: it lies outside of the file; a type of that name stands for it"},
    };
    for (const auto& row : rows) {
        Design design = designOf({classNamed("a"), classNamed("b")});
        row.change(design.root.packages[0]);
        const Imported imported = convert(design);
        EXPECT_EQ(imported.at(row.pointer), json(row.value)) << row.what;
        EXPECT_THAT(imported.made(), row.made ? testing::Matcher<std::vector<std::string>>(ElementsAre(row.made))
                                              : testing::Matcher<std::vector<std::string>>(IsEmpty()))
            << row.what;
    }
}

// The host writes a class for each enumeration that an attribute has. What is drawn must be a class of its own.
TEST(Convert, MakesAnEnumerationATypeOrAClass)
{
    const struct {
        const char* what;
        bool isUsed;
        bool isDrawn;
        bool isClass;
    } rows[] = {{"used", true, false, false},
                {"drawn", false, true, true},
                {"both", true, true, true},
                {"neither", false, false, true}};
    for (const auto& row : rows) {
        Design design = designOf({classNamed("a"), classNamed("e")});
        design::Classifier& enumeration = design.root.packages[0].classifiers[1];
        enumeration.kind = design::ClassifierKind::Enumeration;
        enumeration.literals.resize(1);
        enumeration.literals[0].name = "red";
        if (row.isUsed) {
            design.root.packages[0].classifiers[0].attributes.resize(1);
            design.root.packages[0].classifiers[0].attributes[0].type = {"e", ""};
        }
        if (row.isDrawn)
            design.root.packages[0].diagrams = {diagramOf({"e"})};
        const Imported imported = convert(design);
        EXPECT_EQ(imported.at(package + "/modelElements/1/stereotype"), row.isClass ? "\"enumeration\"" : "none")
            << row.what;
        EXPECT_EQ(imported.at("/types/0/typeValues/0/name"), row.isClass ? "none" : "\"red\"") << row.what;
        EXPECT_EQ(imported.at("/types/0/name"), row.isUsed ? "\"e\"" : "none") << row.what;
    }
}

TEST(Convert, PutsWhatLiesOutermostIntoTheLogicalView)
{
    Design design = designOf({classNamed("a")});
    design.root.classifiers = {classNamed("b")};
    const Imported imported = convert(design);
    EXPECT_EQ(imported.at("/childPackages/0/name"), "\"Logical View\"");
    EXPECT_EQ(imported.at("/childPackages/0/modelElements/0/name"), "\"b\"");
    EXPECT_EQ(imported.at("/childPackages/0/childPackages/0/modelElements/0/name"), "\"a\"");
}

// Readers of Rose files find the classes of a diagram only among those that stand before it.
TEST(Convert, PutsPackagesBehindThoseWhoseClassesTheyShow)
{
    Design design;
    for (const char* const name : {"p", "q", "r"}) {
        design::Package package;
        package.name = name;
        package.classifiers = {classNamed("in " + package.name)};
        design.root.packages.push_back(package);
    }
    design.root.packages[0].diagrams = {diagramOf({"in r"})};
    const Imported imported = convert(design);
    EXPECT_EQ(imported.at("/childPackages/0/name") + imported.at("/childPackages/1/name") +
                  imported.at("/childPackages/2/name"),
              "\"q\"\"r\"\"p\"");
}

} // namespace
