#include "Parsed.h"

namespace {

using testing::ElementsAre;

constexpr const char* roseTwoBoxes = R"((object ClassView "Class" "A" @1 location (200, 200) width 300 height 100)
(object ClassView "Class" "B" @2 location (1200, 200) width 300 height 100))";

// A label of ten letters: 205 wide, a line 50 high.
TEST(Labels, StandWhereRosePutThem)
{
    const struct {
        const char* keys;
        double left;
        double top;
    } rows[] = {
        {"location (700, 150) anchor_loc 1", 597.5, 125},
        {"location (700, 200) anchor_loc 1", 597.5, 175},  // over the line
        {"location (200, 200) anchor_loc 1", 97.5, 239},   // over a box, where nobody could read it
        {"location (700, 900) anchor_loc 1", 597.5, 875},  // far from the line
        {"location (200, 256) anchor_loc 1", 97.5, 238.9}, // its letters touch the lower edge of a box
        {"location (200, 138) anchor_loc 1", 97.5, 105.3}, // the upper edge
        {"location (448, 180) anchor_loc 1", 350, 155},    // the right edge
        {"location (200, 249) anchor_loc 1", 97.5, 240},   // more than a touch: a step of 8 units and its multiples
        {"location (440, 180) anchor_loc 1", 345.5, 155},
        {"location (700, 150) anchor_loc 3", 700, 125},
        {"location (700, 150) max_width 405 justify 0", 800, 150},
        {"location (700, 150) max_width 405 justify 1", 700, 150},
        {"location (700, 150)", 700, 150},
        {"location (700, 150) anchor_loc 1 nlines 2 max_width 80", 659, 100},
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string(roseTwoBoxes) +
                             "(object UsesView \"\" @3 client @1 supplier @2 label (object SegLabel @4 label "
                             "\"some words\" " +
                             row.keys + "))");
        const pugi::xml_node text = itemOf(picture.svg, 3).child("text");
        EXPECT_NEAR(roomOf(text, picture.drawn.measure).left, row.left, 0.3) << row.keys;
        EXPECT_NEAR(number(text, "y") - 40.6, row.top, 0.3) << row.keys;
    }
}

// The first stays, the others go the shortest way to where they can be read, if that is near.
TEST(Labels, StepAsideFromEachOther)
{
    constexpr const char* room = R"((object ClassView "Class" "A" @1 location (200, 200) width 300 height 100)
(object ClassView "Class" "B" @2 location (1200, 200) width 300 height 100)
(object ClassView "Class" "C" @3 location (700, 1500) width 1000 height 600))";
    const auto label = [](int view, const char* place) {
        return "(object UsesView \"\" @" + std::to_string(view) +
               " client @1 supplier @2 label (object SegLabel @9 anchor_loc 1 label \"some words\" location " + place +
               "))";
    };
    const struct {
        const char* first;
        const char* second;
        double right, down; // of the way that the second goes
    } rows[] = {
        {"(700, 800)", "(700, 900)", 0, 0},   {"(700, 800)", "(700, 830)", 0, 0}, // letters that almost touch
        {"(700, 800)", "(700, 820)", 0, 16},  {"(700, 800)", "(700, 785)", 0, -16},
        {"(700, 800)", "(890, 800)", 16, 0},  {"(700, 1150)", "(700, 1150)", 0, -32}, // below is a box
        {"(700, 1500)", "(700, 1600)", 0, 0}, // there is no free place that is near
    };
    for (const auto& row : rows) {
        const Parsed picture(room + label(4, row.first) + label(5, row.second));
        const Parsed alone(room + label(5, row.second));
        const Parsed first(room + label(4, row.first));
        const auto placeIn = [](const Parsed& in, int view) {
            const pugi::xml_node text = itemOf(in.svg, view).child("text");
            return render::Point{number(text, "x"), number(text, "y")};
        };
        EXPECT_EQ(placeIn(picture, 4).y, placeIn(first, 4).y) << row.second;
        EXPECT_NEAR(placeIn(picture, 5).x - placeIn(alone, 5).x, row.right, 0.2) << row.second;
        EXPECT_NEAR(placeIn(picture, 5).y - placeIn(alone, 5).y, row.down, 0.2) << row.second;
    }
}

