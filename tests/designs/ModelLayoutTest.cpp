#include "designs/convert/ModelLayout.h"

#include "kiv/KivModelFile.h"

#include <gmock/gmock.h>
#include <simdjson.h>
#include <sstream>

namespace {

// A model of the classes a, b and c with one diagram of what `shown` lists, written again with places.
struct Placed {
    Placed(const std::string& classes, const std::string& relations, const std::string& shown,
           const std::string& childPackages = "")
    {
        const std::string text = R"({"format": "kiv-model", "version": 1, "childPackages": [{"name": "Logical View",
"childPackages": [)" + childPackages +
                                 R"(], "modelElements": [)" + classes + relations +
                                 R"(], "diagrams": [{"id": "d", "name": "d", "elements": [)" + shown + "]}]}]}";
        const auto model = design::placeBoxes(parseModel(text, "test.model.json").model, report);
        std::ostringstream stream;
        writeModelFile(*model, stream, [](const KivObject& object) { return std::string(object.getName().view()); });
        written = std::move(stream).str();
    }

    // The value at a JSON pointer below the package's elements, without blanks; "none" where there is none.
    [[nodiscard]] std::string at(const std::string& pointer) const
    {
        simdjson::dom::parser parser;
        simdjson::dom::element value;
        if (parser.parse(written).at_pointer("/childPackages/0/modelElements/" + pointer).get(value) !=
            simdjson::SUCCESS)
            return "none";
        return simdjson::minify(value);
    }

    [[nodiscard]] double number(int element, const std::string& key) const
    {
        const std::string value = at(std::to_string(element) + "/projections/0/" + key);
        return value == "none" ? 0 : std::stod(value);
    }

    [[nodiscard]] bool areApart(int a, int b) const
    {
        const auto clear = [&](const char* place, const char* size) {
            return std::abs(number(a, place) - number(b, place)) * 2 >= number(a, size) + number(b, size);
        };
        return clear("x", "width") || clear("y", "height");
    }

    design::Report report;
    std::string written;
};

std::string classOf(const std::string& id, const std::string& projection = "")
{
    return R"({"kind": "class", "id": ")" + id + R"(", "name": ")" + id + R"(", "projections": [)" + projection +
           "]},\n";
}

std::string placeOn(int x, int y, const std::string& size = "")
{
    return R"({"diagram": "d", "x": )" + std::to_string(x) + R"(, "y": )" + std::to_string(y) + size + "}";
}

constexpr const char* subtypeOfA = R"({"kind": "generalization", "id": "b is a", "subtypes": ["b"],
"supertypes": ["a"]})";
constexpr const char* all = R"("a", "b", "c", "b is a")";

std::string threeClasses()
{
    return classOf("a") + classOf("b") + classOf("c");
}

TEST(ModelLayout, PlacesWhatHasNoPlace)
{
    const Placed placed(threeClasses(), subtypeOfA, all);
    for (int i = 0; i < 3; ++i) {
        EXPECT_GT(placed.number(i, "width"), 200) << i;
        EXPECT_GT(placed.number(i, "height"), 50) << i;
        EXPECT_GE(placed.number(i, "x") * 2, placed.number(i, "width")) << i;
        EXPECT_TRUE(placed.areApart(i, (i + 1) % 3)) << i;
    }
    // The supertype stands above, and the line has a way from the one to the other.
    EXPECT_LT(placed.number(0, "y"), placed.number(1, "y"));
    const double bottom = placed.number(0, "y") + placed.number(0, "height") / 2;
    EXPECT_NEAR(std::stod(placed.at("3/projections/0/vertices/1/1")), bottom, 1);
    EXPECT_EQ(placed.at("3/projections/0/diagram"), "\"d\"");
}

TEST(ModelLayout, LeavesWhatIsPlaced)
{
    const std::string size = R"(, "width": 400, "height": 200)";
    const Placed placed(classOf("a", placeOn(900, 700, size)) + classOf("b", placeOn(2000, 700)) + classOf("c"),
                        subtypeOfA, all);
    EXPECT_EQ(placed.at("0/projections"), R"([{"diagram":"d","x":900,"y":700,"width":400,"height":200}])");
    // A size comes about the place that is given.
    EXPECT_EQ(placed.number(1, "x"), 2000);
    EXPECT_EQ(placed.number(1, "y"), 700);
    EXPECT_GT(placed.number(1, "width"), 200);
    EXPECT_GT(placed.number(1, "height"), 50);
    EXPECT_EQ(placed.at("1/projections/1"), "none");
    // What has no place stands below, and lines between boxes that were placed by hand go straight.
    EXPECT_GT(placed.number(2, "y") - placed.number(2, "height") / 2, 800);
    EXPECT_EQ(placed.at("3/projections"), "none");
}

