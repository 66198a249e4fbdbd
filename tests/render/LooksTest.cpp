#include "Parsed.h"

namespace {

using testing::ElementsAre;

// Shapes by kind, in the order in which they are drawn.
TEST(Looks, EachKindHasItsShape)
{
    const struct {
        const char* item; // all but its place
        const char* shapes;
    } rows[] = {
        {R"(ClassView "Class" "A" @1)", "rect polyline polyline"},
        {R"(ClassView "Class" "A" @1 SuppressAttribute TRUE)", "rect polyline"},
        {R"(ClassView "Class" "A" @1 SuppressAttribute TRUE SuppressOperation TRUE)", "rect"},
        {R"(ClassView "ParameterizedClass" "A" @1)", "rect polyline polyline rect"},
        {R"(ClassView "ClassUtility" "A" @1)", "rect rect polyline polyline"},
        {R"(ClassView "Class" "A" @1 icon "Actor")", "ellipse polyline polyline polyline"},
        {R"(ClassView "Class" "A" @1 icon "Boundary")", "polyline polyline ellipse"},
        {R"(ClassView "Class" "A" @1 icon "Control")", "ellipse polyline"},
        {R"(ClassView "Class" "A" @1 icon "Entity")", "ellipse polyline"},
        {R"(ClassView "Class" "A" @1 icon "Interface")", "ellipse"},
        {R"(ClassView "Class" "A" @1 icon "Interface" icon_style "Label")", "rect polyline polyline"},
        {R"(CategoryView "A" @1)", "rect rect"},
        {R"(SubSysView "A" @1)", "rect rect"},
        {R"(NoteView @1)", "polygon polyline"},
        {R"(UseCaseView "A" @1)", "ellipse"},
        {R"(DecisionView "A" @1)", "polygon"},
        {R"(SynchronizationView "A" @1)", "rect"},
        {R"(StateView "Normal" "A" @1)", "rect"},
        {R"(StateView "StartState" "A" @1)", "ellipse"},
        {R"(StateView "EndState" "A" @1)", "ellipse ellipse"},
        {R"(ActivityStateView "Normal" "A" @1)", "rect"},
        {R"(ActivityStateView "EndState" "A" @1)", "ellipse ellipse"},
        {R"(ObjectView "A" @1)", "rect"},
        {R"(ObjectView "A" @1 quidu "3ABD00000009")", "rect rect"},
        {R"(InterObjView "A" @1)", "polyline rect"},
        {R"(InterObjView "A" @1 Focus_Of_Control (object Focus_Of_Control "" location (500, 700) height 100))",
         "polyline rect rect"},
        {R"(ModView "A" @1)", "rect rect rect"},
        {R"(DeviceView "A" @1)", "polygon polygon rect"},
        {R"(ProcessorView "A" @1)", "polygon polygon rect rect"},
        {R"(Label @1)", ""},
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string("(object ") + row.item + " location (500, 500))",
                             "(object Object \"many\" quid \"3ABD00000009\" multi TRUE)");
        const pugi::xml_node item = itemOf(picture.svg, 1);
        EXPECT_EQ(shapesOf(item), row.shapes) << row.item;
    }
}

