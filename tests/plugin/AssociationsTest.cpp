#include "plugin/support/Design.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

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

    auto* const own = design.make<KivAttribute>("own");
    association->roles.at(1)->qualifiers.add(own);
    EXPECT_THAT(linesWith("(object ClassAttribute ", elements()), testing::Contains("\"own\""));
    EXPECT_EQ(linesWith("keys\t", elements()).size(), 1U) << "none where it has some of its own";
    association->roles.at(1)->qualifiers.removeAll();

    association->roles.add(nullptr);
    design.role("without class", association, nullptr);
    EXPECT_THAT(elements(), HasSubstr(keys)) << "two roles that count";
    design.role("third", association, a);
    EXPECT_THAT(linesWith("keys\t", elements()), IsEmpty()) << "three roles";

    KivAssociation* const empty = design.association("y", design.root, a, a);
    empty->roles.at(1)->key = design.key<KivForeignKey>("empty", a, {});
    EXPECT_THAT(linesWith("keys\t", elements()), IsEmpty()) << "a key without attributes";
}
