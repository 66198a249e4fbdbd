#include "compare/changes/Pairing.h"
#include "compare/report/Report.h"
#include "reader/PetalTexts.h"

#include <gmock/gmock.h>

namespace {

std::string difference(const std::string& before, const std::string& after,
                       compare::Depth depth = compare::Depth::meaning)
{
    const reader::Document oldDocument = read(before);
    const reader::Document newDocument = read(after);
    compare::Snapshot oldState(oldDocument, depth);
    compare::Snapshot newState(newDocument, depth);
    compare::pair(oldState, newState);
    const compare::Comparison states{oldState, newState, depth};
    std::string text;
    compare::writeText(states, compare::changesOf(states), false, [&](std::string_view piece) { text += piece; });
    return text;
}

struct Row {
    const char* name;
    std::string before;
    std::string after;
    std::string told; ///< below the heading of the Logical View
};

void expectTold(const std::vector<Row>& rows)
{
    for (const Row& row : rows)
        EXPECT_EQ(difference(logicalView(row.before), logicalView(row.after)),
                  row.told.empty() ? "" : "package Logical View\n" + row.told)
            << row.name;
}

std::string classOf(const std::string& name, const std::string& quid, const std::string& rest = "")
{
    return "(object Class \"" + name + "\"\nquid \"" + quid + "\"\n" + rest + ")\n";
}

std::string attributes(const std::string& list)
{
    return "class_attributes (list class_attribute_list\n" + list + ")";
}

std::string attribute(const std::string& name, const std::string& quid, const std::string& type = "Integer",
                      const std::string& rest = "")
{
    return "(object ClassAttribute \"" + name + "\"\nquid \"" + quid + "\"\ntype \"" + type + "\"\n" + rest + ")\n";
}

std::string operations(const std::string& list)
{
    return "operations (list Operations\n" + list + ")";
}

std::string operation(const std::string& name, const std::string& quid, const std::string& parameterType,
                      const std::string& parameterName = "p")
{
    return "(object Operation \"" + name + "\"\nquid \"" + quid +
           "\"\nparameters (list Parameters (object Parameter \"" + parameterName + "\" type \"" + parameterType +
           "\")))\n";
}

std::string package(const std::string& name, const std::string& quid, const std::string& elements)
{
    return "(object Class_Category \"" + name + "\"\nquid \"" + quid +
           "\"\nlogical_models (list unit_reference_list\n" + elements + "))\n";
}

std::string inheritance(const std::string& supplier, const std::string& quid)
{
    return "superclasses (list inheritance_relationship_list (object Inheritance_Relationship quid \"F1\" supplier \"" +
           supplier + "\" quidu \"" + quid + "\"))";
}

std::string association(const std::string& quid, const std::string& one, const std::string& oneQuid,
                        const std::string& other, const std::string& otherQuid, const std::string& rest = "")
{
    const auto role = [](const std::string& supplier, const std::string& supplierQuid, const std::string& more) {
        return "(object Role \"$UNNAMED$1\" supplier \"Logical View::" + supplier + "\" quidu \"" + supplierQuid +
               "\"" + more + ")\n";
    };
    return "(object Association \"$UNNAMED$0\" quid \"" + quid + "\" roles (list role_list\n" +
           role(one, oneQuid, rest) + role(other, otherQuid, "") + "))\n";
}

} // namespace

TEST(Compare, FeaturesOfAClass)
{
    const auto shop = [](const std::string& list) { return classOf("Order", "B1", attributes(list)); };
    const std::string a = attribute("a", "C1");
    const std::string b = attribute("b", "C2");
    const std::string c = attribute("c", "C3");
    const auto withOperations = [](const std::string& list) { return classOf("Order", "B1", operations(list)); };
    expectTold({
        {"same", shop(a + b), shop(a + b), ""},
        {"added", shop(a), shop(a + b), "  class Order\n    + attribute b : Integer\n"},
        {"removed", shop(a + b), shop(b), "  class Order\n    - attribute a : Integer\n"},
        {"retyped", shop(a + b), shop(attribute("a", "C1", "Long") + b),
         "  class Order\n    ~ attribute a: type Integer -> Long\n"},
        {"renamed", shop(a + b), shop(a + attribute("z", "C2")), "  class Order\n    ~ attribute z: renamed from b\n"},
        {"another order", shop(a + b + c), shop(c + a + b), "  class Order\n    ~ attribute c: now first\n"},
        {"numbered anew", shop(a + b), shop(attribute("x", "C1") + attribute("a", "C2") + attribute("b", "C3")),
         "  class Order\n    + attribute x : Integer\n"},
        {"one of two with the same name", withOperations(operation("f", "D1", "int") + operation("f", "D2", "long")),
         withOperations(operation("f", "D2", "long")), "  class Order\n    - operation f(p : int)\n"},
        {"a parameter", withOperations(operation("f", "D1", "int")), withOperations(operation("f", "D1", "char")),
         "  class Order\n    operation f(p)\n      ~ parameter p: type int -> char\n"},
        {"a parameter of another name", withOperations(operation("f", "D1", "int")),
         withOperations(operation("f", "D1", "int", "q")),
         "  class Order\n    operation f(q)\n      ~ parameter q: renamed from p\n"},
    });
}

