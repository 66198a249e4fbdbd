#include "plugin/support/ModelBuilder.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

constexpr std::string_view listOpening = "logical_models \t(list unit_reference_list";
constexpr std::string_view listClosing = ")\r\n\tlogical_presentations \t(list unit_reference_list))";

// A model with one package, the Logical View itself.
class Design : public ModelBuilder {
public:
    KivDesignPackage* root = package("Logical View");

    // What the package's `logical_models` list holds in the file.
    std::string elements(OptionValues options = {})
    {
        const std::string view = exportedLogicalView(model, options);
        const std::size_t begin = view.find(listOpening) + listOpening.size();
        EXPECT_TRUE(view.ends_with(listClosing)) << view;
        return view.substr(begin, view.size() - listClosing.size() - begin);
    }
    KivClass* addClass(const KivString& name) { return ModelBuilder::addClass(name, root); }
    // So that the next object gets this number.
    void numberFrom(long number)
    {
        for (long next = 10; next < number; ++next)
            type("filler");
    }
};

// The lines of `text` that begin with `opening`, without it.
std::vector<std::string> linesWith(std::string_view opening, std::string_view text)
{
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find("\r\n"), text.size());
        std::string_view line = text.substr(0, end);
        line.remove_prefix(std::min(line.find_first_not_of('\t'), line.size()));
        if (line.starts_with(opening))
            lines.emplace_back(line.substr(opening.size()));
        text.remove_prefix(std::min(end + 2, text.size()));
    }
    return lines;
}

// The only such line, or the empty text.
std::string lineWith(std::string_view opening, std::string_view text)
{
    const std::vector<std::string> lines = linesWith(opening, text);
    EXPECT_LE(lines.size(), 1U) << opening;
    return lines.empty() ? "" : lines.front();
}

} // namespace

// Packages