TEST(Looks, LinesEndAsTheirKindSays)
{
    const struct {
        const char* kind;
        const char* shapes; // the line, and its end
        bool isDashed;
    } rows[] = {
        {"AnchorView", "polyline", true},
        {"AssocAttachView", "polyline", true},
        {"AttachView", "polyline", true},
        {"ConnectionView", "polyline", false},
        {"DependencyView", "polyline polyline", true},
        {"ImportView", "polyline polyline", true},
        {"InheritView", "polyline polygon", false},
        {"InstantiateView", "polyline polyline", true},
        {"LinkView", "polyline", false},
        {"ModVisView", "polyline polyline", true},
        {"ObjectFlowView", "polyline polyline", true},
        {"RealizeView", "polyline polygon", true},
        {"TransView", "polyline polyline", false},
        {"UsesView", "polyline polyline", true},
        {"NeverSeenView", "polyline", false},
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string(R"((object ClassView "Class" "A" @1 location (200, 200) width 100 height 90)
(object ClassView "Class" "B" @2 location (900, 200) width 100 height 90)
(object )") + row.kind + " \"\" @3 client @1 supplier @2 line_color 255)");
        const pugi::xml_node item = itemOf(picture.svg, 3);
        EXPECT_EQ(shapesOf(item), row.shapes) << row.kind;
        const pugi::xml_node line = item.child("polyline");
        EXPECT_EQ(!line.attribute("stroke-dasharray").empty(), row.isDashed) << row.kind;
        EXPECT_STREQ(line.attribute("fill").value(), "none") << row.kind;
        EXPECT_STREQ(line.attribute("stroke").value(), "#ff0000") << row.kind;
        const pugi::xml_node end = line.next_sibling();
        const double border = rectOf(itemOf(picture.svg, 2).child("rect")).left;
        const render::Path head = end ? pointsOf(end) : pointsOf(line);
        EXPECT_NEAR(head[end ? 1 : head.size() - 1].x, border, 0.5) << row.kind; // the tip is the second point
        EXPECT_FALSE(end.attribute("stroke-dasharray")) << row.kind;
        if (std::string_view(end.name()) == "polygon") {
            EXPECT_STREQ(end.attribute("fill").value(), "#ffffff") << row.kind;
            EXPECT_NEAR(pointsOf(line).back().x, head.front().x, 0.5) << row.kind; // nothing stands in a triangle
        }
    }
}

TEST(Looks, MessagesEndAsTheirSynchronizationSays)
{
    const struct {
        const char* synchronization;
        const char* shapes;
        std::size_t points; // of the head
        bool isDashed;
    } rows[] = {
        {"Simple", "polyline polyline", 3, false},       {"Synchronous", "polyline polygon", 3, false},
        {"Asynchronous", "polyline polyline", 2, false}, {"Procedure Call", "polyline polygon", 3, false},
        {"Return", "polyline polyline", 3, true},        {"Balking", "polyline polygon", 3, false},
        {"Timeout", "polyline polygon", 3, false},       {"of another day", "polyline polyline", 3, false},
    };
    for (const auto& row : rows) {
        const Parsed picture(R"((object InterObjView "A" @1 location (500, 100))
(object InterObjView "B" @2 location (1500, 100))
(object InterMessView "" @3 label (object SegLabel "" quidu "3ABD00000007") client @1 supplier @2 location (0, 600)))",
                             std::string("(object Message \"call\" quid \"3ABD00000007\" synchronization \"") +
                                 row.synchronization + "\")");
        const pugi::xml_node item = itemOf(picture.svg, 3);
        EXPECT_EQ(shapesOf(item), row.shapes) << row.synchronization;
        const render::Path line = pointsOf(item.child("polyline"));
        ASSERT_EQ(line.size(), 2U) << row.synchronization;
        EXPECT_EQ(line[0].x, 500) << row.synchronization;
        EXPECT_EQ(line[1].x, 1500) << row.synchronization;
        EXPECT_EQ(line[1].y, 600) << row.synchronization;
        EXPECT_EQ(!item.child("polyline").attribute("stroke-dasharray").empty(), row.isDashed) << row.synchronization;
        EXPECT_EQ(pointsOf(item.child("polyline").next_sibling()).size(), row.points) << row.synchronization;
        EXPECT_THAT(textsOf(item), ElementsAre("1: call")) << row.synchronization;
    }
}

TEST(Looks, ColoursAreThoseOfTheFile)
{
    const struct {
        const char* keys;
        const char* line;
        const char* fill;
        const char* text;
    } rows[] = {
        {"", "#990033", "#ffffcc", "#000000"},
        {"line_color 255", "#ff0000", "#ffffff", "#000000"},
        {"fill_color 65280", "#990033", "#00ff00", "#000000"},
        {"line_color 16711680 fill_color 1193046", "#0000ff", "#563412", "#000000"},
        {"font (object Font color 255)", "#990033", "#ffffcc", "#ff0000"},
        {"font (object Font color 255 default_color TRUE)", "#990033", "#ffffcc", "#000000"},
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string("(object ClassView \"Class\" \"A\" @1 location (500, 500) ") + row.keys + ")");
        const pugi::xml_node item = itemOf(picture.svg, 1);
        EXPECT_STREQ(item.child("rect").attribute("stroke").value(), row.line) << row.keys;
        EXPECT_STREQ(item.child("rect").attribute("fill").value(), row.fill) << row.keys;
        EXPECT_STREQ(item.child("text").attribute("fill").value(), row.text) << row.keys;
    }
}

