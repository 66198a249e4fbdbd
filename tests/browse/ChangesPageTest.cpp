#include "browse/changes/ChangesPage.h"
#include "ChangedStates.h"
#include "Unpacked.h"

#include <gmock/gmock.h>
#include <string>
#include <string_view>

namespace {

using testing::HasSubstr;
using testing::Not;

std::string pageOf(const States& states, const std::string& oldName = "old.mdl")
{
    const auto picture = [&](const compare::Snapshot& state, const reader::Diagram& diagram) {
        return (&state == &states.before ? "old " : "new ") + diagram.name;
    };
    std::string page;
    browse::writeChangesPage(states.states, states.changes, {oldName, "new.mdl", picture},
                             [&](std::string_view piece) { page += piece; });
    return page;
}

std::string aClass(const std::string& name, const std::string& quid, const std::string& body = "")
{
    return "(object Class \"" + name + "\" quid \"" + quid + "\" " + body + ")\n";
}

TEST(ChangesPage, TellsLinesRowsAndPictures)
{
    const std::string view = "(object ClassView \"Class\" \"Logical View::Order\" @7 location (1, 1) quidu \"B1\")";
    const std::string moved = "(object ClassView \"Class\" \"Logical View::Order\" @9 location (800, 1) quidu \"B1\")";
    const struct {
        const char* what;
        std::string before;
        std::string after;
        const char* expected; // in the data
    } rows[] = {
        {"a fact of a class", logicalView(aClass("Order", "B1", "persistence \"Transient\"")),
         logicalView(aClass("Order", "B1", "persistence \"Static\"")),
         R"("sheets":[["class Order","Logical View","class",2,2,)"
         R"([[2,"class","persistence Static added",-1]],[[2,0,"persistence","","Static"]]]])"},
        {"a new class", logicalView(""), logicalView(aClass("Order", "B1")),
         R"([[0,"class","class Order",1]],[[0,0,"","","class Order"]]])"},
        {"which has a sheet of its own", logicalView(""), logicalView(aClass("Order", "B1")),
         R"(,["class Order","Logical View","class",2,0,[],[]]])"},
        {"one that is gone", logicalView(aClass("Order", "B1")), logicalView(""),
         R"(,["class Order","Logical View","class",2,1,[],[]]])"},
        {"a box that has moved", logicalView(aClass("Order", "B1"), view), logicalView(aClass("Order", "B1"), moved),
         R"("diagrams":[["Logical View::Main","diagram",2,[[3,"view",)"},
        {"and its marks", logicalView(aClass("Order", "B1"), view), logicalView(aClass("Order", "B1"), moved),
         R"(,1,1,[7,3],[9,3]]]})"},
    };
    for (const auto& row : rows) {
        const States states(row.before, row.after);
        EXPECT_THAT(unpacked(pageOf(states), "model"), HasSubstr(row.expected)) << row.what;
    }
}

TEST(ChangesPage, HasThePicturesOfBothStates)
{
    const auto view = [](const std::string& place) {
        return "(object ClassView \"Class\" \"Logical View::Order\" @7 location " + place + " quidu \"B1\")";
    };
    const std::string another = ")) (object ClassDiagram \"Gone\" quid \"0000000000A2\" items (list l";
    const States states(logicalView(aClass("Order", "B1"), view("(1, 1)") + another),
                        logicalView(aClass("Order", "B1"), view("(900, 1)")));
    const std::string page = pageOf(states);
    EXPECT_EQ(unpacked(page, "before-0"), "old Gone");
    EXPECT_THAT(page, Not(HasSubstr("id=\"after-0\"")));
    EXPECT_EQ(unpacked(page, "before-1"), "old Main");
    EXPECT_EQ(unpacked(page, "after-1"), "new Main");
}

TEST(ChangesPage, KeepsTheNamesOfFilesTexts)
{
    const States states(logicalView(""), logicalView(aClass("</script><b>", "B1")));
    const std::string page = pageOf(states, "<b>&.mdl");
    EXPECT_THAT(page, HasSubstr("<title>&lt;b>&amp;.mdl \u2192 new.mdl"));
    EXPECT_THAT(page, Not(HasSubstr("</script><b>")));
}

} // namespace