TEST(Packages, DriftToTheLeft)
{
    ModelBuilder builder;
    KivDesignPackage* const root = builder.package("Logical View");
    root->description = "Top\nview";
    root->stereotype = "never written";
    KivDesignPackage* const a = builder.package("A", root);
    a->description = "First";
    a->stereotype = "layer";
    builder.package("AA", a);
    builder.package("inside", builder.package("Logical View", a));
    root->addChildPackage(builder.make<KivPackage>("no design package"));
    builder.package("My Logical View", root);
    EXPECT_EQ(exportedLogicalView(builder.model), petalLines(R"(
    root_category \t(object Class_Category "Logical View"
    quid\t"34429CE6000"
    documentation\t\n|Top\n|view\n
    exportControl\t"Public"
    global\tTRUE
    subsystem\t"Component View"
    quidu\t"344A14000010"
    logical_models \t(list unit_reference_list
        (object Class_Category "A"
        quid\t"344A1400000D"
        documentation\t"First"
        stereotype\t"layer"
        exportControl\t"Public"
        logical_models \t(list unit_reference_list
            (object Class_Category "AA"
            quid\t"344A1400000A"
            exportControl\t"Public"
            logical_models \t(list unit_reference_list)
            logical_presentations \t(list unit_reference_list)))
    logical_presentations \t(list unit_reference_list))
(object Class_Category "My Logical View"
quid\t"344A1400000F"
exportControl\t"Public"
logical_models \t(list unit_reference_list)
logical_presentations \t(list unit_reference_list)))
logical_presentations \t(list unit_reference_list)))"));
}

TEST(Packages, WithDiagramsDriftToTheRight)
{
    for (std::size_t diagrams = 0; diagrams <= 3; ++diagrams) {
        ModelBuilder builder;
        KivDesignPackage* const root = builder.package("Logical View");
        KivDesignPackage* const first = builder.package("First", root);
        builder.package("Second", root);
        for (std::size_t i = 0; i < diagrams; ++i) {
            builder.diagram("D", first);
            first->diagrams.add(builder.make<KivDiagram>("of another kind"));
        }
        const std::string view = exportedLogicalView(builder.model);
        const std::string tabs(1 + diagrams, '\t');
        EXPECT_THAT(view, HasSubstr("\r\n" + tabs + "(object Class_Category \"Second\"")) << diagrams << " diagrams";
        for (std::size_t i = 1; i <= diagrams; ++i)
            EXPECT_THAT(view, HasSubstr("\r\n" + std::string(2 + i, '\t') + "(object ClassDiagram \"D\"")) << i;
    }
}

TEST(Packages, HoldTheirElementsInAFixedOrder)
{
    Design design;
    KivDesignPackage* const inner = design.package("Inner", design.root);
    auto* const association = design.association("association", design.root);
    design.root->modelElements.add(design.model.create<KivNote>());
    design.root->modelElements.add(nullptr);
    KivClass* const a = design.addClass("A");
    design.attribute("color", a, design.enumeration("Color", {{"RED", "0"}}));
    design.generalization("G", design.root, {a}, {a});
    design.role("role", association, a);
    KivClass* const b = design.addClass("B");
    for (KivDesignPackage* const package : {design.root, design.root, inner})
        design.diagram("D", package, {b});
    // Numbers: RED 10, Color 11, role 12, association 16, color 20, A 21, G 22, B 26, inner diagram 27, Inner 3027,
    // diagrams 3028 and 6028, Logical View 9028, model 9029; the next diagram's views begin 9030 later.
    EXPECT_THAT(linesWith("(object ", exportedLogicalView(design.model)),
                ElementsAre("Class \"A\"", "Inheritance_Relationship", "ClassAttribute \"color\"", "Class \"B\"",
                            "Class \"Color\"", "Attribute", "Association \"association\"", "Role \"role\"",
                            "Class_Category \"Inner\"", "ClassDiagram \"D\"", "ClassView \"Class\" \"B\" @26",
                            "ClassDiagram \"D\"", "CategoryView \"LogicalView::Inner\" @12057",
                            "ClassView \"Class\" \"B\" @9056", "ClassDiagram \"D\"",
                            "CategoryView \"LogicalView::Inner\" @21087", "ClassView \"Class\" \"B\" @18086"));
}

// Classes

namespace {

const std::string classRelations = petalLines(R"(
        quid\t"3449E2000010"
        documentation\t"What customers want"
        stereotype\t"entity"
        superclasses \t(list inheritance_relationship_list
            (object Inheritance_Relationship
            quid       \t"3449E8000015"
            documentation \t"why"
            stereotype\t"strict"
            label      \t"is"
            supplier   \t"Base"
            quidu      \t"3449E2000011"
            exportControl \t"Protected"
            virtual\tTRUE
            friend\tTRUE))
        realized_interfaces \t(list realize_rel_list
            (object Realize_Relationship
            quid       \t"3449E0000018"
            supplier   \t"Printable"
            quidu      \t"3449E2000012"))
        used_nodes \t(list uses_relationship_list
            (object Uses_Relationship
            quid       \t"3449E0000019"
            documentation \t\n|by\n|the hour\n
            stereotype\t"reads"
            label      \t"needs"
            supplier   \t"Clock"
            quidu      \t"3449E2000013"))
        persistence\t"Persistent")");
const std::string classProperties = petalLines(R"(
        abstract\tTRUE
        cardinality \t(value Cardinality "0..1")
        exportControl\t"Implementation"
        concurrency\t"Active"
        space\t"-4"
        operations\t(list Operations
            (object Operation\t"cancel"
            attributes \t(list Attribute_Set
            \t(object Attribute
            \ttool\t"cg"
            \tname\t"OperationKind"
            \tvalue\t("OperationKindSet" 201)))
            quid\t"3449E000000D"
            concurrency\t"Sequential"
            opExportControl\t"Public"
            uid\t\t0)))");
const std::string classAttributes = petalLines(R"(
        class_attributes \t(list class_attribute_list
            (object ClassAttribute "total"
            quid\t"3449E400000C"
            type\t"Int"
            exportControl\t"Public"
            Containment\t"Unspecified")
            (object ClassAttribute "id"
            quid\t"3449E400000B"
            type\t"int"
            exportControl\t"Public"
            Containment\t"Unspecified")))");
const std::string classParameters = petalLines(R"(
        parameters \t(list Parameters
            (object Parameter "T")
            (object Parameter "Size"
            type\t"int"
            initv\t"42")))");
const std::string otherClasses = petalLines(R"(
        (object Class "Base"
        quid\t"3449E2000011"
        exportControl\t"Public"
        concurrency\t"Sequential"
        language    "C++")
        (object Class "Printable"
        quid\t"3449E2000012"
        stereotype\t"Interface"
        exportControl\t"Public"
        concurrency\t"Sequential"
        language    "C++")
        (object Class "Clock"
        quid\t"3449E2000013"
        language    "C++"))");

} // namespace

TEST(Classes, WithEverything)
{
    Design design;
    KivType* const number = design.type("Number", "INTEGER");
    KivClass* const order = design.addClass("Order");
    order->description = "What customers want";
    order->stereotype = "entity";
    order->isPersistent = order->isAbstract = true;
    order->cardinality = "0..1";
    order->visibility = 2;
    order->concurrency = 2;
    order->space = -4;
    design.attribute("id", order, number)->position = 2;
    design.attribute("total", order)->position = 1;
    design.operation("cancel", order);
    design.argument("Size", order->parameters, number, 5)->initialValue = "42";
    design.argument("T", order->parameters, nullptr, -1);
    // Numbers: Number 10, id 11, total 12, cancel 13, Size 14, T 15, Order 16, the other classes 17 to 19, is 20.
    KivClass* const base = design.addClass("Base");
    KivClass* const printable = design.addClass("Printable");
    printable->classType = 9;
    KivClass* const clock = design.addClass("Clock");
    clock->classType = 0;
    KivGeneralization* const is = design.generalization("is", design.root, {order}, {base});
    is->description = "why";
    is->stereotype = "strict";
    is->visibility = 1;
    is->isVirtual = is->isFriend = true;
    design.realization("not written", design.root, order, printable)->description = "not written";
    KivDependency* const needs = design.dependency("needs", design.root, order, clock);
    needs->description = "by\nthe hour";
    needs->stereotype = "reads";
    const struct {
        int classType;
        const char* keyword;
    } rows[] = {
        {-1, "Class"},
        {0, "Class"},
        {1, "Class"},
        {2, "Parameterized_Class"},
        {3, "Instantiated_Class"},
        {4, "Class_Utility"},
        {5, "Parameterized_Class_Utility"},
        {6, "Instantiated_Class_Utility"},
        {7, "Class"},
        {8, "Metaclass"},
        {9, "Class"},
        {10, "Class"},
    };
    for (const auto& [classType, keyword] : rows) {
        SCOPED_TRACE("class type " + std::to_string(classType));
        order->classType = classType;
        const std::string head = "\r\n\t\t(object " + std::string(keyword) + " \"Order\"";
        const std::string language = "\r\n\t\tlanguage    \"C++\")";
        EXPECT_EQ(design.elements(), head + classRelations + (classType == 0 ? "" : classProperties) + classAttributes +
                                         (classType == 0 ? "" : classParameters) + language + otherClasses);
    }
}

TEST(Classes, LeaveOutWhatSaysNothing)
{
    const std::pair<const char*, const char*> cardinalities[] = {
        {"", ""}, {"0", ""}, {"00", "\"00\")"}, {"n", "\"n\")"}};
    for (const auto& [cardinality, expected] : cardinalities) {
        Design design;
        design.addClass("C")->cardinality = cardinality;
        EXPECT_EQ(lineWith("cardinality \t(value Cardinality ", design.elements()), expected) << cardinality;
    }
    const std::pair<int, const char*> spaces[] = {{0, ""}, {1, "\"1\""}, {-2147483647 - 1, "\"-2147483648\""}};
    for (const auto& [space, expected] : spaces) {
        Design design;
        design.addClass("C")->space = space;
        EXPECT_EQ(lineWith("space\t", design.elements()), expected) << space;
    }
    const struct {
        int classType;
        const char* stereotype;
        const char* expected;
    } stereotypes[] = {
        {8, "", ""}, {9, "", "\"Interface\""}, {9, "own", "\"own\""}, {10, "", ""}, {1, "own", "\"own\""}};
    for (const auto& row : stereotypes) {
        Design design;
        KivClass* const theClass = design.addClass("C");
        theClass->classType = row.classType;
        theClass->stereotype = row.stereotype;
        EXPECT_EQ(lineWith("stereotype\t", design.elements()), row.expected) << row.classType << row.stereotype;
    }
    for (const int level : {-1, 0, 1, 2, 3}) {
        Design design;
        design.addClass("C")->modelLevel = level;
        EXPECT_EQ(design.elements().empty(), level == 2) << "level " << level;
    }
    for (const char* const system : {"C++", "Java", "As is", "Oracle 7.x/8", "c++"}) {
        Design design;
        design.addClass("C");
        EXPECT_EQ(lineWith("language    ", design.elements({{BP_SUPPORTED_TYPES, system}})),
                  std::string_view(system) == "C++" ? "\"C++\")" : "\"Java\")")
            << system;
    }
}

TEST(Positions, OrderCollectionsAndKeepTies)
{
    Design design;
    KivClass* const owner = design.addClass("C");
    KivOperation* const operation = design.operation("only", design.addClass("D"));
    KivType* const type = design.enumeration("E", {});
    operation->returnType = type;
    KivAssociationRole* const role = design.role("r", design.association("A", design.root), owner);
    std::vector<std::string> ordered[4];
    for (int i = 0; i < 60; ++i) { // so many that sorting them is no longer stable by itself
        const KivString name = std::to_string(i).c_str();
        const auto position = static_cast<std::int16_t>(i * 7 % 4 - 1);
        ordered[position + 1].emplace_back(name.view());
        design.attribute(name, owner)->position = position;
        design.operation(name, owner)->position = position;
        design.argument(name, owner->parameters, nullptr, position);
        design.argument(name, operation->arguments, nullptr, position);
        auto* const qualifier = design.make<KivAttribute>(name);
        qualifier->position = position;
        role->qualifiers.add(qualifier);
        auto* const literal = design.make<KivTypeValue>(name);
        literal->position = position;
        type->typeValues.add(literal);
    }
    std::vector<std::string> expected;
    std::string literals;
    for (const std::vector<std::string>& names : ordered)
        for (const std::string& name : names) {
            expected.push_back(name);
            literals += (literals.empty() ? "" : ", ") + name + "=";
        }
    const std::string elements = design.elements();
    const auto namesBetween = [&](std::string_view begin, std::string_view end, std::string_view opening) {
        const std::size_t from = elements.find(begin);
        std::vector<std::string> names = linesWith(opening, elements.substr(from, elements.find(end, from) - from));
        for (std::string& name : names)
            name = name.substr(1, name.find('"', 1) - 1);
        return names;
    };
    EXPECT_EQ(namesBetween("operations\t", "class_attributes", "(object Operation\t"), expected);
    EXPECT_EQ(namesBetween("class_attributes", "parameters", "(object ClassAttribute "), expected);
    EXPECT_EQ(namesBetween("parameters", "language", "(object Parameter "), expected) << "of a class";
    EXPECT_EQ(namesBetween("\"only\"", "result", "(object Parameter "), expected) << "of an operation";
    EXPECT_EQ(namesBetween("keys\t", "exportControl", "(object ClassAttribute "), expected) << "qualifiers";
    EXPECT_THAT(elements, HasSubstr("{" + literals + "}"));
}

TEST(Codes, BecomeKeywords)
{
    const struct {
        int code;
        const char* visibility;
        const char* containment;
        const char* concurrency;
    } rows[] = {
        {0, "\"Public\"", "\"By Value\"", "\"Sequential\""},
        {1, "\"Protected\"", "\"By Reference\"", "\"Guarded\""},
        {2, "\"Private\"", "\"Unspecified\"", "\"Active\""},
        {3, "\"Implementation\"", "\"Unspecified\"", "\"Synchronous\""},
        {-1, "\"Implementation\"", "\"Unspecified\"", "\"Synchronous\""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.code);
        Design design;
        KivClass* const theClass = design.addClass("C");
        KivGeneralization* const generalization = design.generalization("", design.root, {theClass}, {theClass});
        KivAttribute* const attribute = design.attribute("a", theClass);
        attribute->isStatic = true; // so that its containment ends no object
        KivOperation* const operation = design.operation("o", theClass);
        KivAssociationRole* const role = design.role("r", design.association("A", design.root), theClass);
        for (int* const code : {&theClass->visibility, &theClass->concurrency, &generalization->visibility,
                                &attribute->visibility, &attribute->containment, &operation->visibility,
                                &operation->concurrency, &role->visibility, &role->containment})
            *code = row.code;
        const std::string elements = design.elements();
        EXPECT_EQ(lineWith("exportControl \t", elements), std::string(row.visibility) + "))") << "generalization";
        EXPECT_THAT(linesWith("exportControl\t", elements),
                    ElementsAre(row.code == 0 ? row.visibility : "\"Implementation\"", row.visibility, row.visibility))
            << "class, attribute, role";
        EXPECT_EQ(lineWith("opExportControl\t", elements), row.visibility);
        EXPECT_THAT(linesWith("concurrency\t", elements), ElementsAre(row.concurrency, row.concurrency));
        EXPECT_THAT(linesWith("Containment\t", elements), ElementsAre(row.containment, row.containment));
    }
}

TEST(Classes, NumberTheirSuperclassesInTheBlockOfTheGeneralization)
{
    Design design;
    design.numberFrom(95);
    KivClass* const subtypes[] = {design.addClass("A"), design.addClass("B"), design.addClass("C")};
    KivClass* const one = design.addClass("One");
    KivClass* const two = design.addClass("Two");
    two->modelLevel = 2; // not written, named all the same
    design.generalization("", design.root, {subtypes[0], subtypes[1], subtypes[2]}, {one, two})->visibility = 9;
    design.generalization("hidden", design.root, {subtypes[0]}, {one})->modelLevel = 2;            // 120 to 123
    design.generalization("nulls", design.root, {nullptr, subtypes[2]}, {nullptr, two});           // 124 to 137
    KivGeneralization* const stranger = design.generalization("stranger", design.root, {}, {one}); // 138
    subtypes[2]->generalizations.add(stranger);
    subtypes[2]->generalizations.add(nullptr);
    const std::string elements = design.elements();
    // Per generalization and supertype k: number + 1 + 3 s + (3 S + 1) k.
    EXPECT_THAT(linesWith("quid       \t", elements),
                ElementsAre("\"3449E8000065\"", "\"3449E800006F\"", // A: 101, 111
                            "\"3449E8000068\"", "\"3449E8000072\"", // B: 104, 114
                            "\"3449E800006B\"", "\"3449E8000075\"", "\"3449E8000087\"", "\"3449E800008B\"")) // C
        << "135 = 124 + 1 + 3 + 7, 139 = 138 + 1";
    EXPECT_THAT(linesWith("supplier   \t", elements),
                ElementsAre("\"One\"", "\"Two\"", "\"One\"", "\"Two\"", "\"One\"", "\"Two\"", "\"Two\"", "\"One\""));
    EXPECT_THAT(elements, HasSubstr(petalLines(R"(
            label      \t""
            supplier   \t"Two"
            quidu      \t"3449E2000063"
            exportControl \t"Implementation"))")));
}

TEST(Classes, SkipRelationshipsThatLackAnEnd)
{
    Design design;
    KivClass* const a = design.addClass("A");
    KivClass* const onlyHidden = design.addClass("only hidden");
    design.generalization("hidden", design.root, {onlyHidden}, {a})->modelLevel = 2;
    design.realization("r", design.root, a, nullptr);
    design.dependency("d", design.root, a, nullptr)->description = "lost";
    KivClass* const b = design.addClass("B");
    design.realization("r", design.root, b, nullptr);
    design.realization("r", design.root, b, a)->modelLevel = 2;
    design.realization("r", design.root, b, a)->client = nullptr;
    design.dependency("d", design.root, b, nullptr);
    design.dependency("d", design.root, b, a)->modelLevel = 2;
    const std::string elements = design.elements();
    EXPECT_THAT(linesWith("superclasses", elements), ElementsAre(" \t(list inheritance_relationship_list)"));
    EXPECT_THAT(linesWith("(object Realize_Relationship", elements), ElementsAre(""));
    EXPECT_THAT(linesWith("(object Uses_Relationship", elements), ElementsAre(""));
    EXPECT_EQ(linesWith("realized_interfaces", elements).size(), 1U) << "A has no list";
    EXPECT_EQ(linesWith("used_nodes", elements).size(), 1U) << "A has no list";
}

// Attributes

TEST(Attributes, WithEverything)
{
    Design design;
    KivClass* const owner = design.addClass("C");
    KivAttribute* const attribute = design.attribute("number", owner, design.type("T", "VARCHAR"));
    attribute->description = "one\r\ntwo";
    attribute->stereotype = "key";
    attribute->initialValue = "say \"hi\"";
    attribute->visibility = 1;
    attribute->containment = 1;
    attribute->isStatic = attribute->isDerived = true;
    EXPECT_THAT(design.elements(), HasSubstr(petalLines(R"(
            (object ClassAttribute "number"
            quid\t"3449E400000B"
            documentation\t\n|one\r\n|two\n
            stereotype\t"key"
            type\t"std::string"
            initv\t\n|say "hi"\n
            exportControl\t"Protected"
            Containment\t"By Reference"
            static\tTRUE
            derived\tTRUE))
        language)")));
}

TEST(Attributes, AreSortedAndFiltered)
{
    Design design;
    KivClass* const owner = design.addClass("C");
    const std::pair<const char*, int> attributes[] = {{"tie 1", 5},   {"last", 32767},   {"hidden", 0},
                                                      {"tie 2", 5},   {"first", -32768}, {"tie 3", 5},
                                                      {"in both", 7}, {"foreign", 6},    {"minus", -1}};
    for (const auto& [name, position] : attributes)
        design.attribute(name, owner)->position = static_cast<std::int16_t>(position);
    owner->attributes.at(2)->modelLevel = 2;
    owner->attributes.add(nullptr);
    const auto at = [&](std::size_t i) { return owner->attributes.at(i); };
    design.key<KivCandidateKey>("candidate", owner, {at(0), at(6)});
    design.key<KivForeignKey>("foreign", owner, {at(6), at(7)});
    KivClass* const other = design.addClass("D");
    design.key<KivForeignKey>("foreign", owner, {design.attribute("alone", other)});
    const auto written = [&](const char* exportsForeignKeys) {
        return linesWith("(object ClassAttribute ",
                         design.elements({{BP_EXPORT_FOREIGN_KEY_ATTRIBUTES, exportsForeignKeys}}));
    };
    EXPECT_THAT(written("False"),
                ElementsAre("\"first\"", "\"minus\"", "\"tie 1\"", "\"tie 2\"", "\"tie 3\"", "\"last\""));
    EXPECT_THAT(written("True"), ElementsAre("\"first\"", "\"minus\"", "\"tie 1\"", "\"tie 2\"", "\"tie 3\"",
                                             "\"foreign\"", "\"in both\"", "\"last\"", "\"alone\""));
    EXPECT_EQ(linesWith("class_attributes", design.elements()).size(), 1U) << "D has no list";
}

// Operations

TEST(Operations, WithEverything)
{
    Design design;
    KivClass* const owner = design.addClass("C");
    KivOperation* const operation = design.operation("move", owner);
    operation->position = 2;
    KivType* const number = design.type("Number", "INTEGER");
    operation->description = "Moves it";
    operation->stereotype = "command";
    operation->returnType = design.type("Flag", "BOOLEAN");
    operation->concurrency = 1;
    operation->preCondition = "idle";
    operation->postCondition = "moved\nand idle";
    operation->semantics = "C:\\";
    operation->visibility = 2;
    operation->modelLevel = 2; // says nothing about operations
    operation->isFriend = operation->isAbstract = operation->isVirtual = operation->isStatic = true;
    design.argument("third", operation->arguments, number, 3)->initialValue = "\"x\"";
    design.argument("first", operation->arguments, nullptr, -1);
    design.argument("second", operation->arguments, number, 3);
    std::swap(operation->arguments.at(0)->position, operation->arguments.at(2)->position);
    operation->arguments.at(0)->position = 4;
    design.operation("stop", owner)->position = 1;
    EXPECT_THAT(design.elements(), HasSubstr(petalLines(R"(
            uid\t\t0)
            (object Operation\t"move"
            attributes \t(list Attribute_Set
            \t(object Attribute
            \ttool\t"cg"
            \tname\t"OperationKind"
            \tvalue\t("OperationKindSet" 201)))
            quid\t"3449E000000F"
            documentation\t"Moves it"
            stereotype\t"command"
            parameters \t(list Parameters
                (object Parameter "first")
                (object Parameter "second"
                type\t"int")
                (object Parameter "third"
                type\t"int"
                initv\t\n|"x"\n))
            result\t"bool"
            concurrency\t"Guarded"
            pre_condition\t(object Semantic_Info
            \tPDL\t"idle"
            )
            post_condition\t(object Semantic_Info
            \tPDL\t\n|moved\n|and idle\n
            )
            semantics\t(object Semantic_Info
            \tPDL\t"C:\\\\"
            )
            opExportControl\t"Private"
            friend\tTRUE
            abstract\tTRUE
            virtual\tTRUE
            static\tTRUE
            uid\t\t0))
        language)")));
}

// Associations

TEST(Associations, WithEverything)
{
    Design design;
    KivClass* const customer = design.addClass("Customer");
    KivClass* const contract = design.addClass("Contract");
    KivAssociation* const places = design.association("places", design.root);
    places->description = "an order";
    places->stereotype = "daily";
    places->constraint = "not \"both\"";
    places->associationClass = contract;
    places->isAggregation = true;
    KivAssociationRole* const buyer = design.role("buyer", places, customer);
    buyer->description = "who pays";
    buyer->constraint = "solvent";
    buyer->multiplicity = {0, -1, true};
    buyer->visibility = 1;
    buyer->containment = 0;
    buyer->isStatic = buyer->isFriend = buyer->isNavigable = buyer->isAggregateEnd = true;
    for (const auto& [name, position] : {std::pair("second", 2), {"first", 1}}) {
        auto* const qualifier = design.make<KivAttribute>(name);
        qualifier->position = static_cast<std::int16_t>(position);
        qualifier->type = position == 1 ? design.type("T", "DATE") : nullptr;
        qualifier->initialValue = "never written";
        buyer->qualifiers.add(qualifier);
    }
    auto* const key = design.make<KivCandidateKey>("makes no qualifier where there are some");
    key->attributes.add(design.make<KivAttribute>("never written"));
    design.role("a $UNNAMED$2", places, customer)->key = key;
    // Numbers: T 10, Customer 11, Contract 12, qualifiers 13 and 14, roles 15 and 19, association 23.
    const std::string elements = design.elements({{BP_GENERATE_QUALIFIERS, "True"}});
    EXPECT_EQ(elements.substr(elements.find("\r\n\t\t(object Association")), petalLines(R"(
        (object Association "places"
        quid       \t"3449E6000017"
        documentation\t"an order"
        stereotype\t"daily"
        roles\t(list role_list
            (object Role "buyer"
            quid       \t"3449E000000F"
            documentation\t"who pays"
            label\t\t"buyer"
            supplier   \t"Customer"
            quidu      \t"3449E200000B"
            keys\t(list class_attribute_list
                (object ClassAttribute "first"
                quid\t\t"3449E400000E"
                type\t\t"std::chrono::year_month_day")
                (object ClassAttribute "second"
                quid\t\t"3449E400000D"
                type\t\t"int"))
            exportControl\t"Protected"
            client_cardinality \t(value cardinality "0..n")
            Constraints\t"solvent"
            Containment\t"By Value"
            static\tTRUE
            friend\tTRUE
            is_navigable \tTRUE
            is_aggregate \tTRUE)
            (object Role "a $UNNAMED$2"
            quid       \t"3449E0000013"
            label\t\t""
            supplier   \t"Customer"
            quidu      \t"3449E200000B"
            exportControl\t"Public"
            Containment\t"Unspecified"
            is_navigable \tFALSE
            is_aggregate \tFALSE))
        Constraints\t\n|not "both"\n
        AssociationClass\t"Contract"))"));
}

TEST(Associations, LeaveOutACardinalityOfNone)
{
    const std::pair<KivMultiplicity, const char*> rows[] = {
        {{1, 1, false}, ""},          {{0, 0, true}, ""},         {{0, 1, true}, "\"0..1\")"}, {{1, 1, true}, "\"1\")"},
        {{1, -1, true}, "\"1..n\")"}, {{-1, -1, true}, "\"n\")"}, {{2, 5, true}, "\"2..5\")"},
    };
    for (const auto& [multiplicity, expected] : rows) {
        Design design;
        KivClass* const a = design.addClass("A");
        design.association("x", design.root, a, a)->roles.at(1)->multiplicity = multiplicity;
        EXPECT_EQ(lineWith("client_cardinality \t(value cardinality ", design.elements()), expected)
            << multiplicity.lower << " to " << multiplicity.upper;
    }
}

TEST(Associations, KnowAggregates)
{
    for (const bool isAggregation : {false, true})
        for (const bool isEnd : {false, true}) {
            Design design;
            KivClass* const a = design.addClass("A");
            KivAssociation* const association = design.association("x", design.root, a, a);
            association->isAggregation = isAggregation;
            association->roles.at(0)->isAggregateEnd = isEnd;
            EXPECT_THAT(linesWith("is_aggregate \t", design.elements()),
                        ElementsAre(isAggregation && isEnd ? "TRUE)" : "FALSE)", "FALSE)))"));
        }
}

TEST(Associations, HideWithTheirClasses)
{
    using Change = void (*)(KivAssociation&, KivClass&);
    const struct {
        const char* description;
        Change change;
        std::vector<std::string> roles;
    } rows[] = {
        {"hidden association", [](auto& x, auto&) { x.modelLevel = 2; }, {}},
        {"hidden participant", [](auto&, auto& b) { b.modelLevel = 2; }, {}},
        {"hidden role", [](auto& x, auto&) { x.roles.at(1)->modelLevel = 2; }, {"\"first\"", "\"second\""}},
        {"null role", [](auto& x, auto&) { x.roles.add(nullptr); }, {"\"first\"", "\"second\""}},
        {"role without class", [](auto& x, auto&) { x.roles.at(0)->participant = nullptr; }, {"\"second\""}},
        {"no role", [](auto& x, auto&) { x.roles.removeAll(); }, {}},
    };
    for (const auto& row : rows) {
        Design design;
        KivClass* const b = design.addClass("B");
        KivAssociation* const association = design.association("x", design.root, design.addClass("A"), b);
        row.change(*association, *b);
        const std::string elements = design.elements();
        EXPECT_EQ(linesWith("(object Role ", elements), row.roles) << row.description;
        EXPECT_EQ(linesWith("(object Association ", elements).empty(), row.roles.empty() && *row.description == 'h')
            << row.description;
    }
}

TEST(Associations, LabelRolesByTheirNamesUnlessNobodyNamedThem)
{
    const std::pair<const char*, const char*> rows[] = {{"buyer", "\"buyer\""},         {"$UNNAMED$", "\"\""},
                                                        {"a $UNNAMED$2", "\"\""},       {"$UNNAMED", "\"$UNNAMED\""},
                                                        {"$unnamed$", "\"$unnamed$\""}, {"", "\"\""}};
    for (const auto& [name, label] : rows) {
        Design design;
        design.role(name, design.association("x", design.root), design.addClass("A"));
        EXPECT_EQ(lineWith("label\t\t", design.elements()), label) << name;
        EXPECT_EQ(lineWith("(object Role ", design.elements()), std::string(1, '"') + name + '"');
    }
}

TEST(Associations, GenerateQualifiersFromTheOppositeKey)
{
    Design design;
    design.numberFrom(25);
    KivClass* const a = design.addClass("A");
    KivType* const type = design.type("T", "INTEGER");                // 25
    KivAttribute* const number = design.attribute("number", a, type); // 26
    KivAttribute* const noType = design.attribute("no type", a);      // 27
    KivAttribute* const stranger = design.attribute("stranger", a);   // 28
    auto* const other = design.key<KivCandidateKey>("other", a, {number});
    auto* const key = design.key<KivForeignKey>("key", a, {number, noType});
    key->attributes.add(stranger); // which does not know it
    stranger->keys.add(other);
    number->keyMappings.add({other, design.make<KivAttribute>("wrong")});
    number->keyMappings.add({key, design.make<KivAttribute>("back\\slash")});
    number->keyMappings.add({key, design.make<KivAttribute>("late")});
    noType->keyMappings.add({key, design.make<KivAttribute>("")});
    stranger->keyMappings.add({nullptr, design.make<KivAttribute>("no key")});
    KivAssociation* const association = design.association("x", design.root, a, a);
    association->roles.at(0)->key = key;
    const auto elements = [&] { return design.elements({{BP_GENERATE_QUALIFIERS, "True"}}); };
    const std::string keys = petalLines(R"(
            quidu      \t"3449E200001F"
            keys\t(list class_attribute_list
                (object ClassAttribute "number"
                quid\t\t"3449E40F425A"
                type\t\t"int"
                initv\t"back\\\\slash")
                (object ClassAttribute "no type"
                quid\t\t"3449E400001B"
                type\t\t"int")
                (object ClassAttribute "stranger"
                quid\t\t"3449E40F425C"
                type\t\t"int"))
            exportControl)");
    const std::string generated = elements();
    EXPECT_THAT(generated, HasSubstr(keys));
    EXPECT_EQ(linesWith("keys\t", generated).size(), 1U);
    EXPECT_LT(generated.find("(object Role \"second\""), generated.find("keys\t")) << "of the other role";
    EXPECT_THAT(linesWith("keys\t", design.elements()), IsEmpty()) << "without the option";

    association->roles.add(nullptr);
    design.role("without class", association, nullptr);
    EXPECT_THAT(elements(), HasSubstr(keys)) << "two roles that count";
    design.role("third", association, a);
    EXPECT_THAT(linesWith("keys\t", elements()), IsEmpty()) << "three roles";

    KivAssociation* const empty = design.association("y", design.root, a, a);
    empty->roles.at(1)->key = design.key<KivForeignKey>("empty", a, {});
    EXPECT_THAT(linesWith("keys\t", elements()), IsEmpty()) << "a key without attributes";
}

// Enumerations

TEST(Enumerations, AreClasses)
{
    Design design;
    KivClass* const owner = design.addClass("C");
    design.attribute("x", owner, design.enumeration("Color", {{"RED", "0"}, {"GREEN", "1"}}));
    const std::string head = R"(
        (object Class "Color"
        attributes\t(list Attribute_Set
        \t(object Attribute)";
    const std::string cpp = petalLines(head + R"(
        \ttool       \t"cg"
        \tname       \t"ImplementationType"
        \tvalue      \t(value Text "enum Color {RED=0, GREEN=1}")))
        \tquid       \t"3449E200000C"))");
    const std::string idl = petalLines(head + R"(
        \ttool       \t"IDL"
        \tname       \t"ImplementationType"
        \tvalue      \t"enum Color {RED=0, GREEN=1}")
        \t(object Attribute
        \ttool       \t"IDL"
        \tname       \t"IDLSpecificationType"
        \tvalue      \t("IDLSpecSet" 8)))
        \tquid       \t"3449E200000C"))");
    for (const auto& [system, expected] :
         {std::pair("C++", cpp), {"Java", idl}, {"Oracle 7.x/8", idl}, {"As is", idl}, {"C", idl}}) {
        const std::string elements = design.elements({{BP_SUPPORTED_TYPES, system}});
        EXPECT_EQ(elements.substr(elements.find("\r\n\t\t(object Class \"Color\"")), expected) << system;
    }
}

