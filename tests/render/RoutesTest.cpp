#include "Parsed.h"

namespace {

using testing::ElementsAre;

constexpr const char* boxes = R"((object ClassView "Class" "A" @1 location (200, 200) width 100 height 100)
(object ClassView "Class" "B" @2 location (1200, 200) width 100 height 100))";

std::string boxAt(int view, const char* place, const char* size)
{
    return "(object ClassView \"Class\" \"C\" @" + std::to_string(view) + " location " + place + " " + size + ")";
}

// Past the nearer side of what is in the way, as far from it as there is room for.
TEST(Routes, OfExportsAreTheShortest)
{
    const struct {
        const char* name;
        std::string others;
        const char* points;
    } rows[] = {
        {"nothing", "", "250,200 1150,200"},
        {"beside the line", boxAt(4, "(700, 400)", "width 300 height 200"), "250,200 1150,200"},
        {"lower", boxAt(4, "(700, 220)", "width 300 height 200"), "200,150 200,96 1200,96 1200,150"},
        {"higher", boxAt(4, "(700, 180)", "width 300 height 200"), "200,250 200,304 1200,304 1200,250"},
        {"too close a neighbour",
         boxAt(4, "(700, 220)", "width 300 height 200") + boxAt(5, "(700, -15)", "width 300 height 200"),
         "200,250 200,344 1200,344 1200,250"},
        {"a neighbour that leaves room",
         boxAt(4, "(700, 220)", "width 300 height 200") + boxAt(5, "(700, -17)", "width 300 height 200"),
         "200,150 200,107 1200,107 1200,150"},
        {"higher and lower",
         boxAt(4, "(500, -100)", "width 200 height 700") + boxAt(5, "(900, 550)", "width 200 height 700"),
         "200,250 200,274 776,274 776,176 1150,176"},
        {"a box around the end", boxAt(4, "(1200, 200)", "width 600 height 600"), "250,200 1150,200"},
    };
    for (const auto& row : rows) {
        const Parsed picture(boxes + row.others + "(object UsesView \"\" @3 client @1 supplier @2)", "",
                             render::mostInSvg, exportStart);
        EXPECT_STREQ(itemOf(picture.svg, 3).child("polyline").attribute("points").value(), row.points) << row.name;
    }
}

TEST(Routes, OfExportsGoBesideBoxesThatStandBetweenUprightOnes)
{
    const struct {
        const char* place;
        const char* points;
    } rows[] = {
        {"(220, 700)", "150,200 96,200 96,1200 150,1200"},
        {"(180, 700)", "250,200 304,200 304,1200 250,1200"},
    };
    for (const auto& row : rows) {
        const Parsed picture(
            boxAt(1, "(200, 200)", "width 100 height 100") + boxAt(2, "(200, 1200)", "width 100 height 100") +
                boxAt(4, row.place, "width 200 height 300") + "(object UsesView \"\" @3 client @1 supplier @2)",
            "", render::mostInSvg, exportStart);
        EXPECT_STREQ(itemOf(picture.svg, 3).child("polyline").attribute("points").value(), row.points) << row.place;
    }
}

// Roles meet in the middle of the way; where somebody placed them, there.
TEST(Routes, AssociationsMeet)
{
    const struct {
        const char* name;
        const char* start;
        const char* place;
        std::string others;
        const char* first;
        const char* second;
    } rows[] = {
        {"free", exportStart, "", "", "700,200 250,200", "700,200 1150,200"},
        {"around a box", exportStart, "", boxAt(6, "(700, 220)", "width 300 height 200"), "700,96 200,96 200,150",
         "700,96 1200,96 1200,150"},
        {"through a box that Rose placed", roseStart, "", boxAt(6, "(700, 220)", "width 300 height 200"),
         "700,200 250,200", "700,200 1150,200"},
        {"placed", roseStart, "location (800, 200)", "", "800,200 250,200", "800,200 1150,200"},
        {"placed on a box of its own", roseStart, "location (1210, 210)", "", "700,200 250,200", "700,200 1150,200"},
        {"placed on another box", roseStart, "location (800, 200)", boxAt(6, "(800, 220)", "width 100 height 100"),
         "800,200 250,200", "800,200 1150,200"},
        {"computed on another box", exportStart, "location (800, 200)", boxAt(6, "(800, 220)", "width 100 height 100"),
         "700,146 200,146 200,150", "700,146 1200,146 1200,150"},
    };
    for (const auto& row : rows) {
        const Parsed picture(boxes + row.others + "(object AssociationViewNew \"\" @3 " + row.place +
                                 " roleview_list (list RoleViews (object RoleView \"\" @4 client @3 supplier @1)"
                                 "(object RoleView \"\" @5 client @3 supplier @2)))",
                             "", render::mostInSvg, row.start);
        EXPECT_STREQ(itemOf(picture.svg, 4).child("polyline").attribute("points").value(), row.first) << row.name;
        EXPECT_STREQ(itemOf(picture.svg, 5).child("polyline").attribute("points").value(), row.second) << row.name;
    }
}

