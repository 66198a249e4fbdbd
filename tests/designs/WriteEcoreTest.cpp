// Ecore files of designs, what an Ecore tool has left in a Rose file included.

#include "designs/formats/WrittenFiles.h"
#include "designs/Import.h"

#include <gmock/gmock.h>
#include <string>

namespace {

using testing::HasSubstr;
using testing::Not;

std::string property(const std::string& name, const std::string& value)
{
    return "(object Attribute tool \"Ecore\" name \"" + name + "\" value " + value + ")";
}

// A Rose file of these classes and associations.
std::string ecoreOf(const std::string& members, const std::string& ofPackage = "")
{
    const std::string text = "(object Petal version 42)\n(object Design \"D\" root_category (object Class_Category "
                             "\"Logical View\" logical_models (list l (object Class_Category \"shop\" " +
                             ofPackage + " logical_models (list l " + members + ")))))";
    const design::Source source{text, "-"};
    const design::Format& format = *design::formatNamed("ecore");
    design::Report report;
    design::Design design = design::readDesign(*design::formatNamed("rose"), source, report);
    design::settleFor(format, design, true, report);
    const design::Catalogue catalogue(design.root);
    return design::filesIn(format, {design, catalogue, "out"}, report).front().text;
}

std::string classOf(const std::string& name, const std::string& rest = "")
{
    return "(object Class \"" + name + "\" quid \"" + name + "\" " + rest + ")";
}

std::string attribute(const std::string& rest)
{
    return classOf("A", "class_attributes (list l (object ClassAttribute \"x\" " + rest + "))");
}

std::string role(const std::string& name, const std::string& type, const std::string& rest)
{
    return "(object Role \"" + name + "\" label \"" + name + "\" supplier \"" + type + "\" quidu \"" + type + "\" " +
           rest + ")";
}

std::string association(const std::string& first, const std::string& second)
{
    return classOf("A") + classOf("B") + "(object Association \"$UNNAMED$0\" quid \"s\" roles (list l " + first +
           second + "))";
}

TEST(WriteEcore, TakesWhatAnEcoreToolKeepsInRoseFiles)
{
    const std::string flags = "attributes (list Attribute_Set " + property("isVolatile", "TRUE") +
                              property("isChangeable", "FALSE") + property("isUnsettable", "TRUE") + ")";
    const struct {
        std::string text;
        const char* expected;
    } rows[] = {
        {ecoreOf(attribute("type \"String\" stereotype \"0..*\"")), "name=\"x\" upperBound=\"-1\" eType="},
        {ecoreOf(attribute("type \"int\" initv \"100\"")), "#//EInt\" defaultValueLiteral=\"100\""},
        {ecoreOf(attribute("type \"String\" initv \"\\\"a\\\"\"")), "defaultValueLiteral=\"a\""},
        {ecoreOf(attribute("type \"String\" " + flags)), "changeable=\"false\" volatile=\"true\" unsettable=\"true\""},
        {ecoreOf(attribute("type \"Money\"")), "eType=\"#//Money\""},
        {ecoreOf(classOf("D", "stereotype \"datatype\" class_attributes (list l (object ClassAttribute "
                              "\"java.util.Date\" stereotype \"javaclass\"))")),
         "\"ecore:EDataType\" name=\"D\" instanceClassName=\"java.util.Date\""},
        {ecoreOf(classOf("A"), "attributes (list Attribute_Set " + property("basePackage", "\"org.x\"") + ")"),
         "name=\"shop\" nsURI=\"http:///org/x/shop.ecore\" nsPrefix=\"org.x.shop\""},
        {ecoreOf(classOf("A"), "attributes (list Attribute_Set " + property("nsURI", "(value Text \"u\")") + ")"),
         "nsURI=\"u\""},
        {ecoreOf(
             association(role("a", "A", "is_aggregate TRUE is_navigable TRUE client_cardinality \"1\""),
                         role("bs", "B", "Containment \"By Value\" is_navigable TRUE client_cardinality \"0..n\""))),
         "name=\"bs\" upperBound=\"-1\" eType=\"#//B\" containment=\"true\" eOpposite=\"#//B/a\""},
        {ecoreOf(association(role("a", "A", "is_aggregate TRUE is_navigable TRUE client_cardinality \"1\""),
                             role("bs", "B", "Containment \"By Value\" is_navigable TRUE"))),
         "name=\"a\" eType=\"#//A\" transient=\"true\" eOpposite=\"#//A/bs\""},
        {ecoreOf(association(role("a", "A", ""), role("", "B", "is_navigable TRUE"))), "name=\"b\" eType=\"#//B\""},
        {ecoreOf(classOf("A", "operations (list l (object Operation \"ok\" stereotype \"inv\"))")),
         "<eParameters name=\"diagnostics\""},
        {ecoreOf(classOf("A b", "")), "name=\"A_b\""},
        {ecoreOf(classOf("C", "stereotype \"enumeration\" class_attributes (list l (object ClassAttribute \"RED\") "
                              "(object ClassAttribute \"BLUE\"))")),
         "<eLiterals name=\"BLUE\" value=\"1\" />"},
    };
    for (const auto& row : rows)
        EXPECT_THAT(row.text, HasSubstr(row.expected));
}

// What a library for Ecore would refuse does not come out.
TEST(WriteEcore, IsValid)
{
    const std::string cycle =
        ecoreOf(classOf("A", "superclasses (list l (object Inheritance_Relationship quidu \"B\"))") +
                classOf("B", "superclasses (list l (object Inheritance_Relationship quidu \"A\"))"));
    EXPECT_THAT(cycle, HasSubstr("eSuperTypes"));
    EXPECT_EQ(cycle.find("eSuperTypes"), cycle.rfind("eSuperTypes"));
    const std::string inherited =
        ecoreOf(attribute("type \"int\"") +
                classOf("B", "superclasses (list l (object Inheritance_Relationship quidu \"A\")) class_attributes "
                             "(list l (object ClassAttribute \"x\" type \"int\"))"));
    EXPECT_THAT(inherited, HasSubstr("name=\"x2\""));
    EXPECT_THAT(ecoreOf(attribute("type \"int\" initv \"many\"")), Not(HasSubstr("defaultValueLiteral")));
    EXPECT_THAT(ecoreOf(classOf("A", "class_attributes (list l (object ClassAttribute \"x\" type \"int\")) operations "
                                     "(list l (object Operation \"getX\" result \"int\"))")),
                Not(HasSubstr("getX")));
}

} // namespace
