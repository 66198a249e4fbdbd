#include "Parsed.h"

namespace {

using testing::ElementsAre;
using testing::EndsWith;

// The rect, ellipse or polygon with which an item begins.
render::Rect outlineOf(const pugi::xml_node& item)
{
    const pugi::xml_node shape = item.find_child([](const pugi::xml_node& node) {
        const std::string_view name = node.name();
        return name == "rect" || name == "ellipse" || name == "polygon";
    });
    if (std::string_view(shape.name()) == "rect")
        return rectOf(shape);
    if (std::string_view(shape.name()) == "ellipse")
        return render::rectAround({number(shape, "cx"), number(shape, "cy")},
                                  {2 * number(shape, "rx"), 2 * number(shape, "ry")});
    const render::Path points = pointsOf(shape);
    render::Rect rect = {points[0].x, points[0].y, points[0].x, points[0].y};
    for (const render::Point& point : points)
        rect = {std::min(rect.left, point.x), std::min(rect.top, point.y), std::max(rect.right, point.x),
                std::max(rect.bottom, point.y)};
    return rect;
}

// Boxes stand beside each other in files: one that grew with its text would cover its neighbours.
TEST(Sizes, BoxesKeepWhatTheFileGivesThem)
{
    const struct {
        const char* item;
        render::Size size;
    } rows[] = {
        {R"(ClassView "Class" "A" @1 width 140 height 100 label (object ItemLabel label "A name that is much longer"))",
         {140, 100}},
        {R"(ClassView "Class" "Logical View::Wide" @1 width 90 height 120 IncludeAttribute TRUE)", {90, 120}},
        {R"(NoteView @1 width 100 height 90 label (object ItemLabel label "several words in a small note"))",
         {100, 90}},
        {R"(ActivityStateView "a longish activity of many words" @1 width 160 height 60)", {160, 60}},
        {R"(StateView "Normal" "a longish state of many words" @1 width 160 height 60)", {160, 60}},
        {R"(ObjectView "an object with a long name" @1 width 160 height 60)", {160, 60}},
        {R"(CategoryView "a package with a long name" @1 width 300 height 150)", {120, 36}}, // its tab
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string("(object ") + row.item + " location (500, 500))",
                             R"((object Class "Wide" quid "3ABD00000001"
class_attributes (list l (object ClassAttribute "anAttributeWithALongName" type "Type")
(object ClassAttribute "b") (object ClassAttribute "c"))))");
        const pugi::xml_node item = itemOf(picture.svg, 1);
        const render::Rect rect = outlineOf(item);
        EXPECT_NEAR(rect.width(), row.size.width, 0.5) << row.item;
        EXPECT_NEAR(rect.height(), row.size.height, 0.5) << row.item;
        for (const pugi::xml_node& text : item.children("text")) {
            const render::Rect room = roomOf(text, picture.drawn.measure);
            EXPECT_GE(room.left, 500 - 151) << row.item << text.text().get();
            EXPECT_LE(room.right, 500 + 151) << row.item << text.text().get();
            if (std::string_view(row.item).starts_with("CategoryView"))
                continue;
            EXPECT_GE(room.left, rect.left - 0.5) << row.item << text.text().get();
            EXPECT_LE(room.right, rect.right + 0.5) << row.item << text.text().get();
            EXPECT_LE(room.bottom, rect.bottom) << row.item << text.text().get();
        }
    }
}

// Letters are 20.5 wide here.
TEST(Sizes, TextsAreSqueezedAndThenCut)
{
    const struct {
        int width; // of a box of 20 letters
        const char* shown;
        bool isSqueezed;
        bool isCut;
    } rows[] = {
        {440, "abcdefghijklmnopqrst", false, false},
        {400, "abcdefghijklmnopqrst", true, false},
        {392, "abcdefghijklmnopqrst", true, false},
        {380, "\u2026", true, true},
        {200, "\u2026", true, true},
    };
    for (const auto& row : rows) {
        const Parsed picture("(object ClassView \"Class\" \"abcdefghijklmnopqrst\" @1 location (500, 500) height 200 "
                             "width " +
                             std::to_string(row.width) + ")");
        const pugi::xml_node text = itemOf(picture.svg, 1).child("text");
        EXPECT_THAT(text.text().get(), EndsWith(row.shown)) << row.width;
        EXPECT_EQ(static_cast<bool>(text.attribute("transform")), row.isSqueezed) << row.width;
        EXPECT_STREQ(text.child_value("title"), row.isCut ? "abcdefghijklmnopqrst" : "") << row.width;
        EXPECT_STREQ(itemOf(picture.svg, 1).child_value("title"), "abcdefghijklmnopqrst");
    }
}