// What the whole line lies on is behind its labels.
TEST(Labels, StandOnTheStateAroundThem)
{
    const std::string states = "(object StateView \"Normal\" \"Outer\" @1 location (1000, 600) width 1600 height 900) "
                               "(object StateView \"Normal\" \"A\" @2 location (500, 600) width 200 height 100) "
                               "(object StateView \"Normal\" \"B\" @3 location (1500, 600) width 200 height 100) ";
    const auto transition = [](int view, int y) {
        return "(object TransView \"\" @" + std::to_string(view) +
               " client @2 supplier @3 label (object SegLabel @9 anchor_loc 1 label \"go now\" location (1000, " +
               std::to_string(y) + "))) ";
    };
    const auto baseOf = [](const Parsed& picture, int view) {
        return number(itemOf(picture.svg, view).child("text"), "y");
    };
    const Parsed one(states + transition(4, 1000));
    EXPECT_NEAR(baseOf(one, 4), 1000 - 25 + 40.6, 0.1);
    const Parsed two(states + transition(4, 900) + transition(5, 900));
    EXPECT_NEAR(baseOf(two, 4), 900 - 25 + 40.6, 0.1);
    EXPECT_NEAR(std::abs(baseOf(two, 5) - baseOf(two, 4)), 32, 0.1);
}

TEST(Labels, StandOnWhiteInOldFiles)
{
    const struct {
        std::string start;
        bool hasGround;
    } rows[] = {
        {"\n(object Petal\n version 42\n charSet 0)\n(object Design \"Logical View\"\n", true},
        {"\n(object Petal\n version 50\n charSet 0)\n(object Design \"Logical View\"\n", false},
        {exportStart, true},
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string(roseTwoBoxes) +
                                 "(object UsesView \"\" @3 client @1 supplier @2 label (object SegLabel @4 label "
                                 "\"some words\" location (700, 200) anchor_loc 1))",
                             "", render::mostInSvg, row.start);
        const pugi::xml_node ground = itemOf(picture.svg, 3).child("rect");
        EXPECT_EQ(static_cast<bool>(ground), row.hasGround) << row.start;
        EXPECT_NEAR(rectOf(ground).width(), row.hasGround ? 205 : 0, 0.3) << row.start;
    }
}

// The exporter computes places without knowing what is there.
TEST(Labels, OfExportsCoverNothing)
{
    const struct {
        const char* name;
        const char* keys;
    } rows[] = {
        {"without a place", "location (0, 0)"},    {"beside (0,0)", "location (12, -60)"},
        {"on a box", "location (200, 200)"},       {"on a box that is no end of its line", "location (700, 330)"},
        {"on another line", "location (700, 60)"}, {"far away", "location (700, 3000)"},
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string(roseTwoBoxes) + R"((object ClassView "Class" "C" @5 location (700, 330)
width 300 height 100) (object AttachView "" @6 vertices (list Points (400, 60) (1000, 60)))
(object UsesView "" @3 client @1 supplier @2 label (object SegLabel @4 anchor_loc 1 label "some words" )" +
                                 row.keys + "))",
                             "", render::mostInSvg, exportStart);
        const pugi::xml_node item = itemOf(picture.svg, 3);
        const render::Rect room = rectOf(item.child("rect"));
        for (const int view : {1, 2, 5})
            EXPECT_FALSE(rectOf(itemOf(picture.svg, view).child("rect")).overlaps(room)) << row.name << view;
        EXPECT_FALSE(render::crosses(pointsOf(itemOf(picture.svg, 6).child("polyline")), room)) << row.name;
        EXPECT_LT(render::distance(pointsOf(item.child("polyline")), room.centre()), 150) << row.name;
    }
}

TEST(Labels, OfExportsKeepAPlaceThatIsFree)
{
    const Parsed picture(std::string(roseTwoBoxes) +
                             "(object UsesView \"\" @3 client @1 supplier @2 label (object SegLabel @4 label "
                             "\"some words\" location (600, 100) anchor_loc 1))",
                         "", render::mostInSvg, exportStart);
    const render::Rect room = rectOf(itemOf(picture.svg, 3).child("rect"));
    EXPECT_NEAR(room.centre().x, 600, 0.3);
    EXPECT_NEAR(room.centre().y, 100, 0.3);
}