TEST(Looks, FontsAreThoseOfTheFile)
{
    const struct {
        const char* font;
        const char* attribute;
        const char* value;
    } rows[] = {
        {"size 12", "font-size", "49.2"},
        {"bold TRUE", "font-weight", "bold"},
        {"bold FALSE", "font-weight", ""},
        {"italics TRUE", "font-style", "italic"},
        {"underline TRUE", "text-decoration", "underline"},
        {"strike TRUE", "text-decoration", " line-through"},
        {"size 0", "font-size", "41"},
        {"size 1", "font-size", "16.4"},
    };
    for (const auto& row : rows) {
        const Parsed picture(
            std::string("(object ClassView \"Class\" \"A\" @1 location (500, 500) font (object Font ") + row.font +
            "))");
        EXPECT_STREQ(itemOf(picture.svg, 1).child("text").attribute(row.attribute).value(), row.value) << row.font;
    }
}

// Lines end where the outline of a shape is, not at the corners of the box around it.
TEST(Looks, LinesEndAtOutlines)
{
    const struct {
        const char* kind;
        double x;
        double y;
    } rows[] = {
        {"ClassView \"Class\"", 1050, 1050},
        {"UseCaseView", 1050, 1050}, // as if it were a box, for its name is below
        {"DecisionView", 1025, 1025},
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string("(object ") + row.kind +
                             " \"\" @1 SuppressAttribute TRUE SuppressOperation TRUE location (1000, 1000) width 100 "
                             "height 100) (object NoteView @2 location (2000, 2000) width 100 height 100)"
                             "(object AttachView \"\" @3 client @1 supplier @2)");
        const render::Path path = pointsOf(itemOf(picture.svg, 3).child("polyline"));
        ASSERT_EQ(path.size(), 2U) << row.kind;
        EXPECT_LT(render::distance(path[0], {row.x, row.y}), 1) << row.kind << path[0].x << ' ' << path[0].y;
        EXPECT_FALSE(render::Rect({950, 950, 1020, 1020}).contains(path[0])) << row.kind;
    }
}

// Boxes in boxes, such as the activities of a state, are seen; labels and lines stand above boxes.
TEST(Looks, SmallStandsAboveLarge)
{
    const Parsed picture(R"((object UsesView "" @9 client @1 supplier @2)
(object StateView "Normal" "inner" @1 location (500, 500) width 300 height 120)
(object StateView "Normal" "outer" @2 location (500, 500) width 3000 height 1200))");
    std::vector<std::string> order;
    for (const pugi::xml_node& item : picture.svg.child("svg").children("g"))
        order.emplace_back(item.attribute("data-view").value());
    EXPECT_THAT(order, ElementsAre("2", "1", "9"));
}

TEST(Looks, FeaturesSayWhatTheyAre)
{
    const Parsed picture(R"((object ClassView "Class" "Logical View::E" @1 location (500, 500) IncludeAttribute TRUE
IncludeOperation TRUE ShowOperationSignature TRUE ShowCompartmentStereotypes TRUE quidu "3ABD00000001"))",
                         R"((object Class "E" quid "3ABD00000001" abstract TRUE class_attributes (list l
(object ClassAttribute "a" type "Money" initv "0") (object ClassAttribute "b" exportControl "Public" static TRUE)
(object ClassAttribute "c" exportControl "Protected" derived TRUE stereotype "key")
(object ClassAttribute "d" exportControl "Implementation"))
operations (list l (object Operation "f" parameters (list l (object Parameter "x" type "T" initv "1")
(object Parameter "y")) result "R") (object Operation "g" opExportControl "Private"))))");
    EXPECT_THAT(textsOf(itemOf(picture.svg, 1)),
                ElementsAre("E", "a : Money = 0", "$b", "<<key>> /c", "d", "f(x : T = 1, y) : R", "g()"));
    EXPECT_STREQ(itemOf(picture.svg, 1).child("text").attribute("font-style").value(), "italic");
    const pugi::xml_node item = itemOf(picture.svg, 1);
    double above = 0;
    for (const pugi::xml_node& text : item.children("text")) {
        EXPECT_GT(number(text, "y"), above);
        above = number(text, "y");
        EXPECT_TRUE(rectOf(item.child("rect")).contains({number(text, "x"), above})) << text.text().get();
    }
}

} // namespace
