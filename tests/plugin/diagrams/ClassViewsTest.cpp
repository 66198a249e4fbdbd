#include "plugin/diagrams/Drawing.h"

#include <climits>

namespace {

TEST(ClassView, WithoutGeometry)
{
    for (const bool hasProjection : {true, false}) {
        Drawing drawing;
        KivClass* const order = drawing.drawClass("Order");
        order->stereotype = "entity";
        if (hasProjection) {
            KivProjection* const projection = drawing.projection(order, drawing.main, 1, 2, 3, 4);
            projection->fontSize = 12;
            projection->lineColor = projection->fillColor = 5;
        }
        const std::string text = drawing.written({{BP_USE_GRAPHICAL_INFORMATION, hasProjection ? "False" : "True"}});
        const std::string view = viewWith(10, text);
        EXPECT_EQ(entries("location", view), "(0,0) (0,0) (0,-45) (0,60)") << hasProjection;
        EXPECT_EQ(entries("nlines", view) + ", " + entries("max_width", view), "1 1 0, 600 240 600") << hasProjection;
        EXPECT_EQ(entries("width", view) + " " + entries("height", view), "600 300") << hasProjection;
        EXPECT_EQ(entries("line_color", view) + ", " + entries("fill_color", view), "3342489, 13434879 13434879")
            << hasProjection;
        EXPECT_EQ(entries("font", view), "") << hasProjection;
    }
}

TEST(ClassView, Geometry)
{
    struct Row {
        const char* what;
        const char* xScale;
        const char* yScale;
        int box[4];
        const char* locations; // view, label, stereotype, compartment
        const char* sizes;     // width and height
        const char* maxWidth;  // of the label
    };
    const Row rows[] = {
        {"as it is", "100", "100", {100, 50, 81, 41}, "(100,50) (69,86) (69,41) (69,146)", "81 41", "80"},
        {"half the width", "50", "100", {101, 50, 81, 41}, "(50,50) (39,86) (39,41) (39,146)", "40 41", "40"},
        {"twice the height", "100", "200", {100, 50, 81, 41}, "(100,100) (69,116) (69,71) (69,176)", "81 82", "80"},
        {"label cut once", "55", "55", {-10, -10, 0, 0}, "(-5,-5) (3,50) (3,5) (3,110)", "0 0", "20"},
        {"below zero", "100", "100", {-100, -50, 81, 41}, "(-100,-50) (-131,-14) (-131,-59) (-131,46)", "81 41", "80"},
        {"negative odd size", "100", "100", {0, 0, -81, -41}, "(0,0) (49,76) (49,31) (49,136)", "-81 -41", "-80"},
        {"scaled away", "0", "0", {100, 50, 81, 41}, "(0,0) (9,56) (9,11) (9,116)", "0 0", "20"},
        {"turned round", "-100", "-100", {100, 50, 81, 41}, "(-100,-50) (-51,26) (-51,-19) (-51,86)", "-81 -41", "-80"},
        {"a width that measures the name", "100", "100", {0, 0, -1, 0}, "(0,0) (9,56) (9,11) (9,116)", "-1 0", "100"},
        {"the same after scaling", "50", "100", {0, 0, -3, 0}, "(0,0) (9,56) (9,11) (9,116)", "-1 0", "100"},
        {"past the least int",
         "100",
         "100",
         {INT_MIN, INT_MIN, INT_MAX, INT_MAX},
         "(-2147483648,-2147483648) (-2147483648,-2147483648) (-2147483648,-2147483648) (-2147483648,-2147483588)",
         "2147483647 2147483647",
         "2147483640"},
        {"past it and scaled back",
         "50",
         "50",
         {INT_MIN, INT_MIN, INT_MAX, INT_MAX},
         "(-1073741824,-1073741824) (-1610612726,-1610612679) (-1610612726,-1610612724) (-1610612726,-1610612619)",
         "1073741823 1073741823",
         "1073741820"},
        {"past the greatest int",
         "100",
         "100",
         {INT_MAX, INT_MAX, INT_MIN, INT_MIN},
         "(2147483647,2147483647) (2147483647,2147483647) (2147483647,2147483602) (2147483647,2147483647)",
         "-2147483648 -2147483648",
         "-2147483640"},
        {"the greatest scale",
         "99999999999999999999",
         "-99999999999999999999",
         {1, 1, 0, 0},
         "(2147483647,-2147483648) (2147483647,-2147483648) (2147483647,-2147483648) (2147483647,-2147483588)",
         "0 0",
         "20"},
    };
    for (const Row& row : rows) {
        Drawing drawing;
        KivClass* const order = drawing.drawClass("Order");
        order->stereotype = "entity";
        drawing.projection(order, drawing.main, row.box[0], row.box[1], row.box[2], row.box[3]);
        const std::string view =
            viewWith(10, drawing.written({{BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM, row.xScale},
                                          {BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM, row.yScale}}));
        EXPECT_EQ(entries("location", view), row.locations) << row.what;
        EXPECT_EQ(entries("width", view) + " " + entries("height", view), row.sizes) << row.what;
        EXPECT_EQ(entries("max_width", view.substr(0, view.find("justify"))), row.maxWidth) << row.what;
    }
}

// What was found out about an object with many projections ends with the export.
TEST(ClassView, SecondExportSeesNewGeometry)
{
    Drawing drawing;
    KivClass* const order = drawing.drawClass("Order");
    for (const int x : {1, 2}) {
        order->projections.removeAll();
        for (int i = 0; i < 20; ++i)
            drawing.projection(order, drawing.main, x, 0, 0, 0);
        const std::string view = viewWith(10, drawing.written());
        EXPECT_EQ(entries("location", view.substr(0, view.find("ItemLabel"))), x == 1 ? "(1,0)" : "(2,0)");
    }
}

TEST(ClassView, FontOnlyWhereItDiffers)
{
    struct Row {
        const char* name;
        int size;
        int color;
        std::vector<const char*> lines;
    };
    const Row rows[] = {
        {"Arial", 10, 0, {}},
        {"Arial", 12, 0, {"size\t12"}},
        {"Arial", -1, 0, {"size\t-1"}},
        {"Arial", 10, 255, {"color\t255"}},
        {"Arial", 12, -1, {"size\t12", "color\t-1"}},
        {"arial", 10, 0, {"face\t\"arial\""}},
        {"Arial ", 10, 0, {"face\t\"Arial \""}},
        {"", 10, 0, {"face\t\"\""}},
        {"Times", 9, 255, {"size\t9", "face\t\"Times\"", "color\t255"}},
    };
    for (const Row& row : rows) {
        Drawing drawing;
        KivProjection* const projection = drawing.projection(drawing.drawClass("Order"), drawing.main, 0, 0, 0, 0);
        projection->fontName = row.name;
        projection->fontSize = row.size;
        projection->fontColor = row.color;
        std::string expected = "\r\n\t\t\t\tlocation\t\t\t(0,0)";
        if (!row.lines.empty())
            expected.append("\r\n\t\t\t\tfont\t\t(object Font");
        for (const char* const line : row.lines)
            expected.append("\r\n\t\t\t\t\t").append(line);
        expected.append(row.lines.empty() ? "\r\n\t\t\t\tlabel" : ")\r\n\t\t\t\tlabel");
        const std::string view = viewWith(10, drawing.written());
        EXPECT_NE(view.find(expected), std::string::npos) << row.name << " " << row.size << " " << row.color << view;
    }
}

TEST(ClassView, KindsAndIcons)
{
    const std::pair<int, const char*> rows[] = {
        {-1, "Class"},
        {0, "Class"},
        {1, "Class"},
        {2, "Parameterized_Class"},
        {3, "Instantiated_Class"},
        {4, "Class_Utility"},
        {5, "Parameterized_Class_Utility"},
        {6, "Instantiated_Class_Utility"},
        {7, "Class"},
        {8, "Metaclass"},
        {9, "Class"},
        {10, "Class"},
        {INT_MAX, "Class"},
    };
    for (const auto& [classType, kind] : rows) {
        Drawing drawing;
        drawing.drawClass("Order")->classType = classType;
        const std::string view = viewWith(10, drawing.written());
        EXPECT_EQ(view.substr(0, view.find(" \"Order\"")),
                  std::string("\r\n\t\t\t(object ClassView \"").append(kind).append("\""))
            << classType;
        EXPECT_EQ(entries("icon", view), classType == 9 ? "\"Interface\"" : "") << classType;
        EXPECT_EQ(entries("icon_style", view), classType == 9 ? "\"Label\"" : "\"Icon\"") << classType;
        EXPECT_EQ(view.find("stereotype"), std::string::npos) << classType;
    }
}

TEST(ClassView, OfAHiddenClassIsNotWritten)
{
    Drawing drawing;
    for (const int level : {0, 1, 2, 3})
        drawing.drawClass(std::to_string(level).c_str())->modelLevel = level;
    EXPECT_EQ(entries("(object", objectWith("diagram_item_list", drawing.written())),
              "ClassView \"Class\" \"0\" @10 ClassView \"Class\" \"1\" @11 ClassView \"Class\" \"3\" @13");
}

} // namespace