// `c` comes to stand below the two, and `b` in the way from it to `a`.
TEST(ModelLayout, LeadsLinesOfNewBoxesAroundOthers)
{
    const std::string size = R"(, "width": 400, "height": 200)";
    const std::string classes = classOf("a", placeOn(300, 200, size)) + classOf("b", placeOn(300, 700, size));
    const struct {
        const char* relation;
        const char* points; ///< of the line, when it goes around
        bool isStraight;
    } rows[] = {
        {R"({"kind": "generalization", "id": "r", "subtypes": ["c"], "supertypes": ["a"]})", "3/projections/0/vertices",
         false},
        {R"({"kind": "association", "id": "r", "roles": [{"participant": "a"}, {"participant": "c"}]})",
         "3/roles/1/projections/0/vertices", false},
        {R"({"kind": "dependency", "id": "r", "client": "c", "supplier": "b"})", "3/projections/0/vertices", true},
        {R"({"kind": "dependency", "id": "r", "client": "a", "supplier": "b"})", "3/projections/0/vertices", true},
    };
    for (const auto& row : rows) {
        const Placed placed(classes + classOf("c"), row.relation, R"("a", "b", "c", "r")");
        EXPECT_EQ(placed.at("0/projections"), R"([{"diagram":"d","x":300,"y":200,"width":400,"height":200}])");
        EXPECT_TRUE(placed.areApart(1, 2));
        EXPECT_EQ(placed.at(row.points) == "none", row.isStraight) << row.relation << placed.written;
        for (int i = 0; i < 4 && !row.isStraight; ++i) {
            const std::string point = placed.at(std::string(row.points).append("/").append(std::to_string(i)));
            if (point == "none")
                break;
            const double x = std::stod(point.substr(1));
            const double y = std::stod(point.substr(point.find(',') + 1));
            EXPECT_FALSE(x > 100 && x < 500 && y > 600 && y < 800) << "a bend in b: " << point;
        }
    }
}

TEST(ModelLayout, ChangesNothingThatIsWhole)
{
    const std::string size = R"(, "width": 400, "height": 200)";
    const Placed placed(classOf("a", placeOn(300, 200, size)) + classOf("b", placeOn(300, 700, size)) +
                            R"({"kind": "class", "id": "c", "name": "c", "modelLevel": 2},)",
                        subtypeOfA, all);
    EXPECT_EQ(placed.at("1/projections"), R"([{"diagram":"d","x":300,"y":700,"width":400,"height":200}])");
    EXPECT_EQ(placed.at("2/projections"), "none") << "nothing shows what is hidden";
    EXPECT_EQ(placed.at("3/projections"), "none");
}

TEST(ModelLayout, LeadsLinesOfAllKinds)
{
    const struct {
        const char* relation;
        const char* points; ///< where the line has its way
    } rows[] = {
        {R"({"kind": "dependency", "id": "r", "client": "a", "supplier": "b"})", "3/projections/0/vertices/0"},
        {R"({"kind": "realization", "id": "r", "client": "a", "supplier": "b"})", "3/projections/0/vertices/0"},
        {R"({"kind": "dependency", "id": "r", "client": "a", "supplier": "a"})", "3/projections/0/vertices/4"},
        {R"({"kind": "association", "id": "r", "roles": [{"participant": "a"}, {"participant": "b"}]})",
         "3/roles/1/projections/0/vertices/1"},
    };
    for (const auto& row : rows) {
        const Placed placed(threeClasses(), row.relation, R"("a", "b", "c", "r")");
        EXPECT_EQ(placed.at(row.points).front(), '[') << row.relation;
    }
    // Nothing joins these two; there is no line to lead.
    const Placed open(threeClasses(), R"({"kind": "dependency", "id": "r", "client": "a"})", R"("a", "b", "c", "r")");
    EXPECT_EQ(open.at("3/projections"), "none");
    EXPECT_GT(open.number(0, "width"), 0);
}

// A Rose file shows the packages within the diagram's package at the top, to the right of those of the model.
TEST(ModelLayout, KeepsClearOfTheSymbolsOfPackages)
{
    const Placed bare(threeClasses(), subtypeOfA, all);
    const Placed below(threeClasses(), subtypeOfA, all, R"({"name": "inner"})");
    EXPECT_GT(below.number(0, "y") - below.number(0, "height") / 2, 500);
    EXPECT_LT(bare.number(0, "y") - bare.number(0, "height") / 2, 500);
}

TEST(ModelLayout, TellsOfDiagramsInRows)
{
    constexpr int count = 400;
    std::string classes;
    std::string lines;
    std::string shown;
    for (int i = 0; i < count; ++i) {
        const std::string id = std::to_string(i);
        classes += classOf("c" + id);
        for (const int step : {1, 7})
            lines.append(lines.empty() ? "" : ",\n")
                .append(R"({"kind": "dependency", "id": "d)" + id + "-" + std::to_string(step))
                .append(R"(", "client": "c)" + id + R"(", "supplier": "c)" + std::to_string((i + step) % count) +
                        "\"}");
        shown += "\"c" + id + "\", \"d" + id + "-1\", \"d" + id + "-7\"" + (i + 1 < count ? ", " : "");
    }
    const Placed placed(classes, lines, shown);
    ASSERT_EQ(placed.report.madeEntries().size(), 1U);
    EXPECT_EQ(placed.report.madeEntries()[0].name, "d");
    EXPECT_TRUE(placed.areApart(0, 1));
    EXPECT_GT(placed.number(count - 1, "width"), 0);
}

} // namespace