// The name of a component leaves its sockets free, which take 0.285 of the width.
TEST(Sizes, ComponentsBreakTheirNamesBesideTheirSockets)
{
    const std::pair<int, std::vector<std::string>> rows[] = {
        {330, {"abcdef", "ghijkl"}}, // 236 are left for 13 letters of 20.5
        {400, {"abcdef ghijkl"}},
    };
    for (const auto& [width, lines] : rows) {
        const Parsed picture("(object ModView \"abcdef ghijkl\" @1 location (500, 500) height 200 width " +
                             std::to_string(width) + ")");
        EXPECT_EQ(textsOf(itemOf(picture.svg, 1)), lines) << width;
    }
}

TEST(Sizes, ThoseOfWhatHasNoSizeAreUsual)
{
    const struct {
        const char* item;
        std::vector<render::Size> sizes; // of the ellipses and rects
    } rows[] = {
        {R"(ClassView "Class" "A" @1 icon "Actor")", {{54, 54}}},
        {R"(ClassView "Class" "A" @1 icon "Entity")", {{150, 150}}},
        {R"(ClassView "Class" "A" @1 icon "Interface")", {{55, 55}}},
        {R"(UseCaseView "A" @1)", {{216, 112}}},
        {R"(UseCaseView "A" @1 height 56)", {{108, 56}}},
        {R"(StateView "StartState" "" @1)", {{60, 60}}},
        {R"(StateView "EndState" "" @1)", {{81, 81}, {60, 60}}},
        {R"(SynchronizationView "" @1)", {{300, 24}}},
        {R"(SynchronizationView "" @1 sync_is_horizontal FALSE)", {{24, 300}}},
        {R"(ModView "A" @1 width 200 height 100)", {{171.5, 100}, {57, 20}, {57, 20}}},
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string("(object ") + row.item + " location (500, 500))");
        std::vector<render::Size> found;
        for (const pugi::xml_node& shape : itemOf(picture.svg, 1).children()) {
            if (std::string_view(shape.name()) == "rect")
                found.push_back({number(shape, "width"), number(shape, "height")});
            if (std::string_view(shape.name()) == "ellipse")
                found.push_back({2 * number(shape, "rx"), 2 * number(shape, "ry")});
        }
        ASSERT_EQ(found.size(), row.sizes.size()) << row.item;
        for (std::size_t i = 0; i < found.size(); ++i) {
            EXPECT_NEAR(found[i].width, row.sizes[i].width, 0.3) << row.item;
            EXPECT_NEAR(found[i].height, row.sizes[i].height, 0.3) << row.item;
        }
    }
    const Parsed actor(R"((object ClassView "Class" "A" @1 location (500, 500) icon "Actor" fill_color 255))");
    EXPECT_STREQ(itemOf(actor.svg, 1).child("ellipse").attribute("fill").value(), "none");
}

constexpr const char* twoMembers = R"((object Class "E" quid "3ABD00000001" class_attributes (list l
(object ClassAttribute "a") (object ClassAttribute "b" exportControl "Public"))
operations (list l (object Operation "f" opExportControl "Protected"))))";

// Where members and the rules between them stand.
TEST(Sizes, CompartmentsAreMeasuredFromTheirPlace)
{
    const Parsed picture(R"((object ClassView "Class" "Logical View::E" @1 location (500, 500) width 400 height 400
IncludeAttribute TRUE IncludeOperation TRUE quidu "3ABD00000001" annotation 8
compartment (object Compartment location (309, 400))))",
                         twoMembers);
    const pugi::xml_node item = itemOf(picture.svg, 1);
    EXPECT_THAT(textsOf(item), ElementsAre("E", "a", "b", "f()"));
    std::vector<render::Point> places;
    for (const pugi::xml_node& text : item.children("text"))
        places.push_back({number(text, "x"), number(text, "y") - 40.6});
    EXPECT_NEAR(places[0].y, 312, 0.3);
    EXPECT_NEAR(places[1].y, 400, 0.3);
    EXPECT_NEAR(places[2].y, 450, 0.3);
    EXPECT_NEAR(places[3].y, 550, 0.3);
    for (std::size_t i = 1; i < places.size(); ++i)
        EXPECT_NEAR(places[i].x, 359, 0.3);
    std::vector<double> rules;
    for (const pugi::xml_node& line : item.children("polyline"))
        if (pointsOf(line).size() == 2 && pointsOf(line)[0].x == 300)
            rules.push_back(pointsOf(line)[0].y);
    EXPECT_THAT(rules, ElementsAre(394, 519));
}

