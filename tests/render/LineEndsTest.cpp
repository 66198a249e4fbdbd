#include "Parsed.h"

namespace {

constexpr const char* boxes = R"((object ClassView "Class" "A" @1 location (200, 200) width 100 height 100)
(object ClassView "Class" "B" @2 location (1200, 200) width 100 height 100))";

constexpr const char* association = R"((object AssociationViewNew "" @3 location (700, 200) )";
constexpr const char* roles = R"( roleview_list (list RoleViews
(object RoleView "" @4 quidu "3ABD00000004" client @3 supplier @1 line_color 16711680)
(object RoleView "" @5 quidu "3ABD00000005" client @3 supplier @2 line_color 16711680))))";

TEST(LineEnds, AssociationsHaveTheirOwnColour)
{
    const struct {
        const char* keys;
        const char* colour;
    } rows[] = {{"", "#000000"}, {"line_color 255", "#ff0000"}};
    for (const auto& row : rows) {
        const Parsed picture(std::string(boxes) + association + row.keys + roles);
        for (const int view : {4, 5})
            EXPECT_STREQ(itemOf(picture.svg, view).child("polyline").attribute("stroke").value(), row.colour)
                << row.keys;
    }
}

// The head of a line that ends with a short piece is turned as the line before that.
TEST(LineEnds, HeadsHaveTheirSizesAndDirections)
{
    const struct {
        const char* kind;
        const char* points;
        double length;
        double width;
        render::Point tip;
    } rows[] = {
        {"UsesView", "", 36, 30, {1150, 200}},
        {"InheritView", "", 60, 47, {1150, 200}},
        {"InheritView", "vertices (list Points (250, 200) (1140, 200) (1140, 205) (1150, 205))", 60, 47, {1150, 205}},
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string(boxes) + "(object " + row.kind + " \"\" @3 client @1 supplier @2 " +
                             row.points + ")");
        const pugi::xml_node line = itemOf(picture.svg, 3).child("polyline");
        const render::Path head = pointsOf(line.next_sibling());
        ASSERT_GE(head.size(), 3U) << row.kind;
        EXPECT_LT(render::distance(head[1], row.tip), 0.5) << row.kind;
        const render::Point base = render::between(head[0], head[2], 0.5);
        EXPECT_NEAR(render::distance(base, head[1]), row.length, 0.5) << row.kind;
        EXPECT_NEAR(render::distance(head[0], head[2]), row.width, 0.5) << row.kind;
        EXPECT_LT(std::abs(base.y - head[1].y), 8) << row.points; // hardly turned
        const bool isHollow = std::string_view(row.kind) == "InheritView";
        EXPECT_LT(render::distance(pointsOf(line).back(), isHollow ? base : head[1]), 0.5) << row.points;
    }
}

TEST(LineEnds, DiamondsAreBlackInTheColourOfTheirLine)
{
    const Parsed picture(std::string(boxes) + association + "line_color 255" + roles,
                         R"((object Association "" roles (list l
(object Role "a" quid "3ABD00000004" is_aggregate TRUE Containment "By Value")
(object Role "b" quid "3ABD00000005"))))");
    const pugi::xml_node diamond = itemOf(picture.svg, 4).child("polygon");
    const render::Path points = pointsOf(diamond);
    ASSERT_EQ(points.size(), 4U);
    EXPECT_NEAR(render::distance(points[0], points[2]), 54, 0.5);
    EXPECT_NEAR(render::distance(points[1], points[3]), 30, 0.5);
    EXPECT_STREQ(diamond.attribute("fill").value(), "#000000");
    EXPECT_STREQ(diamond.attribute("stroke").value(), "#ff0000");
}

// The name below an icon belongs to it. Letters are 20.5 wide, and the name starts 10 below.
TEST(LineEnds, LeaveNamesBelowIconsAlone)
{
    const struct {
        const char* kind;
        const char* client; // where the line comes from
        render::Point end;
    } rows[] = {
        {"UseCaseView \"twenty letters abcde\"", "(1000, 2000)", {1000, 1116}},
        {"UseCaseView \"twenty letters abcde\"", "(1000, 200)", {1000, 944}},
        {"ClassView \"Class\" \"twenty letters abcde\" icon \"Actor\" SuppressAttribute TRUE SuppressOperation TRUE",
         "(1000, 2000)",
         {1000, 1138.5}},
    };
    for (const auto& row : rows) {
        std::string kind = row.kind;
        kind.insert(kind.find("abcde\"") + 6, " @1 location (1000, 1000) ");
        const Parsed picture("(object " + kind + ")(object NoteView @2 width 100 height 100 location " + row.client +
                             ")(object AttachView \"\" @3 client @2 supplier @1)");
        const render::Path path = pointsOf(itemOf(picture.svg, 3).child("polyline"));
        EXPECT_LT(render::distance(path.back(), row.end), 0.5) << row.kind << path.back().x << ' ' << path.back().y;
    }
}

TEST(LineEnds, LoopsAreHalfEllipses)
{
    const struct {
        const char* place;
        render::Point first;
        render::Point top;
        render::Point last;
    } rows[] = {
        {"(500, 300)", {443, 450}, {500, 300}, {557, 450}},
        {"(800, 500)", {600, 443}, {800, 500}, {600, 557}},
        {"(500, 700)", {443, 550}, {500, 700}, {557, 550}},
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string("(object StateView \"Normal\" \"A\" @1 location (500, 500) width 200 height "
                                         "100)(object SelfTransView \"\" @2 client @1 supplier @1 location ") +
                             row.place + ")");
        const render::Path path = pointsOf(itemOf(picture.svg, 2).child("polyline"));
        ASSERT_GT(path.size(), 8U) << row.place;
        EXPECT_LT(render::distance(path.front(), row.first), 0.5) << row.place;
        EXPECT_LT(render::distance(path[path.size() / 2], row.top), 0.5) << row.place;
        EXPECT_LT(render::distance(path.back(), row.last), 0.5) << row.place;
    }
}

// Nobody has seen where the lines of an export run.
TEST(LineEnds, ExportsGoAroundBoxes)
{
    const struct {
        const char* name;
        std::string items;
        std::vector<int> lines;
    } rows[] = {
        {"a dependency", "(object UsesView \"\" @4 client @1 supplier @2)", {4}},
        {"an association", std::string("(object AssociationViewNew \"\" @3 ") + roles, {4, 5}},
        {"an association whose place is on a box",
         std::string("(object AssociationViewNew \"\" @3 location (700, 200) ") + roles,
         {4, 5}},
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string(boxes) +
                                 "(object ClassView \"Class\" \"C\" @6 location (700, 200) width 300 height 200)" +
                                 row.items,
                             "", render::mostInSvg, exportStart);
        for (const int line : row.lines) {
            const render::Path path = pointsOf(itemOf(picture.svg, line).child("polyline"));
            ASSERT_GE(path.size(), 2U) << row.name;
            EXPECT_FALSE(render::crosses(path, {551, 101, 849, 299})) << row.name;
        }
        const render::Path last = pointsOf(itemOf(picture.svg, row.lines.back()).child("polyline"));
        EXPECT_LT(render::distance(last.back(), {1200, 200}), 71) << row.name;
    }
}

} // namespace
