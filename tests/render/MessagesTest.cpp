#include "Parsed.h"

namespace {

using testing::ElementsAre;

std::string pointsAt(const pugi::xml_node& item)
{
    return item.child("polyline").attribute("points").value();
}

// Messages of collaborations are arrows 120 long, 44 beside their link.
TEST(Messages, StandBesideTheirLinks)
{
    const struct {
        const char* keys;
        const char* arrow;
        const char* flow; // of its data
    } rows[] = {
        {"", "640,156 760,156", "790,156 850,156"},
        {"dir 0", "640,156 760,156", "790,156 850,156"},
        {"dir -1", "760,156 640,156", "610,156 550,156"},
        {"pctDist 0.25", "415,156 535,156", "565,156 625,156"},
        {"origin (300, 400) terminus (300, 500)", "300,400 300,500", "300,530 300,590"},
        {"origin (300, 400)", "640,156 760,156", "790,156 850,156"},
        {"terminus (300, 400)", "640,156 760,156", "790,156 850,156"},
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string(R"((object ObjectView "A" @1 location (200, 200) width 100 height 100)
(object ObjectView "B" @2 location (1200, 200) width 100 height 100) (object LinkView "" @3 client @1 supplier @2)
(object DataFlowView "" @5 MessView @4) (object DataFlowView "" @6 MessView @4 dir -1)
(object MessView "" @4 object_arc @3 )") +
                             row.keys + ")");
        EXPECT_EQ(pointsAt(itemOf(picture.svg, 4)), row.arrow) << row.keys;
        const pugi::xml_node flow = itemOf(picture.svg, 5);
        EXPECT_EQ(pointsAt(flow), row.flow) << row.keys;
        const render::Path path = pointsOf(flow.child("polyline"));
        EXPECT_EQ(number(flow.child("ellipse"), "cx"), path[0].x) << row.keys;
        EXPECT_EQ(number(flow.child("ellipse"), "cy"), path[0].y) << row.keys;
        EXPECT_EQ(number(flow.child("ellipse"), "rx"), 8) << row.keys;
        const render::Path back = pointsOf(itemOf(picture.svg, 6).child("polyline"));
        EXPECT_EQ(back[0].x, path[1].x) << "the data that comes back";
        EXPECT_EQ(back[1].y, path[0].y);
    }
}

TEST(Messages, GoFromLifelineToLifeline)
{
    const struct {
        const char* view;
        const char* points;
    } rows[] = {
        {"InterMessView \"\" @3 client @1 supplier @2 location (0, 600)", "500,600 1500,600"},
        {"InterMessView \"\" @3 client @2 supplier @1 location (0, 600)", "1500,600 500,600"},
        {"InterMessView \"\" @3 client @1 location (0, 600)", ""},
        {"InterMessView \"\" @3 client @1 supplier @2 origin (520, 600) terminus (1480, 600)", "520,600 1480,600"},
        {"SelfMessView \"\" @3 client @1 supplier @1 location (0, 600)", "500,600 650,600 650,630 500,630"},
        {"SelfMessView \"\" @3 client @1 location (0, 600)", "500,600 650,600 650,630 500,630"},
        {"SelfMessView \"\" @3 client @1 origin (520, 600) terminus (620, 600)", "520,600 620,600 620,630 520,630"},
        {"SelfMessView \"\" @3 supplier @1 location (0, 600)", ""},
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string(R"((object InterObjView "A" @1 location (500, 100))
(object InterObjView "B" @2 location (1500, 100)) (object )") +
                             row.view + ")");
        EXPECT_EQ(pointsAt(itemOf(picture.svg, 3)), row.points) << row.view;
    }
}

TEST(Messages, EndsOfObjectsAreCrosses)
{
    const Parsed picture("(object Destruction_Marker \"\" @1 location (500, 700) line_color 255)");
    const pugi::xml_node item = itemOf(picture.svg, 1);
    EXPECT_EQ(pointsAt(item), "476,676 524,724");
    EXPECT_STREQ(item.last_child().attribute("points").value(), "476,724 524,676");
    EXPECT_STREQ(item.last_child().attribute("stroke").value(), "#ff0000");
}

// The numbers follow the order of the messages, not that of the file; those of collaborations are given.
TEST(Messages, AreNumberedInTheirOrder)
{
    const struct {
        const char* kind;
        std::vector<std::string> texts;
    } rows[] = {
        {"InterMessView", {"2: late", "1: early", "3: last"}},
        {"MessView", {"1.2: late", "1.1: early", "3: last"}},
    };
    for (const auto& row : rows) {
        std::string items =
            R"((object ObjectView "A" @1 location (200, 200)) (object ObjectView "B" @2 location (900, 200))
(object LinkView "" @3 client @1 supplier @2))";
        for (int view = 4; view < 7; ++view)
            items.append("(object ")
                .append(row.kind)
                .append(" \"\" @")
                .append(std::to_string(view))
                .append(" object_arc @3 client @1 supplier @2 location (0, ")
                .append(std::to_string(view * 100))
                .append(") label (object SegLabel \"\" quidu \"3ABD0000000")
                .append(std::to_string(view))
                .append("\"))");
        const Parsed picture(items, R"((object Message "late" quid "3ABD00000004" sequence "1.2" ordinal 4)
(object Message "early" quid "3ABD00000005" sequence "1.1" ordinal 1)
(object Message "last" quid "3ABD00000006" ordinal 7))");
        for (int view = 4; view < 7; ++view)
            EXPECT_THAT(textsOf(itemOf(picture.svg, view)), ElementsAre(row.texts[static_cast<std::size_t>(view) - 4]))
                << row.kind;
    }
}