TEST(Sizes, IconsSayWhatMembersAre)
{
    const struct {
        const char* keys;
        std::size_t blue;
        std::size_t magenta;
        std::size_t signs; // a lock, a key
        double indentation;
    } rows[] = {
        {"annotation 8", 2, 1, 2, 59},
        {"annotation 0", 0, 0, 0, 9},
        {"", 0, 0, 0, 9},
        {"annotation 8 SuppressOperation TRUE", 2, 0, 1, 59},
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string(R"((object ClassView "Class" "Logical View::E" @1 location (500, 500) width 400
height 400 IncludeAttribute TRUE IncludeOperation TRUE quidu "3ABD00000001" )") +
                                 row.keys + ")",
                             twoMembers);
        const pugi::xml_node item = itemOf(picture.svg, 1);
        std::size_t blue = 0;
        std::size_t magenta = 0;
        for (const pugi::xml_node& shape : item.children("polygon")) {
            blue += std::string_view(shape.attribute("fill").value()) == "#0000ff" ? 1U : 0U;
            magenta += std::string_view(shape.attribute("fill").value()) == "#ff00ff" ? 1U : 0U;
        }
        const auto children = item.children();
        const auto signs =
            static_cast<std::size_t>(std::count_if(children.begin(), children.end(), [](const pugi::xml_node& shape) {
                return std::string_view(shape.attribute("fill").value()) == "none" && pointsOf(shape).size() != 2 &&
                       std::string_view(shape.attribute("stroke-width").value()) == "2" &&
                       std::string_view(shape.name()) == "polyline";
            }));
        EXPECT_EQ(blue, row.blue) << row.keys;
        EXPECT_EQ(magenta, row.magenta) << row.keys;
        EXPECT_EQ(signs, row.signs) << row.keys;
        EXPECT_NEAR(number(item.child("text").next_sibling("text"), "x"), 300 + row.indentation, 0.3) << row.keys;
    }
}

// A package's name below the name of an element that it owns and another shows.
TEST(Sizes, OwnersAreNamedWhereTheyDiffer)
{
    const struct {
        const char* view;
        const char* owner;
    } rows[] = {
        {R"(ClassView "Class" "Logical View::Inner::C" @1 quidu "3ABD00000002")", "(from Inner)"},
        {R"(ClassView "Class" "Logical View::Inner::C" @1 quidu "3ABD00000002" icon "Actor")", "(from Inner)"},
        {R"(ClassView "Class" "Logical View::D" @1 quidu "3ABD00000003")", ""},
        {R"(ClassView "Class" "Elsewhere::Far::E" @1)", "(from Far)"},
        {R"(UseCaseView "Use Case View::Pay" @1)", "(from Use Case View)"},
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string("(object ") + row.view + " location (500, 500))", R"((object Class_Category
"Inner" quid "3ABD00000001" logical_models (list l (object Class "C" quid "3ABD00000002")))
(object Class "D" quid "3ABD00000003"))");
        const pugi::xml_node item = itemOf(picture.svg, 1);
        const std::vector<std::string> texts = textsOf(item);
        if (*row.owner != '\0') {
            ASSERT_EQ(texts.size(), 2U) << row.view;
            EXPECT_EQ(texts[1], row.owner);
            EXPECT_STREQ(item.child("text").next_sibling("text").attribute("font-size").value(), "32.8");
        } else {
            EXPECT_EQ(texts.size(), 1U) << row.view;
        }
    }
}

// A class shown as an icon has its members below its name, or where the file has them, but not on the name.
TEST(Sizes, IconsHaveTheirMembers)
{
    const struct {
        const char* keys;
        double first; // top of the first member
    } rows[] = {
        {"", 651},
        {"compartment (object Compartment location (500, 900))", 900},
        {"compartment (object Compartment location (500, 600))", 635},
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string(R"((object ClassView "Class" "Logical View::E" @1 location (500, 500)
icon "Entity" IncludeAttribute TRUE IncludeOperation TRUE SuppressOperation TRUE quidu "3ABD00000001" )") +
                                 row.keys + ")",
                             twoMembers);
        const pugi::xml_node item = itemOf(picture.svg, 1);
        EXPECT_THAT(textsOf(item), ElementsAre("E", "a", "b")) << row.keys;
        const pugi::xml_node name = item.child("text");
        EXPECT_NEAR(number(name, "y") - 40.6, 585, 0.3) << row.keys;
        EXPECT_NEAR(number(name.next_sibling("text"), "y") - 40.6, row.first, 0.3) << row.keys;
        EXPECT_NEAR(number(item.last_child(), "y") - 40.6, row.first + 50, 0.3) << row.keys;
    }
}