TEST(Compare, ClassesAndPackages)
{
    const std::string id = attributes(attribute("id", "C1") + attribute("no", "C2"));
    const std::string idOfOther = attributes(attribute("id", "C7") + attribute("no", "C8"));
    const std::string user = classOf("User", "B9", attributes(attribute("order", "C9", "Order")));
    const std::string newUser = classOf("User", "B9", attributes(attribute("order", "C9", "Purchase")));
    const std::string sub = classOf("Sub", "B8", inheritance("Logical View::Order", "B1"));
    const std::string newSub = classOf("Sub", "B8", inheritance("Logical View::Purchase", "B1"));
    expectTold({
        {"added", "", classOf("Order", "B1", id), "  + class Order\n"},
        {"removed with what is in it", classOf("Order", "B1", id), "", "  - class Order\n"},
        {"renamed", classOf("Order", "B1", id), classOf("Purchase", "B1", id),
         "  ~ class Purchase: renamed from Order\n"},
        {"renamed, and those who name it", classOf("Order", "B1", id) + user + sub,
         classOf("Purchase", "B1", id) + newUser + newSub, "  ~ class Purchase: renamed from Order\n"},
        {"renamed without its quid", classOf("Order", "B1", id), classOf("Purchase", "B2", idOfOther),
         "  ~ class Purchase: renamed from Order\n"},
        {"renamed and changed", classOf("Order", "B1", id),
         classOf("Purchase", "B2", attributes(attribute("id", "C7", "Long") + attribute("no", "C8"))),
         "  ~ class Purchase: renamed from Order\n    ~ attribute id: type Integer -> Long\n"},
        {"renamed and grown, with relations", classOf("Order", "B1", id) + classOf("Base", "B3"),
         classOf("Purchase", "B2",
                 attributes(attribute("id", "C7") + attribute("no", "C8") + attribute("at", "C9")) +
                     inheritance("Logical View::Base", "B4")) +
             classOf("Base", "B4"),
         "  ~ class Purchase: renamed from Order\n    + attribute at : Integer\n    + generalization to Base\n"},
        {"with colons in the name", classOf("std::list<a::B>", "B1"), "", "  - class std::list<a::B>\n"},
        {"two of other numbers", classOf("A", "B1") + classOf("B", "B2"),
         classOf("X", "B1") + classOf("A", "B2") + classOf("B", "B3"), "  + class X\n"},
        {"abstract", classOf("A", "B1"), classOf("A", "B1", "abstract TRUE"), "  ~ class A: abstract\n"},
        {"what goes without saying", classOf("A", "B1"),
         classOf("A", "B1", "abstract FALSE\nconcurrency \"Sequential\"\nexportControl \"Public\""), ""},
        {"texts", classOf("A", "B1", "documentation \"one two\""), classOf("A", "B1", "documentation\n|one three\n"),
         "  ~ class A: documentation \"one two\" -> \"one three\"\n"},
        {"properties of tools", classOf("A", "B1"),
         classOf("A", "B1",
                 "attributes (list Attribute_Set (object Attribute tool \"Java\" name \"final\" value TRUE))"),
         "  ~ class A: Java.final\n"},
        {"another superclass", classOf("A", "B1") + classOf("B", "B2") + classOf("S", "B3", inheritance("A", "B1")),
         classOf("A", "B1") + classOf("B", "B2") + classOf("S", "B3", inheritance("B", "B2")),
         "  class S\n    ~ generalization to B: target A -> B\n"},
    });
    EXPECT_EQ(difference(logicalView(package("P", "A1", classOf("Order", "B1", id)) + package("Q", "A2", "") + sub),
                         logicalView(package("P", "A1", "") + package("Q", "A2", classOf("Order", "B1", id)) + sub)),
              "package Logical View::Q\n  ~ class Order: moved from Logical View::P\n");
    EXPECT_EQ(difference(logicalView(package("P", "A1", classOf("Order", "B1", id))),
                         logicalView(package("R", "A1", classOf("Order", "B1", id)))),
              "~ package Logical View::R: renamed from P\n");
    EXPECT_EQ(difference(logicalView(package("P", "A1", classOf("Order", "B1", id) + sub)),
                         logicalView(package("R", "A9", classOf("Order", "B7", idOfOther + "abstract TRUE") + sub))),
              "~ package Logical View::R: renamed from P\n  ~ class Order: abstract\n");
}