TEST(Labels, AreAllApart)
{
    std::string items = roseTwoBoxes;
    constexpr int count = 24; // more than have room close to the line
    for (int i = 0; i < count; ++i)
        items.append("(object UsesView \"\" @")
            .append(std::to_string(10 + i))
            .append(" client @1 supplier @2 label (object SegLabel \"\" location (0, 0) label \"some words\"))");
    const Parsed picture(items, "", render::mostInSvg, exportStart);
    std::vector<render::Rect> rooms;
    for (int i = 0; i < count; ++i)
        rooms.push_back(rectOf(itemOf(picture.svg, 10 + i).child("rect")));
    for (std::size_t a = 0; a < rooms.size(); ++a)
        for (std::size_t b = 0; b < a; ++b)
            EXPECT_FALSE(rooms[a].overlaps(rooms[b])) << a << ' ' << b;
}

constexpr const char* messages = R"((object InterObjView "A" @1 location (500, 100) width 300 height 900)
(object InterObjView "B" @2 location (1500, 100) width 300 height 900)
(object InterMessView "" @3 label (object SegLabel "" label "go") stereotype (object SegLabel "" label "two")
client @1 supplier @2 location (0, 600) ordinal 0)
(object SelfMessView "" @4 label (object SegLabel "" label "think") client @1 supplier @1 location (0, 700) ordinal 1)
(object MessView "" @5 label (object SegLabel "" label "call") origin (100, 1500) terminus (300, 1500) ordinal 2))";

TEST(Labels, MessagesAreNumberedWhereTheModelSaysSo)
{
    const struct {
        const char* defaults;
        const char* first;
        const char* second;
        const char* inCollaboration;
    } rows[] = {
        {"showMessageNum 3", "1: go", "3: think", "4: call"},
        {"showMessageNum 1", "go", "think", "4: call"},
        {"showMessageNum 0", "go", "think", "call"},
        {"", "1: go", "3: think", "4: call"},
    };
    for (const auto& row : rows) {
        const Parsed picture(messages, "", render::mostInSvg,
                             std::string(roseStart) + "defaults (object defaults " + row.defaults + ")\n");
        EXPECT_EQ(textsOf(itemOf(picture.svg, 3))[0], row.first) << row.defaults;
        EXPECT_THAT(textsOf(itemOf(picture.svg, 4)), ElementsAre(row.second)) << row.defaults;
        EXPECT_THAT(textsOf(itemOf(picture.svg, 5)), ElementsAre(row.inCollaboration)) << row.defaults;
    }
    const Parsed picture(messages);
    const render::Path self = pointsOf(itemOf(picture.svg, 4).child("polyline"));
    ASSERT_EQ(self.size(), 4U);
    EXPECT_EQ(self[1].x - self[0].x, 150);
    EXPECT_EQ(self[2].y - self[1].y, 30);
}

// Where boxes stand on both sides of the middle of a line its label goes along the line.
TEST(Labels, OfExportsLeaveBoxesFree)
{
    const Parsed picture(std::string(roseTwoBoxes) + R"((object ClassView "Class" "C" @5 location (700, 275)
width 240 height 110) (object ClassView "Class" "D" @6 location (700, 125) width 240 height 110)
(object UsesView "" @3 client @1 supplier @2 label (object SegLabel @4 anchor_loc 1 label "words" location (0, 0))))",
                         "", render::mostInSvg, exportStart);
    const render::Rect label = roomOf(itemOf(picture.svg, 3).child("text"), picture.drawn.measure);
    for (const int box : {1, 2, 5, 6}) {
        const render::Rect rect = rectOf(itemOf(picture.svg, box).child("rect"));
        EXPECT_FALSE(label.left < rect.right && rect.left < label.right && label.top < rect.bottom &&
                     rect.top < label.bottom)
            << box;
    }
    EXPECT_NEAR(label.centre().y, 200, 60) << "and stays at its line";
}

} // namespace