TEST(Enumerations, ListTheirLiterals)
{
    const struct {
        const char* description;
        std::initializer_list<std::pair<const char*, const char*>> literals;
        const char* text;
    } rows[] = {
        {"value", {{"RED", "0"}}, "RED=0"},
        {"value as name", {{"A", "A"}, {"B", "b"}}, "A, B=b"},
        {"no name", {{"", "5"}}, "5=5"},
        {"no value", {{"A", ""}}, "A="},
        {"neither", {{"", ""}, {"B", "1"}}, ", B=1"},
        {"escaped", {{"a\"b", "c\nd"}, {"e\\", "f\r"}}, "a\\\"b=c\\nd, e\\\\=f\\r"},
        {"same before escaping", {{"a\\b", "a\\b"}}, "a\\\\b=a\\\\b"},
        {"same after escaping", {{"a\\b", "a\\\\b"}}, "a\\\\b"},
    };
    for (const auto& row : rows) {
        Design design;
        design.attribute("x", design.addClass("C"), design.enumeration("E", row.literals));
        EXPECT_THAT(linesWith("value      \t(value Text ", design.elements()),
                    ElementsAre("\"enum E {" + std::string(row.text) + "}\")))"))
            << row.description;
    }
    Design design;
    KivType* const type = design.enumeration("E", {{"C", "C"}, {"A", "A"}, {"B", "B"}, {"D", "D"}});
    type->typeValues.at(0)->position = 9;
    type->typeValues.at(1)->position = -1;
    type->typeValues.at(3)->position = 2; // as B
    design.attribute("x", design.addClass("C"), type);
    EXPECT_THAT(design.elements(), HasSubstr("{A, B, D, C}"));
}

