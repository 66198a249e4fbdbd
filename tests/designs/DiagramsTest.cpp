#include "designs/layout/Diagrams.h"
#include "designs/DesignLines.h"
#include "designs/layout/Geometry.h"
#include "designs/model/Catalogue.h"
#include "designs/SmallDesigns.h"

#include <functional>
#include <gmock/gmock.h>

namespace {

using design::Design;
using design::Diagram;
using design::Point;
using design::Rectangle;
using testing::ElementsAreArray;

design::Line lineOf(const std::string& elementId)
{
    return {elementId, {}, true, {}, {}, {}};
}

// Classes a, b and c; a is b, a has c with the class s, and one association of three.
Design joined()
{
    Design design = designOf({classNamed("a"), classNamed("b"), classNamed("c"), classNamed("s")});
    design::Package& package = design.root.packages[0];
    package.id = "p";
    package.classifiers[0].attributes.resize(1);
    package.classifiers[0].attributes[0].id = "attribute";
    package.relationships = {generalization("a", "b")};
    package.associations = {association("a", "c"), association("a", "b")};
    package.associations[0].associationClassId = "s";
    package.associations[1].id = "three";
    package.associations[1].ends.resize(3);
    package.associations[1].ends[2].participant.id = "c";
    design.kinds = {{"uc", "use case"}, {"note", "comment"}, {"link", "note link"}, {"attribute", "property"}};
    return design;
}

TEST(Diagrams, ShowWhatARoseDiagramCan)
{
    const struct {
        const char* what;
        std::vector<std::string> boxes;
        std::vector<std::string> lines;
        std::vector<std::string> shown; ///< and why the others are not
    } rows[] = {
        {"classes, and the line between them", {"a", "b"}, {"a is b"}, {"box a", "box b", "line a is b"}},
        {"a class and a line twice",
         {"a", "b", "a"},
         {"a is b", "a is b"},
         {"box a", "box b", "line a is b", "left box a: a Rose diagram shows a class once",
          "left line Main: a Rose diagram shows a line once"}},
        {"a line without one of its ends",
         {"a"},
         {"a is b"},
         {"box a", "left line Main: what it joins is not in the diagram"}},
        {"the class of an association comes with it",
         {"a", "c"},
         {"a has c"},
         {"box a", "box c", "box s", "line a has c"}},
        {"an association of three, with its symbol",
         {"a", "b", "c", "three"},
         {"three"},
         {"box a", "box b", "box c", "box three", "line three"}},
        {"an association of three, one class of which is not there",
         {"a", "b"},
         {"three"},
         {"box a", "box b", "left line : what it joins is not in the diagram"}},
        {"symbols of packages",
         {"p"},
         {},
         {"left box package: a Rose file shows the packages of a diagram's package at places of its own"}},
        {"what is left, by what the file calls it",
         {"uc", "gone"},
         {"uc", "gone"},
         {"left box Main: what it shows is not taken: use case", "left box Main: what it shows is not taken",
          "left line Main: what it shows is not taken: use case", "left line Main: what it shows is not taken"}},
        {"notes and what joins them",
         {"note"},
         {"link"},
         {"left box Main: notes have no places; they are drawn beside what they hang at, or as texts of the "
          "diagram",
          "left line Main: notes have no places; they are drawn beside what they hang at, or as texts of "
          "the "
          "diagram"}},
        {"a line for an attribute",
         {"a"},
         {"attribute"},
         {"box a", "left line Main: it is taken, and shown with what it belongs to"}},
    };
    for (const auto& row : rows) {
        Design design = joined();
        Diagram diagram = diagramOf(row.boxes);
        diagram.name = "Main";
        std::transform(row.lines.begin(), row.lines.end(), std::back_inserter(diagram.lines), lineOf);
        design.root.packages[0].diagrams = {diagram};
        design::Report report;
        design::settleDiagrams(design.root.packages[0], design::Reach::Classifiers, design.kinds,
                               design::Catalogue(design.root), report);
        std::vector<std::string> lines = DesignLines(std::move(design), report).take();
        std::erase_if(lines, [](const std::string& line) {
            return !line.starts_with("box ") && !line.starts_with("line ") && !line.starts_with("left ");
        });
        EXPECT_THAT(lines, ElementsAreArray(row.shown)) << row.what;
    }
}

// Where a class is drawn twice, the lines of the box that goes do not lead to the other one.
TEST(Diagrams, OpenLinesToBoxesThatAreLeft)
{
    const struct {
        const char* what;
        Point start; ///< at the box of the client
        bool isOpened;
    } rows[] = {
        {"at the first box", {90, 20}, false},
        {"at the second", {510, 20}, true},
        {"nearer to the first", {260, 20}, false},
        {"nearer to the second", {340, 20}, true},
    };
    for (const auto& row : rows) {
        Design design = joined();
        Diagram diagram = diagramOf({"a", "b", "a"});
        diagram.boxes[0].bounds = Rectangle{0, 0, 100, 50};
        diagram.boxes[1].bounds = Rectangle{0, 200, 100, 50};
        diagram.boxes[2].bounds = Rectangle{500, 0, 100, 50};
        diagram.lines = {{"a is b", {row.start, {50, 200}}, true, {}, {}, {}}};
        design.root.packages[0].diagrams = {diagram};
        design::Report report;
        design::settleDiagrams(design.root.packages[0], design::Reach::Classifiers, design.kinds,
                               design::Catalogue(design.root), report);
        const design::Line& line = design.root.packages[0].diagrams[0].lines[0];
        EXPECT_EQ(line.points.empty(), row.isOpened) << row.what;
        EXPECT_EQ(line.hasEnds, !row.isOpened) << row.what;
    }
}

// Overviews hold the classes of their package, and the lines that lie within it.
TEST(Diagrams, AreOverviewsWhereThereAreNone)
{
    Design design = joined();
    design.root.packages.resize(3);
    design.root.packages[1].name = "second";
    design.root.packages[1].classifiers = {classNamed("far")};
    design.root.packages[1].relationships = {generalization("far", "a"), generalization("b", "c")};
    design.root.packages[2].name = "empty";
    ASSERT_FALSE(design::showsAnything(design.root));
    design::Report report;
    design::addOverviews(design.root, design::Catalogue(design.root), report);
    EXPECT_TRUE(design::showsAnything(design.root));
    std::vector<std::string> lines = DesignLines(std::move(design), report).take();
    std::erase_if(lines, [](const std::string& line) {
        return !line.starts_with("box ") && !line.starts_with("line ") && !line.starts_with("diagram ");
    });
    EXPECT_THAT(
        lines, ElementsAreArray({"diagram Overview in package", "box a", "box b", "box c", "box s", "line a has c",
                                 "line three", "line a is b", "line b is c", "diagram Overview in second", "box far"}));
}

TEST(Diagrams, KeepClearOfNegativePlacesAndPackageSymbols)
{
    const struct {
        Rectangle box;
        std::size_t packages;
        Point corner;
    } rows[] = {
        {{10, 20, 50, 50}, 0, {10, 20}},  {{-10, 20, 50, 50}, 0, {16, 20}},  {{10, -20, 50, 50}, 0, {10, 16}},
        {{10, 20, 50, 50}, 1, {10, 192}}, {{10, 500, 50, 50}, 1, {10, 500}}, {{600, 20, 50, 50}, 1, {600, 20}},
    };
    for (const auto& row : rows) {
        Diagram diagram = diagramOf({"a"});
        diagram.boxes[0].bounds = row.box;
        diagram.lines = {{"a", {{610, 600}}, true, {}, {}, {}}};
        design::settleOrigin(diagram, row.packages);
        EXPECT_EQ(diagram.boxes[0].bounds->left, row.corner.x) << row.box.left << " " << row.packages;
        EXPECT_EQ(diagram.boxes[0].bounds->top, row.corner.y) << row.box.top << " " << row.packages;
        // Lines move with the boxes.
        EXPECT_EQ(diagram.lines[0].points[0].x - 610, row.corner.x - row.box.left) << row.box.left;
        EXPECT_EQ(diagram.lines[0].points[0].y - 600, row.corner.y - row.box.top) << row.box.top;
    }
    Diagram lines = diagramOf({});
    lines.lines = {{"a", {{-4, 30}}, true, {}, {}, {}}};
    design::settleOrigin(lines, 0);
    EXPECT_EQ(lines.lines[0].points[0].x, 16);
}

} // namespace
