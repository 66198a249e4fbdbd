#include "designs/Importing.h"
#include "designs/SmallDesigns.h"

#include "designs/layout/Crossings.h"
#include "designs/layout/Scaling.h"
#include "designs/layout/TextSize.h"
#include "designs/model/Catalogue.h"

#include <functional>
#include <gmock/gmock.h>

namespace {

using design::Box;
using design::Classifier;
using design::Design;
using design::Diagram;
using design::Point;
using design::Rectangle;
using design::Visibility;
using testing::DoubleNear;
using testing::ElementsAre;

// A class of a name, three attributes and two operations; one of each is private.
Classifier order()
{
    Classifier classifier = classNamed("Order");
    classifier.attributes.resize(3);
    for (design::Attribute& attribute : classifier.attributes) {
        attribute.name = "number";
        attribute.visibility = Visibility::Public;
    }
    classifier.attributes[0].visibility = Visibility::Private;
    classifier.operations.resize(2);
    classifier.operations[1].visibility = Visibility::Private;
    return classifier;
}

design::HiddenFeatures hiding(std::initializer_list<Visibility> attributes,
                              std::initializer_list<Visibility> operations)
{
    design::HiddenFeatures hidden;
    for (const Visibility each : attributes)
        hidden.attributes[static_cast<std::size_t>(each)] = true;
    for (const Visibility each : operations)
        hidden.operations[static_cast<std::size_t>(each)] = true;
    return hidden;
}

const design::Package empty;
const design::Catalogue nothing(empty);

// Of 10 points a line takes 16 pixels.
TEST(Scaling, CountsTheLinesThatABoxShows)
{
    using enum Visibility;
    const struct {
        const char* what;
        std::function<void(Classifier&, Box&)> change;
        double lines; ///< more or less than all of the class
    } rows[] = {
        {"all", [](auto& /*c*/, auto& /*b*/) {}, 0},
        {"a stereotype", [](auto& c, auto& /*b*/) { c.stereotype = "entity"; }, 1},
        {"a kind that Rose has a stereotype for",
         [](auto& c, auto& /*b*/) { c.kind = design::ClassifierKind::Enumeration; }, 1},
        {"literals", [](auto& c, auto& /*b*/) { c.literals.resize(4); }, 4},
        {"no private attributes", [](auto& /*c*/, auto& b) { b.hidden = hiding({Private}, {}); }, -1},
        {"no public attributes", [](auto& /*c*/, auto& b) { b.hidden = hiding({Public}, {}); }, -2},
        {"no literals where public attributes are hidden",
         [](auto& c, auto& b) {
             c.literals.resize(4);
             b.hidden = hiding({Public}, {});
         },
         -2},
        {"no public operations", [](auto& /*c*/, auto& b) { b.hidden = hiding({}, {Public}); }, -1},
        {"no operations, and no room between them and attributes",
         [](auto& /*c*/, auto& b) {
             b.hidden = hiding({}, {Public, Private});
         },
         -3},
    };
    const double whole = neededSize(order(), {"", std::nullopt, {}}, nothing).height;
    for (const auto& row : rows) {
        Classifier classifier = order();
        Box box = {"", std::nullopt, {}};
        row.change(classifier, box);
        EXPECT_NEAR(neededSize(classifier, box, nothing).height, whole + row.lines * 16, 1e-6) << row.what;
    }
}

TEST(Scaling, MeasuresTheWidestLineThatABoxShows)
{
    Classifier classifier = classNamed("iiii");
    Box box = {"", std::nullopt, {}};
    const auto width = [&] { return neededSize(classifier, box, nothing).width; };
    const double narrow = width();
    classifier.name = "WWWW"; // as wide as high, less 6 %
    EXPECT_NEAR(width() - narrow, 4 * (0.944 - 0.222) * 13.1, 2);
    classifier.name = "\xE4\xBD\xA0\xE4\xBD\xA0"; // two ideographs, each as wide as high
    EXPECT_NEAR(width() - narrow, 2 * 13.1 - 4 * 0.222 * 13.1, 2);
    classifier.attributes.resize(1);
    classifier.attributes[0].name = "number";
    const double untyped = width();
    classifier.attributes[0].type.name = "Money";
    classifier.attributes[0].initialValue = "0";
    const double typed = width();
    EXPECT_GT(typed, untyped + 40);
    classifier.attributes[0].stereotype = "column";
    EXPECT_GT(width(), typed + 40);
    box.hidden = hiding({Visibility::Private}, {});
    EXPECT_LT(width(), untyped);
    box.hidden = {};
    const design::Size usual = neededSize(classifier, box, nothing);
    box.appearance.fontSize = 20;
    EXPECT_GT(neededSize(classifier, box, nothing).width, usual.width * 1.6);
    EXPECT_GT(neededSize(classifier, box, nothing).height, usual.height * 1.6);
}

// A type counts by its name, also where the design has its identifier alone.
TEST(Scaling, MeasuresNamesOfTypes)
{
    const Design design = designOf({classNamed("a class with a long name")});
    const design::Catalogue catalogue(design.root);
    Classifier classifier = order();
    const Box box = {"", std::nullopt, {}};
    const double untyped = neededSize(classifier, box, catalogue).width;
    classifier.attributes[0].type.name = "a class with a long name";
    const double named = neededSize(classifier, box, catalogue).width;
    EXPECT_GT(named, untyped + 100);
    classifier.attributes[0].type = {"a class with a long name", ""};
    EXPECT_EQ(neededSize(classifier, box, catalogue).width, named);
    classifier.attributes[0].type = {"elsewhere", ""};
    EXPECT_EQ(neededSize(classifier, box, catalogue).width, untyped);
}

// A diagram of boxes that are so many times too small for their text, in width or in height.
struct TooSmall {
    double width;
    double height;
};

double factorFor(const std::vector<TooSmall>& boxes)
{
    const Design design = designOf({order()});
    const design::Size needed = neededSize(design.root.packages[0].classifiers[0], {"", std::nullopt, {}}, nothing);
    Diagram diagram;
    for (const TooSmall& each : boxes) {
        const Rectangle bounds = {0, 0, each.width > 0 ? needed.width / each.width : 0,
                                  each.height > 0 ? needed.height / each.height : 0};
        diagram.boxes.push_back({"Order", bounds, {}});
    }
    diagram.boxes.push_back({"Order", std::nullopt, {}});
    diagram.boxes.push_back({"nothing", Rectangle{0, 0, 1, 1}, {}});
    return factorForText(diagram, design::Catalogue(design.root));
}

TEST(Scaling, IsThatOfNineBoxesOfTen)
{
    const TooSmall fits = {0.8, 0.9};
    const struct {
        const char* what;
        std::vector<TooSmall> boxes;
        double factor;
    } rows[] = {
        {"no box", {}, 1},
        {"all are large enough", {fits, fits}, 1},
        {"too narrow", {{1.3, 1}}, 1.3},
        {"too low", {{1.3, 1.6}}, 1.6},
        {"one of ten does not count", {fits, fits, fits, fits, fits, fits, fits, fits, {1.2, 1}, {1.9, 1}}, 1.2},
        {"one of nine does", {fits, fits, fits, fits, fits, fits, fits, {1.2, 1}, {1.9, 1}}, 1.9},
        {"never more than twice", {{3, 3}}, 2},
        {"of a box without a height the width counts", {{1.4, 0}}, 1.4},
        {"a box without a size does not count", {{1.4, 1}, {0, 0}}, 1.4},
    };
    for (const auto& row : rows)
        EXPECT_NEAR(factorFor(row.boxes), row.factor, 1e-9) << row.what;
}

TEST(Scaling, TakesAllThatIsDrawn)
{
    Diagram diagram = diagramOf({"a", "b"});
    diagram.boxes[0].bounds = Rectangle{10, 20, 30, 40};
    design::Line line = {"a has b", {{1, 2}}, true, {}, {}, {}};
    line.middle = Point{3, 4};
    line.parts = {{Point{5, 6}, {{7, 8}}}};
    diagram.lines = {line};
    design::place(diagram, 2, {100, 200});
    const auto isPoint = [](double x, double y) {
        return testing::AllOf(testing::Field(&Point::x, x), testing::Field(&Point::y, y));
    };
    const Rectangle& box = *diagram.boxes[0].bounds;
    EXPECT_THAT(std::vector({box.left, box.top, box.width, box.height}), ElementsAre(120, 240, 60, 80));
    EXPECT_FALSE(diagram.boxes[1].bounds);
    EXPECT_THAT(diagram.lines[0].points, ElementsAre(isPoint(102, 204)));
    EXPECT_THAT(*diagram.lines[0].middle, isPoint(106, 208));
    EXPECT_THAT(*diagram.lines[0].parts[0].place, isPoint(110, 212));
    EXPECT_THAT(diagram.lines[0].parts[0].points, ElementsAre(isPoint(114, 216)));
}

// Boxes side by side do not come to overlap, and lines still end at them. The host's own files stay as they are.
TEST(Scaling, IsThatOfTheDiagram)
{
    for (const bool isOrdered : {false, true}) {
        Design design = designOf({classNamed("a class with a long name"), classNamed("b")});
        design.isOrdered = isOrdered;
        design::Package& package = design.root.packages[0];
        package.relationships = {generalization("a class with a long name", "b")};
        package.diagrams = {diagramOf({"a class with a long name", "b"})};
        package.diagrams[0].boxes[0].bounds = Rectangle{0, 0, 96, 64};
        package.diagrams[0].boxes[1].bounds = Rectangle{112, 0, 48, 64};
        package.diagrams[0].lines = {{"a class with a long name is b", {{96, 32}, {112, 32}}, true, {}, {}, {}}};
        const Imported imported = convert(design);
        const auto at = [&](const std::string& pointer) {
            return std::stod(imported.at("/childPackages/0/modelElements/" + pointer));
        };
        const double factor = at("0/projections/0/width") / 300;
        EXPECT_THAT(factor, isOrdered ? DoubleNear(1, 1e-9) : DoubleNear(1.5, 0.02));
        const double left = at("1/projections/0/x") - at("1/projections/0/width") / 2;
        EXPECT_NEAR(at("0/projections/0/height"), 200 * factor, 1);
        EXPECT_NEAR(at("1/projections/0/width"), 150 * factor, 1);
        EXPECT_NEAR(left, 350 * factor, 1);
        EXPECT_NEAR(at("2/projections/0/vertices/0/0"), 300 * factor, 1);
        EXPECT_NEAR(at("2/projections/0/vertices/1/0"), left, 1);
    }
}

// A straight line says no more than the boxes that it joins; the picture may lead it around others.
TEST(Crossings, OpenStraightLinesThroughBoxes)
{
    const struct {
        const char* what;
        std::vector<Point> points;
        bool hasEnds;
        bool isOpened;
    } rows[] = {
        {"through a box", {{100, 50}, {300, 50}}, true, true},
        {"askew through a corner", {{100, 20}, {300, 120}}, true, true},
        {"past it", {{100, 10}, {300, 10}}, true, false},
        {"along its edge", {{100, 30}, {300, 30}}, true, false},
        {"short of it", {{100, 50}, {170, 50}}, true, false},
        {"to it", {{100, 50}, {180, 50}}, true, false},
        {"out of it", {{200, 50}, {300, 50}}, true, false},
        {"with a bend", {{100, 50}, {200, 50}, {300, 50}}, true, false},
        {"bends alone", {{190, 50}, {210, 50}}, false, false},
    };
    for (const auto& row : rows) {
        Diagram diagram = diagramOf({"a", "unplaced"});
        diagram.boxes[0].bounds = Rectangle{180, 30, 40, 40};
        diagram.lines = {{"line", row.points, row.hasEnds, {}, {}, {}}};
        design::openCrossingLines(diagram);
        EXPECT_EQ(diagram.lines[0].points.empty(), row.isOpened) << row.what;
        EXPECT_EQ(diagram.lines[0].hasEnds, row.hasEnds && !row.isOpened) << row.what;
    }
}

} // namespace
