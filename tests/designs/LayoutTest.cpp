#include "designs/Importing.h"
#include "designs/SmallDesigns.h"

#include "designs/layout/Geometry.h"
#include "designs/layout/Layout.h"
#include "designs/layout/TextSize.h"
#include "designs/model/Catalogue.h"

#include <gmock/gmock.h>
#include <random>

namespace {

using design::Design;
using design::Diagram;
using design::Point;
using design::Rectangle;

std::string numbered(std::size_t i)
{
    return "class " + std::to_string(i);
}

// A diagram of that many classes, with as many generalizations and associations between them.
Design randomDesign(std::size_t count, std::size_t relationships, unsigned seed)
{
    std::vector<design::Classifier> classes;
    std::vector<std::string> names;
    for (std::size_t i = 0; i < count; ++i) {
        names.push_back(numbered(i));
        classes.push_back(classNamed(names.back()));
        classes.back().attributes.resize(i % 7);
    }
    Design design = designOf(classes);
    design::Package& package = design.root.packages[0];
    package.diagrams = {diagramOf(names)};
    std::mt19937 random(seed);
    for (std::size_t i = 0; i < relationships; ++i) {
        const std::size_t a = random() % count;
        const std::size_t b = random() % count;
        if (i % 2 == 0)
            package.associations.push_back(association(numbered(a), numbered(b)));
        else
            package.relationships.push_back(generalization(numbered(std::max(a, b)), numbered(std::min(a, b))));
        package.diagrams[0].lines.push_back(
            {i % 2 == 0 ? package.associations.back().id : package.relationships.back().id, {}, false, {}, {}, {}});
    }
    return design;
}

void expectApart(const Diagram& diagram)
{
    for (std::size_t i = 0; i < diagram.boxes.size(); ++i) {
        ASSERT_TRUE(diagram.boxes[i].bounds) << i;
        for (std::size_t k = 0; k < i; ++k)
            EXPECT_FALSE(overlaps(*diagram.boxes[i].bounds, *diagram.boxes[k].bounds)) << i << " and " << k;
    }
}

// Whether its lines are laid out, too, when it is the only diagram.
bool layOutAlone(Diagram& diagram, const Design& design)
{
    design::LayoutBudget budget;
    return design::layOut(diagram, design::Catalogue(design.root), budget);
}

TEST(Layout, KeepsBoxesApartAndLinesOrthogonal)
{
    for (unsigned seed = 0; seed <= 30; ++seed) {
        const bool isLarge = seed == 30; // and laid out briefly
        Design design = isLarge ? randomDesign(40, 300, seed) : randomDesign(5 + seed, seed * 2, seed);
        Diagram& diagram = design.root.packages[0].diagrams[0];
        EXPECT_TRUE(layOutAlone(diagram, design));
        SCOPED_TRACE(seed);
        expectApart(diagram);
        for (const design::Line& line : diagram.lines) {
            EXPECT_GE(line.points.size(), 2U) << line.elementId;
            for (std::size_t i = 1; i < line.points.size(); ++i)
                EXPECT_TRUE(line.points[i].x == line.points[i - 1].x || line.points[i].y == line.points[i - 1].y)
                    << line.elementId;
        }
    }
}

TEST(Layout, PutsSupertypesAboveTheirSubtypes)
{
    Design design = designOf({classNamed("sub"), classNamed("super"), classNamed("alone")});
    design.root.packages[0].relationships = {generalization("sub", "super")};
    design.root.packages[0].diagrams = {diagramOf({"sub", "super", "alone"})};
    Diagram& diagram = design.root.packages[0].diagrams[0];
    diagram.lines = {{"sub is super", {}, false, {}, {}, {}}};
    EXPECT_TRUE(layOutAlone(diagram, design));
    const Rectangle& sub = *diagram.boxes[0].bounds;
    const Rectangle& super = *diagram.boxes[1].bounds;
    EXPECT_GT(sub.top, super.top + super.height);
    EXPECT_EQ(diagram.lines[0].points.front().y, sub.top);
    EXPECT_EQ(diagram.lines[0].points.back().y, super.top + super.height);
}

TEST(Layout, SetsLargePackagesInRowsAndSaysSo)
{
    const Design design = randomDesign(400, 700, 1);
    Design alone = design;
    Diagram& diagram = alone.root.packages[0].diagrams[0];
    EXPECT_FALSE(layOutAlone(diagram, alone));
    expectApart(diagram);
    EXPECT_THAT(convert(design, true).made(), testing::Contains(testing::StartsWith("layout : there are too many")));
    Design onlyBoxes = randomDesign(3000, 0, 1);
    EXPECT_TRUE(layOutAlone(onlyBoxes.root.packages[0].diagrams[0], onlyBoxes));
}

// What a design may take is counted, not timed: 60 classes with 900 associations between them took more than a minute.
TEST(Layout, TakesLessCareOfMuch)
{
    using enum design::LayoutCare;
    const struct {
        std::size_t boxes;
        std::size_t lines;
        std::size_t times; // before
        design::LayoutCare care;
    } rows[] = {
        {2, 1, 0, full},      {60, 150, 0, full},  {60, 900, 0, brief}, {300, 900, 0, none},
        {200, 540, 0, brief}, {200, 560, 0, none}, {40, 60, 100, full}, {40, 60, 200, brief},
        {40, 60, 400, none},  {2, 1, 2000, full},  {2, 1, 30000, none}, {200, 450, 1, none},
    };
    for (const auto& row : rows) {
        design::LayoutBudget budget;
        for (std::size_t i = 0; i < row.times; ++i)
            static_cast<void>(budget.take(row.boxes, row.lines));
        EXPECT_EQ(budget.take(row.boxes, row.lines), row.care) << row.boxes << ' ' << row.lines << ' ' << row.times;
    }
}

TEST(Layout, LeavesPlacedBoxesWhereTheyAre)
{
    Design design = designOf({classNamed("a"), classNamed("b"), classNamed("c")});
    design.root.packages[0].diagrams = {diagramOf({"a", "b", "c"})};
    Diagram& diagram = design.root.packages[0].diagrams[0];
    diagram.boxes[0].bounds = Rectangle{100, 200, 120, 80};
    diagram.boxes[1].bounds = Rectangle{300, 200, 0, 0};
    EXPECT_TRUE(layOutAlone(diagram, design));
    expectApart(diagram);
    EXPECT_EQ(diagram.boxes[0].bounds->left, 100);
    EXPECT_EQ(diagram.boxes[1].bounds->left, 300);
    EXPECT_GT(diagram.boxes[1].bounds->width, 0);
    EXPECT_GT(diagram.boxes[1].bounds->height, 0);
    EXPECT_GT(diagram.boxes[2].bounds->top, 280);
}

// A box that was only placed covers none, unless it stands in one.
TEST(Layout, SizesPlacedBoxesClearOfOthers)
{
    const struct {
        const char* what;
        Rectangle placed;
        bool isClear;
        bool isWhole; ///< has the size that it has alone
    } rows[] = {
        {"a box to the right", {200, 100, 0, 0}, true, false}, {"a box below", {300, 30, 0, 0}, true, false},
        {"a box to the left", {500, 100, 0, 0}, true, true},   {"a box far away", {900, 900, 0, 0}, true, true},
        {"it stands in one", {310, 110, 0, 0}, false, true},   {"it has a width", {150, 100, 100, 0}, true, true},
    };
    Design design = designOf({classNamed("a"), classNamed("b")});
    const design::Size alone =
        boxSize(design.root.packages[0].classifiers[0], {"a", std::nullopt, {}}, design::Catalogue(design.root));
    for (const auto& row : rows) {
        design.root.packages[0].diagrams = {diagramOf({"a", "b"})};
        Diagram& diagram = design.root.packages[0].diagrams[0];
        diagram.boxes[0].bounds = row.placed;
        diagram.boxes[1].bounds = Rectangle{270, 60, 200, 80};
        EXPECT_TRUE(layOutAlone(diagram, design));
        const Rectangle& box = *diagram.boxes[0].bounds;
        EXPECT_EQ(!overlaps(box, *diagram.boxes[1].bounds), row.isClear) << row.what;
        EXPECT_EQ(box.height == alone.height && (row.placed.width > 0 || box.width == alone.width), row.isWhole)
            << row.what;
        EXPECT_EQ(box.left, row.placed.left) << row.what;
        EXPECT_EQ(box.top, row.placed.top) << row.what;
        EXPECT_EQ(diagram.boxes[1].bounds->width, 200) << row.what;
    }
}

// Boxes that no line joins stand in rows below those that lines join, as wide as high.
TEST(Layout, SetsTheOthersInRows)
{
    std::vector<design::Classifier> classes = {classNamed("sub"), classNamed("super")};
    std::vector<std::string> names = {"sub", "super"};
    for (std::size_t i = 0; i < 40; ++i) {
        names.push_back(numbered(i));
        classes.push_back(classNamed(names.back()));
    }
    Design design = designOf(classes);
    design.root.packages[0].relationships = {generalization("sub", "super")};
    Diagram diagram = diagramOf(names);
    diagram.lines = {{"sub is super", {}, false, {}, {}, {}}};
    design.root.packages[0].diagrams = {diagram};
    Diagram& placed = design.root.packages[0].diagrams[0];
    EXPECT_TRUE(layOutAlone(placed, design));
    expectApart(placed);
    Rectangle rows = *placed.boxes[2].bounds;
    const double joinedBottom = placed.boxes[0].bounds->top + placed.boxes[0].bounds->height;
    for (std::size_t i = 2; i < placed.boxes.size(); ++i) {
        rows = unite(rows, *placed.boxes[i].bounds);
        EXPECT_GT(placed.boxes[i].bounds->top, joinedBottom) << i;
    }
    EXPECT_LT(rows.width, rows.height * 2);
    EXPECT_LT(rows.height, rows.width * 2);
    EXPECT_GT(placed.lines[0].points.front().x, placed.boxes[0].bounds->left);
}

TEST(Geometry, LeadsLinesFromBorderToBorder)
{
    const Rectangle first = {0, 0, 100, 50};
    const Rectangle second = {200, 100, 100, 50};
    const struct {
        const char* what;
        design::Points way;
        bool hasEnds;
        Point start;
        Point end;
    } rows[] = {
        {"whole way", {{100, 20}, {150, 20}, {150, 120}, {200, 120}}, true, {100, 20}, {200, 120}},
        {"ends inside", {{50, 20}, {150, 20}, {150, 120}, {250, 120}}, true, {100, 20}, {200, 120}},
        {"bends only", {{50, 125}}, false, {50, 50}, {200, 125}},
        {"ends short of the boxes", {{110, 20}, {190, 120}}, true, {100, 20}, {200, 120}},
        {"straight to them", {{110, 20}, {150, 20}, {150, 120}, {190, 120}}, true, {100, 20}, {200, 120}},
        {"far beside them", {{150, 80}, {150, 300}}, true, {100, 50}, {200, 150}},
    };
    for (const auto& row : rows) {
        const design::Points way = design::fromBorderToBorder(row.way, row.hasEnds, first, second);
        EXPECT_EQ(way.front().x, row.start.x) << row.what;
        EXPECT_EQ(way.front().y, row.start.y) << row.what;
        EXPECT_EQ(way.back().x, row.end.x) << row.what;
        EXPECT_EQ(way.back().y, row.end.y) << row.what;
    }
}

// What leads straight to a box, or nearly touches it, gets no corner there.
TEST(Geometry, ExtendsLinesThatEndShortOfABox)
{
    const Rectangle box = {0, 0, 100, 50};
    const Rectangle other = {200, 0, 100, 50};
    const struct {
        Point start;
        std::size_t size;
    } rows[] = {{{120, 25}, 2}, {{102, 27}, 2}, {{120, 27}, 3}, {{100, 25}, 2}, {{50, 25}, 2}};
    for (const auto& row : rows)
        EXPECT_EQ(design::fromBorderToBorder({row.start, {200, 25}}, true, box, other).size(), row.size)
            << row.start.x << ',' << row.start.y;
}

TEST(Geometry, SplitsLinesHalfWay)
{
    const struct {
        design::Points way;
        Point middle;
        std::size_t first; ///< points of the way back to the first
        std::size_t last;
    } rows[] = {
        {{{0, 0}, {10, 0}}, {5, 0}, 2, 2},
        {{{0, 0}, {10, 0}, {10, 30}}, {10, 10}, 3, 2},
        {{{0, 0}, {30, 0}, {30, 10}}, {20, 0}, 2, 3},
        {{{5, 5}, {5, 5}}, {5, 5}, 2, 2},
    };
    for (const auto& row : rows) {
        const design::SplitLine split = design::splitInTheMiddle(row.way);
        EXPECT_EQ(split.middle.x, row.middle.x) << (&row - rows);
        EXPECT_EQ(split.middle.y, row.middle.y) << (&row - rows);
        EXPECT_EQ(split.toFirst.size(), row.first) << (&row - rows);
        EXPECT_EQ(split.toLast.size(), row.last) << (&row - rows);
        EXPECT_EQ(split.toFirst.front().x, row.middle.x) << (&row - rows);
        EXPECT_EQ(split.toFirst.back().x, row.way.front().x) << (&row - rows);
        EXPECT_EQ(split.toLast.back().y, row.way.back().y) << (&row - rows);
    }
}

TEST(Geometry, LeadsLoopsAroundTheCornerOfABox)
{
    const Rectangle box = {10, 20, 100, 60};
    const design::Points loop = design::loopAt(box);
    EXPECT_EQ(loop.front().x, box.left + box.width);
    EXPECT_EQ(loop.back().y, box.top + box.height);
    for (std::size_t i = 1; i < loop.size(); ++i)
        EXPECT_TRUE((loop[i].x == loop[i - 1].x) != (loop[i].y == loop[i - 1].y)) << i;
    for (std::size_t i = 1; i + 1 < loop.size(); ++i)
        EXPECT_FALSE(design::contains(box, loop[i])) << i;
}

} // namespace