TEST(Routes, AssociationsOfAClassWithItselfLeaveAndComeBack)
{
    const struct {
        const char* place;
        const char* first;
        const char* second;
    } rows[] = {
        {"", "500,360 440,360 440,450", "500,360 560,360 560,450"},
        {"location (480, 300)", "480,300 420,300 420,450", "480,300 540,300 540,450"},
        {"location (580, 300)", "580,300 520,300 520,450", "580,300 600,300 600,450"}, // not beyond the corner
        {"location (500, 700)", "500,700 440,700 440,550", "500,700 560,700 560,550"},
        {"location (300, 520)", "300,520 300,460 400,460", "300,520 300,550 400,550"},
        {"location (700, 500)", "700,500 700,450 600,450", "700,500 700,550 600,550"},
    };
    for (const auto& row : rows) {
        const Parsed picture(boxAt(1, "(500, 500)", "width 200 height 100") + "(object AssociationViewNew \"\" @3 " +
                             row.place +
                             " roleview_list (list RoleViews (object RoleView \"\" @4 client @3 supplier @1)"
                             "(object RoleView \"\" @5 client @3 supplier @1)))");
        EXPECT_STREQ(itemOf(picture.svg, 4).child("polyline").attribute("points").value(), row.first) << row.place;
        EXPECT_STREQ(itemOf(picture.svg, 5).child("polyline").attribute("points").value(), row.second) << row.place;
    }
}

// An association class hangs at the middle of its association, a note at the middle of its line.
TEST(Routes, LinesEndAtLines)
{
    const struct {
        const char* supplier;
        const char* points;
    } rows[] = {{"@3", "700,550 700,200"}, {"@6", "700,650 700,1000"}, {"@9", ""}};
    for (const auto& row : rows) {
        const Parsed picture(boxes + boxAt(7, "(700, 600)", "width 100 height 100") +
                             "(object AttachView \"\" @8 client @7 supplier " + row.supplier +
                             ")(object AssociationViewNew \"\" @3 roleview_list (list RoleViews "
                             "(object RoleView \"\" @4 client @3 supplier @1)"
                             "(object RoleView \"\" @5 client @3 supplier @2)))"
                             "(object AttachView \"\" @6 vertices (list Points (600, 1000) (800, 1000)))");
        EXPECT_STREQ(itemOf(picture.svg, 8).child("polyline").attribute("points").value(), row.points) << row.supplier;
    }
}

struct TreeRow {
    const char* name;
    const char* supertype;
    const char* tree;
    const char* subtype;
    const char* stem;
    const char* branch;
};

// Subtypes share the stem of a tree, which alone has a triangle: 60 long, where the stem's line ends.
TEST(Routes, SubtypesMeetAtTheirTree)
{
    const TreeRow rows[] = {
        {"below", "(700, 200)", "location (700, 500)", "location (400, 800)", "700,500 700,310",
         "400,750 400,500 700,500"},
        {"below, from another point", "(700, 200)", "location (700, 500)",
         "location (400, 800) vertices (list Points (420, 750) (420, 500))", "700,500 700,310",
         "420,750 420,500 700,500"},
        {"below, from a point beyond the box", "(700, 200)", "location (700, 500)",
         "location (400, 800) vertices (list Points (470, 750) (470, 500))", "700,500 700,310",
         "449,750 449,500 700,500"},
        {"without a place", "(700, 200)", "", "location (400, 800)", "700,340 700,310", "400,750 400,340 700,340"},
        {"above", "(700, 1000)", "location (700, 700)", "location (400, 400)", "700,700 700,890",
         "400,450 400,700 700,700"},
        {"beside", "(200, 500)", "location (500, 520) vertices (list Points (500, 520) (250, 520))",
         "location (900, 700)", "500,520 310,520", "850,700 500,700 500,520"},
        {"beside, from another point", "(200, 500)", "location (500, 520) vertices (list Points (500, 520) (250, 520))",
         "location (900, 700) vertices (list Points (850, 680) (500, 680))", "500,520 310,520",
         "850,680 500,680 500,520"},
        {"at the height of the tree", "(700, 200)", "location (700, 500)", "location (400, 500)", "700,500 700,310",
         "450,500 700,500"},
    };
    for (const TreeRow& row : rows) {
        std::string subtype = row.subtype;
        const std::size_t vertices = std::min(subtype.find(" vertices"), subtype.size());
        const Parsed picture(boxAt(1, row.supertype, "width 100 height 100") +
                             "(object ClassView \"Class\" \"B\" @2 width 100 height 100 " +
                             subtype.substr(0, vertices) + ")(object InheritTreeView \"\" @3 supplier @1 " + row.tree +
                             ")(object InheritView \"\" @4 client @2 supplier @1 drawSupplier @3 " +
                             subtype.substr(vertices) + ")");
        EXPECT_STREQ(itemOf(picture.svg, 3).child("polyline").attribute("points").value(), row.stem) << row.name;
        EXPECT_STREQ(itemOf(picture.svg, 4).child("polyline").attribute("points").value(), row.branch) << row.name;
        EXPECT_EQ(shapesOf(itemOf(picture.svg, 3)), "polyline polygon") << row.name;
        EXPECT_EQ(shapesOf(itemOf(picture.svg, 4)), "polyline") << row.name;
    }
}