TEST(Compare, AssociationsAreKnownByTheirEnds)
{
    const std::string classes = classOf("A", "B1") + classOf("B", "B2") + classOf("C", "B3");
    const std::string ab = association("E1", "A", "B1", "B", "B2");
    expectTold({
        {"numbered anew", classes + ab,
         classes + association("E1", "B", "B2", "C", "B3") + association("E2", "A", "B1", "B", "B2"),
         "  + association (B -- C)\n"},
        {"with an end that is called otherwise", classes + ab,
         classOf("Z", "B1") + classOf("B", "B2") + classOf("C", "B3") + association("E1", "Z", "B1", "B", "B2"),
         "  ~ class Z: renamed from A\n"},
        {"multiplicity", classes + ab,
         classes + association("E1", "A", "B1", "B", "B2", " client_cardinality (value cardinality \"0..*\")"),
         "  association (A -- B)\n    ~ role to A: multiplicity 0..* added\n"},
        {"another end", classes + ab, classes + association("E1", "A", "B1", "C", "B3"),
         "  association (A -- C)\n    ~ role to C: target \"Logical View::B\" -> \"Logical View::C\"\n"},
        {"another name of an end, and numbered anew", classes + ab,
         classes + association("E9", "A", "B1", "B", "B2", " label \"owner\""),
         "  association (A -- B)\n    ~ role to A: label owner added\n"},
    });
    EXPECT_EQ(difference(logicalView(classes + package("P", "A1", ab) + package("Q", "A2", "")),
                         logicalView(classes + package("P", "A1", "") +
                                     package("Q", "A2", association("E9", "A", "B1", "B", "B2")))),
              "package Logical View::Q\n  ~ association (A -- B): moved from Logical View::P\n");
}

TEST(Compare, WhatToolsChangeByThemselvesIsNothing)
{
    const std::string view = "(object ClassView \"Class\" \"Logical View::A\" @1 location (1, 2) quidu \"B1\" width 3)";
    std::string before = logicalView(classOf("A", "B1", "stereotype \"x\"\nabstract TRUE"), view);
    std::string after =
        logicalView(classOf("A", "B1", "abstract TRUE\nstereotype \"x\""),
                    "(object ClassView \"Class\" \"Logical View::A\" @77 quidu \"B1\" width 3 location   (1,2))");
    after.replace(after.find("version \t42"), 11, "version \t50");
    for (std::size_t at = after.find('\n'); at != std::string::npos; at = after.find('\n', at + 2))
        after.insert(at, 1, '\r');
    EXPECT_EQ(difference(before, after), "");
    const std::string all = difference(before, after, compare::Depth::all);
    EXPECT_THAT(all, testing::HasSubstr("notation 42 -> 50; line ends LF -> CRLF"));
    EXPECT_THAT(all, testing::HasSubstr("A number 1 -> 77"));
}

TEST(Compare, ViewsOfDiagrams)
{
    const std::string classes = classOf("A", "B1") + classOf("B", "B2", inheritance("Logical View::A", "B1"));
    const auto box = [](const std::string& name, const std::string& quid, const std::string& rest) {
        return "(object ClassView \"Class\" \"Logical View::" + name + "\" @" + quid.substr(1) + "\nquidu \"" + quid +
               "\"\n" + rest + ")\n";
    };
    const auto line = [](const std::string& bends) {
        return "(object InheritView \"\" @9 quidu \"F1\" client @2 supplier @1 vertices (list Points (0, 0)" + bends +
               "(9, 0)))\n";
    };
    const auto note = [](const std::string& text) {
        return "(object NoteView @5 location (70, 70) label (object ItemLabel label \"" + text + "\"))";
    };
    const std::string a = box("A", "B1", "location (10, 10) width 20 height 20");
    const std::string b = box("B", "B2", "location (90, 10) width 20 height 20");
    const std::string grown = "autoResize TRUE label (object ItemLabel location (0, 0)) ";
    const struct {
        const char* name;
        std::string before;
        std::string after;
        std::string told;
    } rows[] = {
        {"shown", a, a + b, "B shown"},
        {"hidden, and its line with it", a + b + line(""), a, "B hidden"},
        {"moved, and its line with it", a + b + line(""),
         a + box("B", "B2", "location (90, 50) width 20 height 20") + line("(5, 5)"), "B moved"},
        {"resized", a, box("A", "B1", "location (10, 10) width 25 height 20"), "A resized"},
        {"resized by its content", box("A", "B1", grown + "location (10, 10) width 20"),
         box("A", "B1", grown + "location (12, 10) width 24"), ""},
        {"rerouted", a + b + line(""), a + b + line("(5, 5)"), "generalization B -- A rerouted"},
        {"an end slides", a + b + line("(5, 0)"), a + b + line(""), ""},
        {"line hidden", a + b + line(""), a + b, "generalization B -- A hidden"},
        {"in another order", a + b, b + a, ""},
        {"two in two ways", a + b,
         box("A", "B1", "location (11, 10) width 20 height 20") +
             box("B", "B2", "location (91, 10) width 20 height 20"),
         "A, B moved"},
        {"compartment", a, box("A", "B1", "SuppressAttribute TRUE location (10, 10) width 20 height 20"),
         "A SuppressAttribute"},
        {"note", note("one"), note("two"), "note \"two\" text one -> two"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(difference(logicalView(classes, row.before), logicalView(classes, row.after)),
                  row.told.empty() ? "" : "diagram Logical View::Main: " + row.told + '\n')
            << row.name;
    EXPECT_EQ(difference(logicalView(classOf("A", "B1"), a), logicalView("")), "package Logical View\n  - class A\n");
}
