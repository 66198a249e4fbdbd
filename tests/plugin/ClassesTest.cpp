#include "plugin/support/Design.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;

TEST(Classes, OfEveryKind)
{
    Design design;
    KivClass* const theClass = design.addClass("C");
    theClass->isAbstract = true;
    design.operation("o", theClass);
    design.attribute("a", theClass);
    design.argument("T", theClass->parameters);
    const std::pair<int, const char*> rows[] = {
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
        theClass->classType = classType;
        const std::string elements = design.elements();
        EXPECT_EQ(elements.find("\r\n\t\t(object " + std::string(keyword) + " \"C\"\r\n"), 0U) << classType;
        const bool isTyped = classType != 0;
        for (const char* const line :
             {"abstract\t", "concurrency\t\"Sequential\"\r\n\t\to", "operations\t", "parameters \t"})
            EXPECT_EQ(elements.find(line) != std::string::npos, isTyped) << classType << " " << line;
        EXPECT_EQ(linesWith("class_attributes \t", elements).size(), 1U) << classType;
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
        design.operation("whose level says nothing", design.addClass("Other"))->modelLevel = 2;
        design.addClass("C")->modelLevel = level;
        EXPECT_EQ(linesWith("(object Class ", design.elements()).size(), level == 2 ? 1U : 2U) << "level " << level;
        EXPECT_EQ(linesWith("(object Operation", design.elements()).size(), 1U);
    }
    for (const char* const stereotype : {"", "key"}) {
        Design design;
        design.attribute("a", design.addClass("C"))->stereotype = stereotype;
        EXPECT_EQ(lineWith("stereotype\t", design.elements()), *stereotype == '\0' ? "" : "\"key\"");
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