// Down to where they are said to end, or their last activity does.
TEST(Messages, LifelinesAreAsLongAsWhatHappens)
{
    const struct {
        const char* keys;
        const char* line;
        std::vector<render::Rect> bars;
    } rows[] = {
        {"", "500,180 500,380", {}},
        {"height 900", "500,180 500,1000", {}},
        {"height 20", "500,180 500,180", {}},
        {"height 300 Focus_Of_Control (object Focus_Of_Control \"\" location (500, 300) height 600)",
         "500,180 500,900",
         {{485, 300, 515, 900}}},
        {"height 900 Focus_Of_Control (object Focus_Of_Control \"\" location (500, 300) height 100)"
         "Focus_Of_Control (object Focus_Of_Control \"\" location (500, 500) height 200)",
         "500,180 500,1000",
         {{485, 300, 515, 400}, {485, 500, 515, 700}}},
        {"height 900 Focus_Of_Control (object Focus_Of_Control \"\" location (500, 300) height 100)"
         "Focus_Of_Control (object Focus_Of_Control \"\" location (515, 280) height 40 Nested TRUE)",
         "500,180 500,1000",
         {{485, 280, 515, 400}}},
        {"height 900 Focus_Of_Control (object Focus_Of_Control \"\" location (500, 300) height 100 "
         "Focus_Of_Control (object Focus_Of_Control \"\" location (515, 380) height 40))",
         "500,180 500,1000",
         {{485, 300, 515, 420}}},
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string("(object InterObjView \"A\" @1 location (500, 100) ") + row.keys + ")");
        const pugi::xml_node item = itemOf(picture.svg, 1);
        EXPECT_EQ(pointsAt(item), row.line) << row.keys;
        pugi::xml_node bar = item.child("rect");
        for (const render::Rect& expected : row.bars) {
            const render::Rect found = rectOf(bar);
            EXPECT_THAT((std::vector{found.left, found.top, found.right, found.bottom}),
                        ElementsAre(expected.left, expected.top, expected.right, expected.bottom))
                << row.keys;
            bar = bar.next_sibling("rect");
        }
        EXPECT_FALSE(bar.next_sibling("rect")) << row.keys; // than the head
    }
}

} // namespace
