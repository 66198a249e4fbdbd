#include "browse/changes/ChangedSheets.h"
#include "browse/changes/ChangedDiagrams.h"
#include "ChangedStates.h"

#include <gmock/gmock.h>
#include <string>
#include <string_view>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Pair;

std::string order(std::string_view body, std::string_view name = "Order")
{
    return "(object Class \"" + std::string(name) + "\" quid \"B1\" " + std::string(body) + ")\n";
}

std::string attributes(std::string_view list)
{
    return "class_attributes (list class_attribute_list " + std::string(list) + ")";
}

std::string invoice(std::string_view body)
{
    return "(object Class \"Invoice\" quid \"B2\" " + std::string(body) + ")\n";
}

constexpr std::string_view total = R"((object ClassAttribute "total" quid "C1" type "Money"))";
constexpr std::string_view tax = R"((object ClassAttribute "tax" quid "C2" type "Money"))";

std::string lineOf(const browse::ChangedRow& row)
{
    const std::string sign(1, "+-~> "[static_cast<std::size_t>(row.sort)]);
    return sign + (row.isInside ? "  " : "") + row.label + '|' + row.before + '|' + row.after;
}

std::vector<std::string> linesOf(const States& states, std::string_view name)
{
    std::vector<std::string> lines;
    for (const browse::ChangedSheet& sheet : browse::changedSheets(states.states, states.changes)) {
        const bool isGone = sheet.fresh == compare::nobody;
        const compare::Node& node = isGone ? states.before[sheet.old] : states.after[sheet.fresh];
        if (node.object->name() == name)
            for (const browse::ChangedRow& row : browse::rowsOf(states.states, sheet))
                lines.push_back(lineOf(row));
    }
    return lines;
}

TEST(ChangedSheets, StandSideBySide)
{
    const struct {
        const char* what;
        std::string before;
        std::string after;
        const char* sheet;
        std::vector<std::string> lines;
    } rows[] = {
        {"a new attribute among others",
         order(attributes(total)),
         order(attributes(std::string(tax) + std::string(total))),
         "Order",
         {"+||attribute tax : Money", " |attribute total : Money|attribute total : Money"}},
        {"one that is gone stands where it was",
         order(attributes(std::string(tax) + std::string(total))),
         order(attributes(total)),
         "Order",
         {"-|attribute tax : Money|", " |attribute total : Money|attribute total : Money"}},
        {"a type is told by the line itself",
         order(attributes(total)),
         order(attributes(R"((object ClassAttribute "total" quid "C1" type "Real"))")),
         "Order",
         {"~|attribute total : Money|attribute total : Real"}},
        {"what the line does not tell",
         order(attributes(total)),
         order(attributes(R"((object ClassAttribute "total" quid "C1" type "Money" documentation "in euros"))")),
         "Order",
         {"~|attribute total : Money|attribute total : Money", "~  documentation||in euros"}},
        {"a fact of the class beside one that is the same",
         order("abstract TRUE documentation \"old\""),
         order("abstract TRUE documentation \"new\""),
         "Order",
         {"~documentation|old|new", " abstract|TRUE|TRUE"}},
        {"a new name",
         order(attributes(total), "Purchase"),
         order(attributes(total)),
         "Order",
         {"~name|Purchase|Order", " |attribute total : Money|attribute total : Money"}},
        {"a parameter inside of an operation",
         order(R"(operations (list Operations (object Operation "pay" quid "D1")))"),
         order(R"(operations (list Operations (object Operation "pay" quid "D1" parameters (list Parameters
               (object Parameter "how" type "Way")))))"),
         "Order",
         {"~|operation pay()|operation pay(how : Way)", "+  ||parameter how : Way"}},
        {"the package tells of a new class", "", order(attributes(total)), "Logical View", {"+||class Order"}},
        {"whose sheet has one side", "", order(attributes(total)), "Order", {"+||attribute total : Money"}},
        {"as that of one that is gone", order(attributes(total)), "", "Order", {"-|attribute total : Money|"}},
        {"one that has gone to another class",
         order(attributes(total)) + invoice(""),
         order("") + invoice(attributes(total)),
         "Order",
         {">|attribute total : Money|"}},
        {"where it has come from another class",
         order(attributes(total)) + invoice(""),
         order("") + invoice(attributes(total)),
         "Invoice",
         {">|attribute total : Money|attribute total : Money", ">  owner|Logical View::Order|Logical View::Invoice"}},
        {"nothing", order(attributes(total)), order(attributes(total)), "Order", {}},
    };
    for (const auto& row : rows) {
        const States states(logicalView(row.before), logicalView(row.after));
        EXPECT_THAT(linesOf(states, row.sheet), ElementsAreArray(row.lines)) << row.what;
    }
}

std::string view(std::string_view quid, std::string_view number, std::string_view place = "(1, 1)")
{
    return "(object ClassView \"Class\" \"Logical View::X\" @" + std::string(number) + " location " +
           std::string(place) + " quidu \"" + std::string(quid) + "\")\n";
}

std::string aClass(std::string_view name, std::string_view quid, std::string_view more = "")
{
    return "(object Class \"" + std::string(name) + "\" quid \"" + std::string(quid) + "\" " + std::string(more) +
           ")\n";
}

TEST(ChangedDiagrams, AreMarkedOnBothSides)
{
    using enum compare::Sort;
    const std::string olds = aClass("Gone", "B1", "documentation \"goes away\"") + aClass("Moved", "B2") +
                             aClass("Changed", "B3") + aClass("Same", "B4");
    const std::string news = aClass("Moved", "B2") + aClass("Changed", "B3", "abstract TRUE") + aClass("Same", "B4") +
                             aClass("Fresh", "B5", "documentation \"comes in\"");
    const States states(
        logicalView(olds, view("B1", "1") + view("B2", "2") + view("B3", "3") + view("B4", "4")),
        logicalView(news, view("B2", "12", "(500, 1)") + view("B3", "13") + view("B4", "14") + view("B5", "15")));
    const auto diagrams = browse::changedDiagrams(states.states, states.changes);
    ASSERT_EQ(diagrams.size(), 1U);
    EXPECT_THAT(diagrams[0].before, ElementsAre(Pair(1, removed), Pair(2, moved), Pair(3, changed)));
    EXPECT_THAT(diagrams[0].after, ElementsAre(Pair(12, moved), Pair(13, changed), Pair(15, added)));
}

// Of a diagram of which nothing else is different, nothing is told in words.
TEST(ChangedDiagrams, ShowWhatIsGone)
{
    const std::string gone = aClass("Gone", "B1");
    const States states(logicalView(gone + aClass("Same", "B4"), view("B1", "1") + view("B4", "4")),
                        logicalView(aClass("Same", "B4"), view("B4", "14")));
    const auto diagrams = browse::changedDiagrams(states.states, states.changes);
    ASSERT_EQ(diagrams.size(), 1U);
    EXPECT_THAT(diagrams[0].before, ElementsAre(Pair(1, compare::Sort::removed)));
    EXPECT_THAT(diagrams[0].after, IsEmpty());
    const States same(logicalView(gone, view("B1", "1")), logicalView(gone, view("B1", "7")));
    EXPECT_THAT(browse::changedDiagrams(same.states, same.changes), IsEmpty());
}

} // namespace