TEST(Routes, RealizationsOfCirclesArePlain)
{
    const struct {
        const char* kind;
        const char* icon;
        const char* shapes;
        bool isDashed;
    } rows[] = {
        {"RealizeView", "icon \"Interface\"", "polyline", false},
        {"RealizeView", "", "polyline polygon", true},
        {"UsesView", "icon \"Interface\"", "polyline polyline", true},
    };
    for (const auto& row : rows) {
        const Parsed picture(boxAt(1, "(200, 200)", "width 100 height 100") +
                             "(object ClassView \"Class\" \"I\" @2 location (900, 200) " + row.icon + ")(object " +
                             row.kind + " \"\" @3 client @1 supplier @2)");
        EXPECT_EQ(shapesOf(itemOf(picture.svg, 3)), row.shapes) << row.kind << row.icon;
        EXPECT_EQ(!itemOf(picture.svg, 3).child("polyline").attribute("stroke-dasharray").empty(), row.isDashed)
            << row.kind << row.icon;
    }
}

// Between the class and the line, which starts behind them. Letters are 20.5 wide, a line 50 high.
TEST(Routes, QualifiersStandAtTheOtherEnd)
{
    const struct {
        const char* second; // where B is
        render::Rect qualifiers;
        const char* line;
    } rows[] = {
        {"(1200, 200)", {250, 169, 376.5, 231}, "700,200 376.5,200"},
        {"(-800, 200)", {23.5, 169, 150, 231}, "-300,200 23.5,200"},
        {"(200, 1200)", {136.8, 250, 263.3, 312}, "200,700 200,312"},
        {"(200, -800)", {136.8, 88, 263.3, 150}, "200,-300 200,88"},
    };
    for (const auto& row : rows) {
        const Parsed picture(boxAt(1, "(200, 200)", "width 100 height 100") +
                                 boxAt(2, row.second, "width 100 height 100") +
                                 "(object AssociationViewNew \"\" @3 roleview_list (list RoleViews "
                                 "(object RoleView \"\" @4 quidu \"3ABD00000004\" client @3 supplier @1)"
                                 "(object RoleView \"\" @5 quidu \"3ABD00000005\" client @3 supplier @2)))",
                             R"((object Association "" roles (list l (object Role "a" quid "3ABD00000004")
(object Role "b" quid "3ABD00000005" keys (list l (object ClassAttribute "k" type "T"))))))");
        const pugi::xml_node item = itemOf(picture.svg, 4);
        const render::Rect rect = rectOf(item.child("rect"));
        EXPECT_NEAR(rect.left, row.qualifiers.left, 0.2) << row.second;
        EXPECT_NEAR(rect.top, row.qualifiers.top, 0.2) << row.second;
        EXPECT_NEAR(rect.right, row.qualifiers.right, 0.2) << row.second;
        EXPECT_NEAR(rect.bottom, row.qualifiers.bottom, 0.2) << row.second;
        EXPECT_STREQ(item.child("polyline").attribute("points").value(), row.line) << row.second;
        EXPECT_THAT(textsOf(item), ElementsAre("k : T")) << row.second;
        EXPECT_EQ(shapesOf(itemOf(picture.svg, 5)), "polyline") << row.second;
    }
}

} // namespace
