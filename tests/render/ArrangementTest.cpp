#include "Parsed.h"

namespace {

using testing::ElementsAre;

std::vector<double> sidesOf(const pugi::xml_node& item)
{
    const render::Rect rect = rectOf(item.child("rect"));
    return {rect.left, rect.top, rect.right, rect.bottom};
}

// As many columns as rows, 120 apart, below what has a place; as wide and as high as what stands in them.
TEST(Arrangement, BoxesWithoutAPlaceStandInRows)
{
    std::string items = "(object ClassView \"Class\" \"P\" @9 location (1000, 1000) width 200 height 200)"
                        "(object NoteView @8 location (900, 700) width 100 height 100)";
    const char* const sizes[] = {"width 100 height 60", "width 300 height 100", "width 100 height 80",
                                 "width 200 height 60", "width 100 height 60"};
    for (int view = 1; view <= 5; ++view)
        items.append("(object ClassView \"Class\" \"A\" @")
            .append(std::to_string(view))
            .append(" location (0, 0) ")
            .append(sizes[view - 1])
            .append(")");
    const Parsed picture(items);
    const std::vector<double> rows[] = {{970, 1220, 1070, 1280},
                                        {1190, 1220, 1490, 1320},
                                        {1610, 1220, 1710, 1300},
                                        {970, 1440, 1170, 1500},
                                        {1290, 1440, 1390, 1500}};
    for (int view = 1; view <= 5; ++view)
        EXPECT_EQ(sidesOf(itemOf(picture.svg, view)), rows[view - 1]) << view;
    EXPECT_THAT(sidesOf(itemOf(picture.svg, 9)), ElementsAre(900, 900, 1100, 1100));
}

// A name of eleven letters, 225.5 wide, is wider than its ellipse.
TEST(Arrangement, NamesBelowNeedRoomToo)
{
    const Parsed picture(R"((object ClassView "Class" "P" @1 location (100, 100) width 200 height 200)
(object UseCaseView "Buy a ticket" @2) (object UseCaseView "Use it" @3) (object UseCaseView "Throw it away" @4))");
    const double rooms[] = {246, 216, 266.5};
    double left = 120;
    for (const int view : {2, 3}) {
        const pugi::xml_node item = itemOf(picture.svg, view);
        EXPECT_NEAR(number(item.child("ellipse"), "cx"), left + rooms[view - 2] / 2, 0.1) << view;
        EXPECT_NEAR(number(item.child("text"), "x"), left + rooms[view - 2] / 2, 0.1) << view;
        EXPECT_NEAR(number(item.child("ellipse"), "cy"), 320 + 56, 0.1) << view;
        EXPECT_NEAR(number(item.child("text"), "y"), 320 + 112 + 10 + 40.6, 0.1) << view;
        left += rooms[view - 2] + 120;
    }
    EXPECT_NEAR(number(itemOf(picture.svg, 4).child("ellipse"), "cy"), 320 + 112 + 10 + 50 + 120 + 56, 0.1);
}

// A note of 100 by 100 beside a box of 200 by 200 around (1000, 1000): right, left, below, above, across, further away.
TEST(Arrangement, NotesStandWhereThereIsRoomBesideWhatTheyAreAbout)
{
    const char* const right = "(object ClassView \"Class\" \"R\" @11 location (1200, 1000) width 20 height 20)";
    const char* const left = "(object ClassView \"Class\" \"L\" @12 location (800, 1000) width 20 height 20)";
    const char* const below = "(object ClassView \"Class\" \"U\" @13 location (1000, 1200) width 20 height 20)";
    const char* const above = "(object ClassView \"Class\" \"O\" @14 location (1000, 800) width 20 height 20)";
    const char* const across = "(object ClassView \"Class\" \"V\" @15 location (1200, 1200) width 20 height 20)";
    const char* const before = "(object ClassView \"Class\" \"W\" @16 location (800, 800) width 20 height 20)";
    const struct {
        const char* name;
        std::string others;
        render::Point centre;
    } rows[] = {
        {"free", "", {1210, 1000}},
        {"right taken", right, {790, 1000}},
        {"left, too", std::string(right) + left, {1000, 1210}},
        {"below, too", std::string(right) + left + below, {1000, 790}},
        {"above, too", std::string(right) + left + below + above, {1210, 1210}},
        {"across, too", std::string(right) + left + below + above + across, {790, 790}},
        {"all taken", std::string(right) + left + below + above + across + before, {1390, 1000}},
        {"close", "(object ClassView \"Class\" \"C\" @11 location (1300, 1000) width 58 height 20)", {790, 1000}},
        {"close enough",
         "(object ClassView \"Class\" \"C\" @11 location (1300, 1000) width 54 height 20)",
         {1210, 1000}},
        {"a line", "(object AttachView \"\" @17 vertices (list P (1265, 0) (1265, 3000)))", {790, 1000}},
        {"a line far enough", "(object AttachView \"\" @17 vertices (list P (1275, 0) (1275, 3000)))", {1210, 1000}},
    };
    for (const auto& row : rows)
        for (const char* const ends : {"client @2 supplier @1", "client @1 supplier @2"}) {
            const Parsed picture(
                "(object ClassView \"Class\" \"A\" @1 location (1000, 1000) width 200 height 200)"
                "(object NoteView @2 location (0, 0) width 100 height 100) (object AttachView \"\" @3 " +
                std::string(ends) + ")" + row.others);
            const render::Path note = pointsOf(itemOf(picture.svg, 2).child("polygon"));
            ASSERT_EQ(note.size(), 5U) << row.name;
            EXPECT_EQ(note[0].x + 50, row.centre.x) << row.name << ends;
            EXPECT_EQ(note[0].y + 50, row.centre.y) << row.name << ends;
            EXPECT_GE(pointsOf(itemOf(picture.svg, 3).child("polyline")).size(), 2U) << row.name << ends;
        }
}

TEST(Arrangement, NotesOfLinesStandBesideTheirMiddle)
{
    const Parsed picture(R"((object ClassView "Class" "A" @1 location (200, 200) width 100 height 100)
(object ClassView "Class" "B" @2 location (200, 1200) width 100 height 100)
(object UsesView "" @3 client @1 supplier @2) (object NoteView @4 location (0, 0) width 100 height 100)
(object AttachView "" @5 client @4 supplier @3))");
    const render::Path note = pointsOf(itemOf(picture.svg, 4).child("polygon"));
    ASSERT_EQ(note.size(), 5U);
    EXPECT_EQ(note[0].x, 260);
    EXPECT_EQ(note[0].y, 650);
    EXPECT_STREQ(itemOf(picture.svg, 5).child("polyline").attribute("points").value(), "260,700 200,700");
}

TEST(Arrangement, TextsThatHangAtNothingStandBelow)
{
    const Parsed picture(R"((object ClassView "Class" "A" @1 location (1000, 1000) width 200 height 200)
(object NoteView @2 location (0, 0) width 100 height 100) (object NoteView @3 location (0, 0) width 300 height 80)
(object ClassView "Class" "B" @4 location (0, 0) width 100 height 100))");
    const render::Path first = pointsOf(itemOf(picture.svg, 2).child("polygon"));
    const render::Path second = pointsOf(itemOf(picture.svg, 3).child("polygon"));
    ASSERT_EQ(first.size(), 5U);
    ASSERT_EQ(second.size(), 5U);
    EXPECT_THAT(sidesOf(itemOf(picture.svg, 4)), ElementsAre(1020, 1220, 1120, 1320));
    EXPECT_EQ(first[0].x, 900);
    EXPECT_EQ(first[0].y, 1380);
    EXPECT_EQ(second[0].x, 900);
    EXPECT_EQ(second[0].y, 1540);
}

TEST(Arrangement, LanesStandBesideEachOther)
{
    const Parsed picture(R"((object Swimlane "First" @1 width 700) (object Swimlane "Second" @2)
(object Swimlane "Third" @3 location (2000, 0) width 500) (object Swimlane "Fourth" @4 width 300)
(object ActivityStateView "a" @5 location (300, 500) width 200 height 100))");
    const double lefts[] = {0, 700, 2000, 2500};
    const double rights[] = {700, 1300, 2500, 2800};
    for (int view = 1; view <= 4; ++view) {
        const pugi::xml_node item = itemOf(picture.svg, view);
        EXPECT_THAT(sidesOf(item), ElementsAre(lefts[view - 1], -60, rights[view - 1], 0)) << view;
        const pugi::xml_node line = item.child("polyline");
        EXPECT_EQ(static_cast<bool>(line), view > 1) << view;
        if (line) {
            EXPECT_THAT(pointsOf(line)[0].y, 0) << view;
            EXPECT_THAT(pointsOf(line)[1].y, 610) << view;
        }
    }
    EXPECT_NEAR(number(itemOf(picture.svg, 1).child("text"), "x"), 350, 0.1);
    EXPECT_NEAR(number(itemOf(picture.svg, 1).child("text"), "y"), -60 + 5 + 40.6, 0.1);
}

// A margin of 24 and half a line's width of 3 around everything, in whole units; 0.32 dots to each.
TEST(Arrangement, PicturesHaveTheRoomOfWhatIsInThem)
{
    const struct {
        const char* item;
        const char* viewBox;
        const char* width;
        const char* height;
    } rows[] = {
        {"ClassView \"Class\" \"A\" @1 location (500, 500) width 100 height 80", "424 434 152 132", "48.6", "42.2"},
        {"AnchorView @1 vertices (list P (100, 900) (300, 200) (700, 400))", "74 174 652 752", "208.6", "240.6"},
        {"UseCaseView \"a longer name\" @1 location (500, 500) width 100 height 100", "342 424 316 210", "101.1",
         "67.2"},
        {"StateView \"StartState\" \"\" @1 location (500, 500)", "444 444 112 112", "35.8", "35.8"},
        {"ClassView \"Class\" \"A\" @1 location (-500, -500) width 100 height 80", "-576 -566 152 132", "48.6", "42.2"},
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string("(object ") + row.item + ")");
        const pugi::xml_node svg = picture.svg.child("svg");
        EXPECT_STREQ(svg.attribute("viewBox").value(), row.viewBox) << row.item;
        EXPECT_STREQ(svg.attribute("width").value(), row.width) << row.item;
        EXPECT_STREQ(svg.attribute("height").value(), row.height) << row.item;
        const render::Rect paper = rectOf(svg.child("rect"));
        EXPECT_EQ(std::to_string(std::lround(paper.left)) + " " + std::to_string(std::lround(paper.top)) + " " +
                      std::to_string(std::lround(paper.width())) + " " + std::to_string(std::lround(paper.height())),
                  row.viewBox);
    }
}

} // namespace
