#include "plugin/support/Design.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;

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
