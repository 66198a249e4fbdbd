#include "Drawing.h"
#include "Parsed.h"

#include <cstdlib>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr const char* folder = PETAL_SOURCE_DIR "/tests/render/";

std::string goldenFile(const reader::Diagram& diagram)
{
    return std::string(folder).append("golden/").append(diagram.name).append(".svg");
}

// With PETAL_UPDATE_GOLDEN the kept pictures are written anew.
TEST(Picture, IsTheOneThatWasLookedAt)
{
    Drawn drawn(textOfFile(std::string(folder) + "models/everything.mdl"));
    EXPECT_EQ(drawn.index.diagrams().size(), 9U);
    for (const reader::Diagram& diagram : drawn.index.diagrams()) {
        const std::string picture = drawn.picture(diagram);
        if (std::getenv("PETAL_UPDATE_GOLDEN"))
            std::ofstream(goldenFile(diagram), std::ios::binary) << picture;
        EXPECT_EQ(picture, textOfFile(goldenFile(diagram))) << diagram.name;
    }
    EXPECT_THAT(drawn.warnings, ElementsAre("items of the kind HologramView are not known; drawn plainly",
                                            "items of the kind BeamView are not known; drawn plainly"));
}

TEST(Picture, HasNoIdsOfAnother)
{
    Drawn drawn(modelOf(""));
    const reader::Diagram& diagram = drawn.index.diagrams().front();
    EXPECT_THAT(drawn.picture(diagram, "p1-"), HasSubstr("id=\"p1-"));
    EXPECT_THAT(drawn.picture(diagram, "p1-"), Not(HasSubstr("id=\"diagram")));
}

TEST(Picture, KeepsTextsOfTheFileText)
{
    const struct {
        const char* name;
        const char* shown; // in the picture's source
    } rows[] = {
        {"<script>alert(1)</script>", "&lt;script&gt;alert(1)&lt;/script&gt;"},
        {"a\x01\x1b[31mb\x7f", "a[31mb"},
        {"\u00C0\u00A9\u0085z", "\u00C0\u00A9z"},
        {"]]>&amp;", "]]&gt;&amp;amp;"},
        {"\\\"quoted\\\"", "\"quoted\""},
    };
    for (const auto& row : rows) {
        const std::string name = std::string("\"").append(row.name).append("\"");
        Parsed picture("(object ClassView \"Class\" " + name + " @1 location (100, 100) icon " + name +
                           " label (object ItemLabel label " + name + "))",
                       "(object Class " + name + " quid \"3ABD00000001\")");
        EXPECT_TRUE(picture.isWellFormed) << row.name;
        EXPECT_THAT(picture.text, HasSubstr(std::string(">").append(row.shown).append("</text>"))) << row.name;
        EXPECT_THAT(picture.text, Not(HasSubstr("<script"))) << row.name;
    }
}

TEST(Picture, StaysWithinBoundsWhateverTheFileSays)
{
    const char* const rows[] = {
        "(object ClassView \"Class\" \"A\" @1 location (99999999999999999999, -1e308) width 1e300 height -5)",
        "(object ClassView \"Class\" \"A\" @1 location (9, 9) font (object Font size 1000000 face \"'\\\" onload=x\"))",
        "(object AttachView \"\" @1 client @2 supplier @2) (object AttachView \"\" @2 client @1 supplier @1)",
        "(object StateView \"Normal\" \"A\" @1 Parent_View @2) (object StateView \"Normal\" \"B\" @2 Parent_View @1)",
        "(object InheritView \"\" @1 client @1 supplier @1 drawSupplier @1 vertices (list Points))",
        "(object InheritTreeView \"\" @1 supplier @1 vertices (list Points (1,1)))",
        "(object AssociationViewNew \"\" @1 roleview_list (list RoleViews (object RoleView \"\" @2 client @1)))",
        "(object MessView \"\" @1 object_arc @1) (object DataFlowView \"\" @2 MessView @2)",
        "(object SelfMessView \"\" @1 client @1) (object InterMessView \"\" @2) (object LinkSelfView \"\" @3)",
        "(object InterObjView \"\" @1 Focus_Of_Control (object Focus_Of_Control \"\" @2 height 1e99))",
        "(object Swimlane \"\" @1 width -1) (object SynchronizationView) (object DecisionView) (object Label)",
        "(object RoleView \"\" @1) (object NoteView) (object) (object \"\" \"\")",
    };
    for (const char* const row : rows) {
        const Parsed picture(row);
        EXPECT_TRUE(picture.isWellFormed) << row;
        EXPECT_LT(number(picture.svg.child("svg"), "width"), 100000) << row;
        EXPECT_LT(number(picture.svg.child("svg"), "height"), 100000) << row;
        EXPECT_THAT(picture.text, Not(HasSubstr("nan"))) << row;
    }
}

