#include "Parsed.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

std::string numbered(const char* start, std::size_t number, const std::string& rest)
{
    return std::string(start).append(std::to_string(number)).append(rest);
}

constexpr const char* twoBoxes = R"((object ClassView "Class" "A" @1 location (100, 100))
(object ClassView "Class" "B" @2 location (90000, 90000)))";

// As one line its text would take the time of thousands of letters, and cross the whole picture.
TEST(Limits, NarrowNotesBreakTheirTexts)
{
    const Parsed picture("(object NoteView @1 location (500, 500) width 1 label (object ItemLabel label \"one two\"))");
    EXPECT_THAT(textsOf(itemOf(picture.svg, 1)), SizeIs(2));
}

TEST(Limits, LinesKeepTheirFirstPointsAndTheLast)
{
    const auto pathOf = [](std::size_t count) {
        std::string points;
        for (std::size_t i = 0; i < count; ++i)
            points.append(numbered(" (", 1000 + i * 10, i % 2 == 0 ? ", 3000)" : ", 4000)"));
        return "(object AttachView \"\" @3 vertices (list Points" + points + "))";
    };
    const Parsed whole(pathOf(1001));
    EXPECT_THAT(pointsOf(itemOf(whole.svg, 3).child("polyline")), SizeIs(1001));
    EXPECT_THAT(whole.drawn.warnings, IsEmpty());
    const Parsed cut(pathOf(5000));
    const render::Path path = pointsOf(itemOf(cut.svg, 3).child("polyline"));
    ASSERT_THAT(path, SizeIs(1001));
    EXPECT_EQ(path[999].x, 10990);
    EXPECT_EQ(path.back().x, 50990);
    EXPECT_THAT(cut.drawn.warnings, ElementsAre(StartsWith("lines of more than 1000 points: 1;")));
}

TEST(Limits, DashesAreCounted)
{
    std::string items = twoBoxes;
    for (std::size_t i = 3; i < 203; ++i)
        items.append(numbered("(object AttachView \"\" @", i, " client @1 supplier @2)"));
    const Parsed picture(items);
    EXPECT_TRUE(itemOf(picture.svg, 3).child("polyline").attribute("stroke-dasharray"));
    EXPECT_FALSE(itemOf(picture.svg, 202).child("polyline").attribute("stroke-dasharray"));
    EXPECT_THAT(picture.drawn.warnings, ElementsAre(StartsWith("there are too many long dashed lines")));
}

TEST(Limits, FontsAreCounted)
{
    std::string items;
    for (std::size_t i = 1; i <= 120; ++i)
        items.append(numbered("(object ClassView \"Class\" \"A\" @", i, " location (100, 100) font (object Font face "))
            .append(numbered("\"F", i, "\"))"));
    const Parsed picture(items);
    EXPECT_THAT(itemOf(picture.svg, 1).child("text").attribute("font-family").value(), StartsWith("F1, Arial"));
    EXPECT_THAT(itemOf(picture.svg, 120).child("text").attribute("font-family").value(), StartsWith("Arial"));
    EXPECT_THAT(picture.drawn.warnings, ElementsAre(StartsWith("there are too many fonts")));
}

// A few views of an element with long lists must not make a picture of millions of lines.
TEST(Limits, ListsOfAllViewsShareTheirRoom)
{
    const struct {
        const char* view;
        const char* element;
        const char* item;
    } rows[] = {
        {"ClassView \"Class\"", "Class \"E\" class_attributes", "ClassAttribute"},
        {"ProcessorView", "Processor \"E\" processes", "Process"},
        {"StateView \"Normal\"", "State \"E\" actions", "action"},
        {"ClassView \"ParameterizedClass\"", "Parameterized_Class \"E\" parameters", "Parameter"},
    };
    for (const auto& row : rows) {
        std::string list;
        for (std::size_t i = 0; i < 3000; ++i)
            list.append("(object ").append(row.item).append(numbered(" \"m", i, "\")"));
        std::string items;
        for (std::size_t i = 1; i <= 30; ++i)
            items.append("(object ")
                .append(row.view)
                .append(numbered(" \"E\" @", i, " IncludeAttribute TRUE location (100, 100) quidu \"3ABD00000001\")"));
        const Parsed picture(items, std::string("(object ").append(row.element).append(" (list l " + list + ")") +
                                        " quid \"3ABD00000001\")");
        const std::vector<std::string> first = textsOf(itemOf(picture.svg, 1));
        const std::vector<std::string> last = textsOf(itemOf(picture.svg, 30));
        EXPECT_THAT(first, SizeIs(last.size() + 1980)) << row.view;
        EXPECT_LT(last.size(), 25U) << row.view; // 20 and the name
        ASSERT_FALSE(last.empty()) << row.view;
        EXPECT_EQ(first.back(), "\u2026") << row.view;
        EXPECT_EQ(last.back(), "\u2026") << row.view;
    }
}

TEST(Limits, PicturesHoldSoMuch)
{
    const struct {
        const char* what;
        std::string item;
        bool isCut;
    } rows[] = {
        {"little", "(object ClassView \"Class\" \"A\" @1 location (100, 100))", false},
        {"a large box", "(object ClassView \"Class\" \"A\" @1 location (100, 100) width 9000 height 9000)", true},
        {"long text", "(object ClassView \"Class\" \"" + std::string(3000, 'x') + "\" @1 location (100, 100))", true},
        {"a long line",
         "(object AnchorView @1 vertices (list P (0, 0) (99000, 0) (0, 0) (99000, 9) (0, 0) (99000, 0)"
         "(0, 0) (99000, 9) (0, 0) (99000, 0) (0, 0) (99000, 9) (0, 0) (99000, 0)))",
         true},
    };
    for (const auto& row : rows) {
        const Parsed picture(row.item + "(object ClassView \"Class\" \"Z\" @2 location (500, 500) width 1 height 1)",
                             "", 100);
        EXPECT_EQ(picture.drawn.warnings.empty(), !row.isCut) << row.what;
        EXPECT_TRUE(picture.isWellFormed) << row.what;
    }
}

} // namespace
