#include "designs/Importing.h"
#include "designs/SmallDesigns.h"
#include "support/ModelTexts.h"

#include <functional>
#include <gmock/gmock.h>

namespace {

using design::Design;
using design::Diagram;
using design::Rectangle;

const std::string elements = "/childPackages/0/modelElements/";

// Three classes, all drawn: boxes of 100 by 40 pixels, 320 units and 128 units large, side by side.
Design drawn()
{
    Design design = designOf({classNamed("a"), classNamed("b"), classNamed("c")});
    design.root.packages[0].diagrams = {diagramOf({"a", "b", "c"})};
    Diagram& diagram = design.root.packages[0].diagrams[0];
    for (std::size_t i = 0; i < diagram.boxes.size(); ++i)
        diagram.boxes[i].bounds = Rectangle{static_cast<double>(i) * 192, 64, 96, 64};
    return design;
}

TEST(Projections, AreInTheUnitsOfTheHost)
{
    const struct {
        const char* what;
        std::function<void(design::Package&, Diagram&)> change;
        std::string pointer;
        const char* value;
    } rows[] = {
        {"a box", [](auto& /*p*/, auto& /*d*/) {}, "1/projections",
         "[{'diagram':'diagram','x':750,'y':300,'width':300,'height':200}]"},
        {"a box without a place", [](auto& /*p*/, auto& d) { d.boxes[1].bounds.reset(); }, "1/projections", "none"},
        {"a box far away", [](auto& /*p*/, auto& d) { d.boxes[1].bounds->left = 1e300; }, "1/projections/0/x",
         "100000000"},
        {"colours and font",
         [](auto& /*p*/, auto& d) {
             d.boxes[1].appearance = {0x112233, 0x445566, 0x778899, "Serif", 8.6};
         },
         "1/projections/0",
         "{'diagram':'diagram','x':750,'y':300,'width':300,'height':200,'lineColor':'#112233','fillColor':'#445566',"
         "'fontColor':'#778899','fontName':'Serif','fontSize':9}"},
        {"a font of no size", [](auto& /*p*/, auto& d) { d.boxes[1].appearance.fontSize = 0.5; },
         "1/projections/0/fontSize", "none"},
        {"a font of an absurd size", [](auto& /*p*/, auto& d) { d.boxes[1].appearance.fontSize = 1e9; },
         "1/projections/0/fontSize", "1000"},
        {"a straight line",
         [](auto& /*p*/, auto& d) {
             d.lines = {{"b is a", {}, false, {}, {}, {}}};
         },
         "4/projections", "[{'diagram':'diagram','vertices':''}]"},
        {"a line through bends, each once",
         [](auto& /*p*/, auto& d) {
             d.lines = {{"b is a", {{240, 16}, {240, 16}, {48, 16}}, false, {}, {}, {}}};
         },
         "4/projections/0/vertices", "[[750,200],[750,50],[150,50],[150,200]]"},
        {"one bend is a way, one end is none",
         [](auto& /*p*/, auto& d) {
             d.lines = {{"b is a", {{144, 16}}, false, {}, {}, {}}};
         },
         "4/projections/0/vertices", "[[630,200],[450,50],[270,200]]"},
        {"one end alone",
         [](auto& /*p*/, auto& d) {
             d.lines = {{"b is a", {{144, 16}}, true, {}, {}, {}}};
         },
         "4/projections/0/vertices", "''"},
        {"a line from a class to itself",
         [](auto& p, auto& d) {
             p.relationships[0].supplier.id = "b";
             d.lines = {{"b is a", {}, false, {}, {}, {}}};
         },
         "4/projections/0/vertices", "[[900,350],[1025,350],[1025,525],[825,525],[825,400]]"},
        {"an association's point is half way",
         [](auto& /*p*/, auto& d) {
             d.lines = {{"a has b", {{96, 80}, {192, 80}}, true, {}, {}, {}}};
         },
         "3/projections", "[{'diagram':'diagram','x':450,'y':250}]"},
        {"the first role has the way back",
         [](auto& /*p*/, auto& d) {
             d.lines = {{"a has b", {{96, 80}, {192, 80}}, true, {}, {}, {}}};
         },
         "3/roles/0/projections", "[{'diagram':'diagram','x':375,'y':250,'vertices':[[450,250],[300,250]]}]"},
        {"the second role has the way on",
         [](auto& /*p*/, auto& d) {
             d.lines = {{"a has b", {{96, 80}, {192, 80}}, true, {}, {}, {}}};
         },
         "3/roles/1/projections", "[{'diagram':'diagram','x':525,'y':250,'vertices':[[450,250],[600,250]]}]"},
        {"an association of three is in the middle of them",
         [](auto& p, auto& d) {
             p.associations[0].ends.resize(3);
             p.associations[0].ends[2].participant.id = "c";
             d.lines = {{"a has b", {}, false, {}, {}, {}}};
         },
         "3/projections/0", "{'diagram':'diagram','x':750,'y':300}"},
        {"or at its symbol",
         [](auto& p, auto& d) {
             p.associations[0].ends.resize(3);
             p.associations[0].ends[2].participant.id = "c";
             d.boxes.push_back({"a has b", Rectangle{96, 192, 32, 32}, {}});
             d.lines = {{"a has b", {}, false, {}, {}, {}}};
         },
         "3/projections/0", "{'diagram':'diagram','x':350,'y':650}"},
        {"an association with an end that has no place",
         [](auto& /*p*/, auto& d) {
             d.boxes[1].bounds.reset();
             d.lines = {{"a has b", {}, false, {}, {}, {}}};
         },
         "3/projections", "none"},
    };
    for (const auto& row : rows) {
        Design design = drawn();
        design::Package& package = design.root.packages[0];
        package.associations = {association("a", "b")};
        package.relationships = {generalization("b", "a")};
        row.change(package, package.diagrams[0]);
        EXPECT_EQ(convert(design).at(elements + row.pointer), json(row.value)) << row.what;
    }
}

// An association that is turned for Rose is drawn turned.
TEST(Projections, TurnWithTheirAssociation)
{
    for (const bool isTurned : {false, true}) {
        Design design = drawn();
        design::Package& package = design.root.packages[0];
        package.associations = {association("a", "b")};
        package.associations[0].ends[isTurned ? 0 : 1].aggregation = design::Aggregation::Shared;
        package.diagrams[0].lines = {{"a has b", {{96, 80}, {192, 112}}, true, {}, {}, {}}};
        const Imported imported = convert(design);
        EXPECT_EQ(imported.at(elements + "3/roles/1/participant"), isTurned ? "\"a\"" : "\"b\"");
        EXPECT_EQ(imported.at(elements + "3/roles/1/projections/0/vertices/1"), isTurned ? "[300,250]" : "[600,350]");
    }
}

} // namespace