TEST(Enumerations, WithVeryManyLiteralsAreWhole)
{
    Design design;
    KivType* const type = design.enumeration("E", {});
    std::string expected;
    for (int i = 0; i < 10000; ++i) {
        const std::string name = "literal " + std::to_string(i);
        type->typeValues.add(design.make<KivTypeValue>(KivString(name)));
        type->typeValues.at(type->typeValues.count() - 1)->value = KivString(name);
        expected += (i == 0 ? "" : ", ") + name;
    }
    design.attribute("x", design.addClass("C"), type);
    EXPECT_TRUE(design.elements().find("{" + expected + "}") != std::string::npos);
}

TEST(Enumerations, AreWrittenOnceInTheFirstPackageAfterTheirNaming)
{
    ModelBuilder builder;
    KivDesignPackage* const root = builder.package("Logical View");
    KivType* const early = builder.enumeration("Early", {{"A", "0"}});
    KivType* const late = builder.enumeration("Late", {{"A", "0"}});
    KivType* const tooLate = builder.enumeration("TooLate", {{"A", "0"}});
    KivType* const again = builder.enumeration("Early", {{"B", "1"}}); // another type of that name
    builder.enumeration("Unused", {{"A", "0"}});
    KivDesignPackage* const p = builder.package("P", root);
    KivDesignPackage* const q = builder.package("Q", root);
    for (KivDesignPackage* const package : {p, q}) {
        KivClass* const owner = builder.addClass("C", package);
        builder.attribute("x", owner, early);
        builder.operation("y", owner)->returnType = package == q ? again : early;
        KivAssociation* const association = builder.association("A", package, owner, owner);
        auto* const qualifier = builder.make<KivAttribute>("q");
        qualifier->type = package == q ? tooLate : late; // named behind the package's enumerations
        association->roles.at(0)->qualifiers.add(qualifier);
    }
    for (int run = 1; run <= 2; ++run) {
        std::vector<std::string> written;
        for (const std::string& object : linesWith("(object ", exportedLogicalView(builder.model)))
            if (object.starts_with("Class \"") || object.starts_with("Class_Category"))
                written.push_back(object);
        EXPECT_THAT(written, ElementsAre("Class_Category \"P\"", "Class \"C\"", "Class \"Early\"",
                                         "Class_Category \"Q\"", "Class \"C\"", "Class \"Late\"", "Class \"Early\""))
            << "run " << run;
    }
}
