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
        {"0..m", "0..*"},
        {"[]", nullptr},
        {"1..", "1.."},
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
        std::vector<std::string> made = imported.made();
        std::erase(made, "package External: it holds the placeholders");
        EXPECT_THAT(made, row.made ? testing::Matcher<std::vector<std::string>>(ElementsAre(row.made))
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

// What becomes a class, and what a type only.
TEST(Convert, TellsClassesFromTypes)
{
    using design::ClassifierKind;
    const struct {
        const char* what;
        ClassifierKind kind;
        std::string name;
        std::function<void(design::Package&)> change; ///< the package has the class "a" and the classifier "t"
        const char* element;                          ///< stereotype of the class, or none
        const char* type;
    } rows[] = {
        {"primitive type", ClassifierKind::PrimitiveType, "Integer", [](auto& /*p*/) {}, "none",
         "{'id':'t','name':'Integer','dataType':'INTEGER'}"},
        {"primitive type with attributes", ClassifierKind::PrimitiveType, "Integer",
         [](auto& p) { p.classifiers[1].attributes.resize(1); }, "'primitive'", "none"},
        {"primitive type that is a class and a type", ClassifierKind::PrimitiveType, "Integer",
         [](auto& p) {
             p.classifiers[1].operations.resize(1);
             p.classifiers[0].operations.resize(1);
             p.classifiers[0].operations[0].returnType.id = "t";
         },
         "'primitive'", "{'id':'type Integer','name':'Integer','dataType':'INTEGER'}"},
        {"data type by a name that means something", ClassifierKind::DataType, "NUMBER(10,2)", [](auto& /*p*/) {},
         "none", "{'id':'t','name':'NUMBER(10,2)','dataType':'NUMERIC','length':10,'scale':2}"},
        {"data type by another name", ClassifierKind::DataType, "Point", [](auto& /*p*/) {}, "'dataType'", "none"},
        {"data type at the end of a relation", ClassifierKind::DataType, "Integer",
         [](auto& p) { p.relationships = {generalization("a", "t")}; }, "'dataType'", "none"},
        {"data type as the class of an association", ClassifierKind::DataType, "Integer",
         [](auto& p) {
             p.associations = {association("a", "a")};
             p.associations[0].associationClassId = "t";
         },
         "'dataType'", "none"},
        {"enumeration as a result", ClassifierKind::Enumeration, "Kind",
         [](auto& p) {
             p.classifiers[1].literals.resize(2);
             p.classifiers[1].literals[0].name = "red";
             p.classifiers[1].literals[1].name = "blue";
             p.classifiers[1].literals[1].value = "7";
             p.classifiers[0].operations.resize(1);
             p.classifiers[0].operations[0].returnType.id = "t";
         },
         "none", "{'id':'t','name':'Kind','typeValues':[{'name':'red','value':'red'},{'name':'blue','value':'7'}]}"},
        {"enumeration without literals", ClassifierKind::Enumeration, "Kind",
         [](auto& p) {
             p.classifiers[0].operations.resize(1);
             p.classifiers[0].operations[0].parameters.resize(1);
             p.classifiers[0].operations[0].parameters[0].type.id = "t";
         },
         "'enumeration'", "{'id':'type Kind','name':'Kind'}"},
        {"class as a type", ClassifierKind::Class, "Integer",
         [](auto& p) {
             p.classifiers[0].attributes.resize(1);
             p.classifiers[0].attributes[0].type.id = "t";
         },
         "none", "{'id':'type Integer','name':'Integer'}"},
    };
    for (const auto& row : rows) {
        Design design = designOf({classNamed("a"), classNamed("t")});
        design::Package& p = design.root.packages[0];
        p.classifiers[1].kind = row.kind;
        p.classifiers[1].name = row.name;
        row.change(p);
        const Imported imported = convert(design);
        EXPECT_EQ(imported.at(package + "/modelElements/1/stereotype"), json(row.element)) << row.what;
        EXPECT_EQ(imported.at("/types/0"), json(row.type)) << row.what;
    }
}

// The literals of an enumeration that is a class are its first attributes, their values the initial values.
TEST(Convert, MakesAttributesOfLiterals)
{
    Design design = designOf({classNamed("e")});
    design::Classifier& enumeration = design.root.packages[0].classifiers[0];
    enumeration.kind = design::ClassifierKind::Enumeration;
    enumeration.literals.resize(2);
    enumeration.literals[1].name = "blue";
    enumeration.literals[1].value = "7";
    enumeration.attributes.resize(1);
    enumeration.attributes[0].name = "hue";
    EXPECT_EQ(convert(design).at(package + "/modelElements/0/attributes"),
              json("[{},{'name':'blue','initialValue':'7'},{'name':'hue','visibility':'private'}]"));
}

TEST(Convert, CountsWhatItTakes)
{
    const struct {
        const char* file;
        const char* counts;
    } rows[] = {
        {"shop.mdj", "4 packages, 10 classes, 1 interfaces, 1 enumerations, 2 literals, 5 types, 3 attributes, "
                     "1 operations, 4 parameters, 3 associations, 1 generalizations, 2 realizations, 3 dependencies, "
                     "5 notes, 2 diagrams, 4 boxes, 1 lines, "},
        {"all-kinds.xmi", "5 packages, 11 classes, 1 data types, 2 types, 8 attributes, 3 operations, 5 parameters, "
                          "4 associations, 1 generalizations, 3 realizations, 6 dependencies, 7 notes, 1 diagrams, "
                          "5 boxes, 4 lines, "},
    };
    for (const auto& row : rows) {
        const std::string bytes = bytesOf(row.file);
        std::string counts;
        for (const design::Taken& taken : importWith(*design::formatOf({bytes, row.file}), bytes).taken)
            counts += std::to_string(taken.count) + " " + std::string(taken.kind) + ", ";
        EXPECT_EQ(counts, row.counts) << row.file;
    }
}

// In Rose the end that an association leads to comes first, the whole of an aggregation second.
TEST(Convert, TurnsAssociations)
{
    using design::Aggregation;
    const struct {
        Aggregation first;
        Aggregation second;
        bool isFirstNavigable;
        bool isSecondNavigable;
        bool isTurned;
    } rows[] = {
        {Aggregation::None, Aggregation::None, false, false, false},
        {Aggregation::None, Aggregation::None, true, false, false},
        {Aggregation::None, Aggregation::None, false, true, true},
        {Aggregation::None, Aggregation::None, true, true, false},
        {Aggregation::Shared, Aggregation::None, false, false, true},
        {Aggregation::Composite, Aggregation::None, true, false, true},
        {Aggregation::None, Aggregation::Composite, false, true, false},
        {Aggregation::Shared, Aggregation::Composite, false, true, true},
    };
    for (const auto& row : rows) {
        Design design = designOf({classNamed("a"), classNamed("b")});
        design::Association joint = association("a", "b");
        joint.ends[0].aggregation = row.first;
        joint.ends[1].aggregation = row.second;
        joint.ends[0].isNavigable = row.isFirstNavigable;
        joint.ends[1].isNavigable = row.isSecondNavigable;
        design.root.packages[0].associations = {joint};
        const Imported imported = convert(design);
        EXPECT_EQ(imported.at(package + "/modelElements/2/roles/0/participant"), row.isTurned ? "\"b\"" : "\"a\"")
            << (&row - rows);
    }
}

TEST(Convert, RefusesWhatNoModelCanHold)
{
    Design deep = designOf({classNamed("a")});
    for (int i = 0; i < 500; ++i) {
        design::Package outer;
        outer.packages = std::move(deep.root.packages);
        deep.root.packages = {outer};
    }
    EXPECT_EQ(convert(deep).error, "packages lie in each other more than 500 deep");
    EXPECT_EQ(convert(designOf({})).error, "nothing to import was found; looked for classes");
}

TEST(Convert, PutsWhatLiesOutermostIntoTheLogicalView)
{
    Design design = designOf({classNamed("a")});
    design.root.classifiers = {classNamed("b")};
    const Imported imported = convert(design);
    EXPECT_EQ(imported.at("/childPackages/0/name"), "\"Logical View\"");
    EXPECT_EQ(imported.at("/childPackages/0/modelElements/0/name"), "\"b\"");
    EXPECT_EQ(imported.at("/childPackages/0/childPackages/0/modelElements/0/name"), "\"a\"");

    design.root.packages[0].name = "Logical View";
    const Imported beside = convert(design);
    EXPECT_EQ(beside.at("/childPackages/0/modelElements/0/name") + beside.at("/childPackages/0/modelElements/1/name"),
              "\"a\"\"b\"");
}

// The host writes one package of that name, and nothing that lies in others.
TEST(Convert, LeavesOnePackageTheNameOfTheLogicalView)
{
    Design design = designOf({});
    design.root.packages[0].packages.resize(2);
    for (design::Package& package : design.root.packages[0].packages) {
        package.name = "Logical View";
        package.classifiers = {classNamed("A")};
    }
    const Imported inner = convert(design);
    EXPECT_EQ(inner.at("/childPackages/0/childPackages/0/name"), "\"Logical View 2\"");
    EXPECT_EQ(inner.at("/childPackages/0/childPackages/1/name"), "\"Logical View 3\"");
    design.root.packages[0].name = "Logical View";
    const Imported outer = convert(design);
    EXPECT_EQ(outer.at("/childPackages/0/name"), "\"Logical View\"");
    EXPECT_EQ(outer.at("/childPackages/0/childPackages/0/name"), "\"Logical View 2\"");
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