TEST(Lines, EndAtTheirBoxes)
{
    const struct {
        const char* keys;
        const char* points;
    } rows[] = {
        {"", "250,200 750,200"},
        {"vertices (list Points (200, 200) (200, 400) (800, 400) (800, 200))", "200,250 200,400 800,400 800,250"},
        {"origin_attachment (248, 180) terminal_attachment (752, 180)", "250,180 750,180"},
        {"origin_attachment (248, 180)", "250,200 750,200"},
        {"vertices (list Points (190, 190) (210, 210) (500, 210) (810, 210) (790, 190))", "250,210 500,210 750,210"},
        {"vertices (list Points (290, 200) (500, 300) (710, 200))", "250,200.4 500,300 750,200.4"}, // close enough
        {"vertices (list Points (500, 500) (900, 500) (900, 300))", "250,250 500,500 900,500 900,300 850,250"},
        {"vertices (list Points (400, 400))", "250,200 750,200"},
    };
    for (const auto& row : rows) {
        const Parsed picture(std::string(R"((object ClassView "Class" "A" @1 location (200, 200) width 100 height 100)
(object ClassView "Class" "B" @2 location (800, 200) width 100 height 100)
(object AttachView "" @3 client @1 supplier @2 )") +
                             row.keys + ")");
        EXPECT_STREQ(itemOf(picture.svg, 3).child("polyline").attribute("points").value(), row.points) << row.keys;
    }
}

TEST(Lines, ShowWhatARoleIs)
{
    const struct {
        const char* role;
        const char* other;
        const char* shape; // at the role's end
        bool isFilled;
    } rows[] = {
        {"", "", "", false},
        {"is_navigable TRUE", "is_navigable TRUE", "", false},
        {"is_navigable TRUE", "", "arrow", false},
        {"is_navigable TRUE is_aggregate TRUE", "", "diamond", false},
        {"is_aggregate TRUE", "Containment \"By Value\"", "diamond", true},
        {"is_aggregate TRUE Containment \"By Value\"", "", "diamond", true},
        {"is_aggregate TRUE", "Containment \"By Reference\"", "diamond", false},
    };
    for (const auto& row : rows) {
        const Parsed picture(R"((object ClassView "Class" "A" @1 location (200, 200))
(object ClassView "Class" "B" @2 location (1200, 200))
(object AssociationViewNew "" @3 location (700, 200) roleview_list (list RoleViews
(object RoleView "" @4 quidu "3ABD00000004" client @3 supplier @1)
(object RoleView "" @5 quidu "3ABD00000005" client @3 supplier @2))))",
                             std::string("(object Association \"\" roles (list l (object Role \"a\" quid "
                                         "\"3ABD00000004\" ") +
                                 row.role + ") (object Role \"b\" quid \"3ABD00000005\" " + row.other + ")))");
        const pugi::xml_node item = itemOf(picture.svg, 4);
        const pugi::xml_node diamond = item.child("polygon");
        const bool hasArrow = std::distance(item.children("polyline").begin(), item.children("polyline").end()) == 2;
        EXPECT_EQ(hasArrow, std::string_view(row.shape) == "arrow") << row.role;
        EXPECT_EQ(static_cast<bool>(diamond), std::string_view(row.shape) == "diamond") << row.role;
        const std::string_view fill = diamond ? diamond.attribute("fill").value() : "#ffffff";
        EXPECT_EQ(fill != "#ffffff", row.isFilled) << row.role;
    }
}

TEST(Arrangement, FindsPlacesForWhatHasNone)
{
    const Parsed picture(R"((object ClassView "Class" "A" @1 location (0, 0) width 600 height 300)
(object ClassView "Class" "B" @2 location (0, 0) width 600 height 300)
(object ClassView "Class" "C" @3 location (3000, 3000) width 600 height 300)
(object NoteView @4 location (0, 0) label (object ItemLabel label "beside C"))
(object AttachView "" @5 client @4 supplier @3)
(object Label @6 location (0, 0) label "title")
(object UsesView "" @7 client @1 supplier @2 stereotype (object SegLabel @8 location (12, -60) label "<<use>>")))",
                         "", render::mostInSvg, exportStart);
    std::vector<render::Rect> rects;
    for (const int view : {1, 2, 3})
        rects.push_back(rectOf(itemOf(picture.svg, view).child("rect")));
    const render::Path note = pointsOf(itemOf(picture.svg, 4).child("polygon"));
    ASSERT_EQ(note.size(), 5U);
    rects.push_back({note[0].x, note[0].y, note[3].x, note[3].y});
    for (std::size_t a = 0; a < rects.size(); ++a)
        for (std::size_t b = 0; b < a; ++b)
            EXPECT_FALSE(rects[a].overlaps(rects[b])) << a << " and " << b;
    EXPECT_TRUE(rects[2].grownBy(100).overlaps(rects[3]));
    const pugi::xml_node uses = itemOf(picture.svg, 7);
    const render::Point label = {number(uses.child("text"), "x"), number(uses.child("text"), "y")};
    EXPECT_LT(render::distance(pointsOf(uses.child("polyline")), label), 300);
    EXPECT_TRUE(itemOf(picture.svg, 6).child("text"));
}

} // namespace