// At the width that the label has, else at that of the box.
TEST(Sizes, LifelinesBreakTheirNames)
{
    const std::pair<const char*, std::vector<std::string>> rows[] = {
        {"width 250", {"abcdef", "ghijkl"}}, // 247 are left for 13 letters of 20.5
        {"width 300", {"abcdef ghijkl"}},
        {"width 250 label (object ItemLabel max_width 300 label \"abcdef ghijkl\")", {"abcdef ghij\u2026"}},
        {"width 300 label (object ItemLabel max_width 200 label \"abcdef ghijkl\")", {"abcdef", "ghijkl"}},
    };
    for (const auto& [keys, lines] : rows) {
        const Parsed picture(std::string("(object InterObjView \"abcdef ghijkl\" @1 location (500, 200) ") + keys +
                             ")");
        EXPECT_EQ(textsOf(itemOf(picture.svg, 1)), lines) << keys;
    }
}

TEST(Sizes, StatesBreakTheirNames)
{
    const Parsed picture(R"((object StateView "Normal" "Wait for User Input" @1 location (500, 500) width 390 height 152
label (object ItemLabel location (500, 480) anchor_loc 1 nlines 2 max_width 204 justify 0 label "Wait for User Input")))");
    const pugi::xml_node item = itemOf(picture.svg, 1);
    EXPECT_THAT(textsOf(item), ElementsAre("Wait for", "User Input"));
    EXPECT_NEAR(number(item.child("text"), "y") - 40.6 + 50, 480, 0.3);
    EXPECT_NEAR(number(item.child("rect"), "width"), 390, 0.1);
}

TEST(Sizes, LifelinesStartBelowTheirObjects)
{
    const Parsed picture(R"((object InterObjView "A" @1 location (500, 200) width 300 height 900 line_color 255
Focus_Of_Control (object Focus_Of_Control "" location (500, 400) height 100 Nested FALSE)
Focus_Of_Control (object Focus_Of_Control "" location (515, 480) height 60 Nested TRUE))
(object InterObjView "B" @2 location (1500, 200) width 300 height 900 icon "Actor"
label (object ItemLabel location (1500, 225) anchor_loc 1 nlines 2 max_width 300 label "B")))");
    const render::Path box = pointsOf(itemOf(picture.svg, 1).child("polyline"));
    EXPECT_NEAR(box[0].y, 280, 0.3);
    EXPECT_STREQ(itemOf(picture.svg, 1).child("polyline").attribute("stroke").value(), "#000000");
    EXPECT_NEAR(pointsOf(itemOf(picture.svg, 2).child("polyline"))[0].y, 300, 0.3);
    const pugi::xml_node bar = itemOf(picture.svg, 1).child("rect");
    EXPECT_NEAR(number(bar, "x"), 485, 0.3);
    EXPECT_NEAR(number(bar, "width"), 30, 0.3);
    EXPECT_NEAR(number(bar, "y"), 400, 0.3);
    EXPECT_NEAR(number(bar, "height"), 140, 0.3); // over the nested one
    EXPECT_EQ(shapesOf(itemOf(picture.svg, 1)), "polyline rect rect");
}

TEST(Sizes, LanesHaveTitlesAboveEverything)
{
    const Parsed picture(
        R"((object Swimlane "First" @1 width 700) (object Swimlane "Second" @2 location (700, 0) width 600)
(object Swimlane "" @3 location (1300, 0) width 200) (object ActivityStateView "a" @4 location (300, 500)))");
    const render::Rect first = rectOf(itemOf(picture.svg, 1).child("rect"));
    EXPECT_EQ(first.top, -60);
    EXPECT_EQ(first.bottom, 0);
    EXPECT_EQ(first.right, 700);
    EXPECT_FALSE(itemOf(picture.svg, 1).child("polyline"));
    EXPECT_EQ(pointsOf(itemOf(picture.svg, 2).child("polyline"))[0].x, 700);
    EXPECT_EQ(shapesOf(itemOf(picture.svg, 3)), "");
}

} // namespace
