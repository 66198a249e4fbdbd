#include "plugin/diagrams/Drawing.h"

#include <climits>

namespace {

TEST(AssociationView, WithoutRoles)
{
    Drawing drawing;
    drawing.draw(drawing.association("", drawing.view));
    EXPECT_EQ(viewWith(10, drawing.written()), petalLines(R"-(
            (object AssociationViewNew "" @10
            location\t\t(0,0)
            line_color \t 3342489
            quidu      \t"3449E600000A"
            roleview_list\t(list RoleViews)))-"));
}

// An unnamed association of one role, `first`, with everything that has a place; the class is 10, the role 11.
class RolePlaces : public testing::Test {
protected:
    RolePlaces()
    {
        first->multiplicity = {1, 1, true};
        first->constraint = "c";
    }

    Drawing drawing;
    KivClass* const order = drawing.drawClass("Order");
    KivAssociation* const places = drawing.draw(drawing.association("", drawing.view));
    KivAssociationRole* const first = drawing.role("first", places, order);
};

TEST_F(RolePlaces, OfLabels)
{
    struct Row {
        const char* what;
        int point[2];
        int box[4];
        const char* locations; // association, role, role name, cardinality, constraint
        const char* xScale = "100";
        const char* yScale = "100";
    };
    const Row rows[] = {
        {"level", {300, 100}, {100, 100, 80, 40}, "(300,100) (200,0) (160,0) (20,90) (20,120)"},
        {"straight below", {100, 300}, {100, 100, 80, 40}, "(100,300) (0,200) (-80,40) (0,130) (0,160)"},
        {"straight above", {100, -100}, {100, 100, 80, 40}, "(100,-100) (0,200) (-80,40) (0,130) (0,160)"},
        {"steep right", {400, 300}, {100, 100, 80, 40}, "(400,300) (300,200) (210,40) (210,130) (210,160)"},
        {"steep right above", {400, -100}, {100, 100, 80, 40}, "(400,-100) (300,200) (210,40) (210,130) (210,160)"},
        {"steep left", {-200, 300}, {100, 100, 80, 40}, "(-200,300) (300,200) (-80,40) (0,130) (0,160)"},
        {"flat below", {300, 150}, {100, 100, 80, 40}, "(300,150) (200,50) (160,170) (20,260) (20,290)"},
        {"flat above", {300, 50}, {100, 100, 80, 40}, "(300,50) (200,50) (160,0) (20,90) (20,120)"},
        {"on the diagonal", {300, 200}, {100, 100, 80, 40}, "(300,200) (200,100) (160,170) (20,260) (20,290)"},
        {"past the diagonal", {300, 201}, {100, 100, 80, 40}, "(300,201) (200,101) (210,40) (210,130) (210,160)"},
        {"in the centre", {100, 100}, {100, 100, 80, 40}, "(100,100) (0,0) (160,0) (20,90) (20,120)"},
        {"no height", {300, 101}, {100, 100, 80, 0}, "(300,101) (200,1) (210,40) (210,130) (210,160)"},
        {"no height, level", {300, 100}, {100, 100, 80, 0}, "(300,100) (200,0) (160,40) (20,130) (20,160)"},
        {"no width, straight below", {100, 300}, {100, 100, 0, 40}, "(100,300) (0,200) (160,170) (20,260) (20,290)"},
        {"no size", {400, 300}, {100, 100, 0, 0}, "(400,300) (300,200) (160,130) (20,220) (20,250)"},
        {"negative height", {300, 100}, {100, 100, 80, -40}, "(300,100) (200,0) (210,40) (210,130) (210,160)"},
        {"negative width, in the centre", {100, 100}, {100, 100, -80, 40}, "(100,100) (0,0) (160,0) (20,90) (20,120)"},
        {"no width, negative height", {300, 100}, {100, 100, 0, -40}, "(300,100) (200,0) (130,40) (130,130) (130,160)"},
        {"scaled", {300, 100}, {100, 100, 80, 40}, "(150,200) (100,0) (110,60) (-30,150) (-30,180)", "50", "200"},
        {"flat once scaled",
         {400, 300},
         {100, 100, 80, 40},
         "(400,30) (300,20) (160,44) (20,134) (20,164)",
         "100",
         "10"},
        {"scaled away", {400, 300}, {100, 100, 80, 40}, "(0,0) (0,0) (60,-60) (-80,30) (-80,60)", "0", "0"},
        {"differences past the int range",
         {INT_MAX, INT_MIN},
         {INT_MIN, INT_MAX, INT_MAX, 1},
         "(2147483647,-2147483648) (2147483647,2147483647) (29,2147483587) (29,2147483647) (29,2147483647)"},
        {"an edge past the int range, scaled back",
         {INT_MIN, 100},
         {INT_MIN, 0, INT_MAX, 0},
         "(-536870912,100) (0,100) (-1073741923,-60) (-1073741843,30) (-1073741843,60)",
         "25",
         "100"},
    };
    for (const Row& row : rows) {
        order->projections.removeAll();
        places->projections.removeAll();
        drawing.projection(order, drawing.main, row.box[0], row.box[1], row.box[2], row.box[3]);
        drawing.projection(places, drawing.main, row.point[0], row.point[1], 0, 0);
        const std::string text = drawing.written({{BP_SHOW_CONSTRAINTS_IN_DIAGRAMS, "True"},
                                                  {BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM, row.xScale},
                                                  {BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM, row.yScale}});
        EXPECT_EQ(entries("location", viewWith(15, text)), row.locations) << row.what;
    }
}

TEST_F(RolePlaces, OfLabelsGoByLengthsInBytes)
{
    drawing.projection(order, drawing.main, 0, 0, 80, 40);
    drawing.projection(places, drawing.main, -1, 300, 0, 0);
    first->setName("\"\u00e9\"");
    first->multiplicity = {0, -1, true};
    EXPECT_EQ(entries("location", viewWith(15, drawing.written())), "(-1,300) (1,300) (-160,-60) (-160,30)");
}

TEST_F(RolePlaces, OfTheRoleItself)
{
    struct Row {
        const char* what;
        bool hasBox;
        const char* vertices; // null: a plain projection
        int place[2];
        const char* locations; // association, role, role name
        const char* line;      // style and ends
        const char* scale = "100";
        const char* useGeometry = "True";
    };
    const char* const upright = "(10,20)\r\n(10,80)";
    const Row rows[] = {
        {"its own", true, "", {7, 9}, "(300,100) (7,9) (160,0)", "0"},
        {"its own, to the left", true, "", {-7, 0}, "(300,100) (-7,0) (160,0)", "0"},
        {"its own, below", true, "", {0, 9}, "(300,100) (0,9) (160,0)", "0"},
        {"(0,0) counts as none, but has its line",
         true,
         upright,
         {0, 0},
         "(300,100) (200,0) (160,0)",
         "3 (10,20) (10,80)"},
        {"slanted", true, "(0,0)\r\n(50,50)", {7, 9}, "(300,100) (7,9) (160,0)", "0"},
        {"no points in the text", true, "?", {7, 9}, "(300,100) (7,9) (160,0)", "3 (0,0) (0,0)"},
        {"(0,0) once scaled", true, upright, {1, -1}, "(150,50) (100,0) (110,-30)", "3 (5,10) (5,40)", "50"},
        {"a plain projection", true, nullptr, {7, 9}, "(300,100) (7,9) (160,0)", "0"},
        {"no box to go by", false, upright, {7, 9}, "(300,100) (0,0) (0,0)", "0"},
        {"no geometry wanted", true, upright, {7, 9}, "(0,0) (0,0) (0,0)", "0", "100", "False"},
    };
    drawing.projection(places, drawing.main, 300, 100, 0, 0);
    for (const Row& row : rows) {
        order->projections.removeAll();
        first->projections.removeAll();
        if (row.hasBox)
            drawing.projection(order, drawing.main, 100, 100, 80, 40);
        KivProjection* const projection = row.vertices ? drawing.lineProjection(first, drawing.main, row.vertices)
                                                       : drawing.projection(first, drawing.main, 0, 0, 0, 0);
        projection->x = row.place[0];
        projection->y = row.place[1];
        first->multiplicity.isPresent = false;
        drawing.projection(first, drawing.main, 1000, 1000, 0, 0);
        const std::string view =
            viewWith(15, drawing.written({{BP_USE_GRAPHICAL_INFORMATION, row.useGeometry},
                                          {BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM, row.scale},
                                          {BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM, row.scale}}));
        EXPECT_EQ(entries("location", view), row.locations) << row.what;
        std::string line = entries("line_style", view);
        for (const char* const keyword : {"origin_attachment", "terminal_attachment"})
            if (const std::string end = entries(keyword, view); !end.empty())
                line.append(" ").append(end);
        EXPECT_EQ(line, row.line) << row.what;
    }
}

// Width and text of a label, or nothing.
std::string labelWith(long number, std::string_view text)
{
    const std::string label = viewWith(number, text);
    const std::size_t begin = label.find("\tmax_width");
    return begin == std::string::npos
               ? ""
               : entries("max_width", label) + " " + entries("label", std::string_view(label).substr(begin));
}

TEST_F(RolePlaces, CardinalityLabels)
{
    struct Row {
        KivMultiplicity multiplicity;
        const char* label;
    };
    const Row rows[] = {
        {{0, 0, false}, ""},
        {{5, 5, false}, ""},
        {{0, 0, true}, ""},
        {{0, 1, true}, "120 \"0..1\""},
        {{0, -1, true}, "120 \"0..n\""},
        {{-1, -1, true}, "60 \"n\""},
        {{1, 1, true}, "60 \"1\""},
        {{10, 10, true}, "80 \"10\""},
        {{-1, 5, true}, "120 \"n..5\""},
    };
    for (const Row& row : rows) {
        first->multiplicity = row.multiplicity;
        const std::string text = drawing.written({{BP_SHOW_CONSTRAINTS_IN_DIAGRAMS, "True"}});
        const auto [lower, upper, isPresent] = row.multiplicity;
        EXPECT_EQ(labelWith(13, text), row.label) << lower << " " << upper << " " << isPresent;
        EXPECT_EQ(labelWith(14, text), "100 \"{c}\"") << "the next label keeps its number";
    }
}

TEST_F(RolePlaces, ConstraintLabels)
{
    struct Row {
        const char* isShown;
        const char* association;
        const char* role;
        const char* associationLabel;
        const char* roleLabel;
    };
    const Row rows[] = {
        {"False", "a", "r", "", ""},
        {"True", "", "", "", ""},
        {"True", "a", "", "100 \"{a}\"", ""},
        {"True", "", "a\\", "", "120 \"{a\\\\}\""},
        {"True", "a\nb", "\"", "140 \n|{a\n|b}\n", "100 \n|{\"}\n"},
    };
    for (const Row& row : rows) {
        places->constraint = row.association;
        first->constraint = row.role;
        const std::string text = drawing.written({{BP_SHOW_CONSTRAINTS_IN_DIAGRAMS, row.isShown}});
        EXPECT_EQ(labelWith(18, text), row.associationLabel) << row.association;
        EXPECT_EQ(labelWith(14, text), row.roleLabel) << row.role;
    }
    // Beside name and cardinality, at the other end of the line.
    const std::string text = drawing.written({{BP_SHOW_CONSTRAINTS_IN_DIAGRAMS, "True"}});
    const auto shapeOf = [&](long number) {
        std::string shape;
        for (const char* const keyword : {"location", "anchor", "pctDist", "height", "orientation"})
            shape.append(entries(keyword, viewWith(number, text))).append(" ");
        return shape;
    };
    EXPECT_EQ(shapeOf(18), "(12,120) 3 0.929314 25 1 ");
    EXPECT_EQ(shapeOf(14), "(0,0) 3 0.929314 25 0 ");
}

TEST(AssociationView, LevelsAndMissingParts)
{
    struct Row {
        const char* what;
        int levels[4]; // of the association, of the first, the second and the association class
        const char* roles;
    };
    const char* const drawn = "RoleView \"first\" @13 RoleView \"second\" @21";
    const Row rows[] = {
        {"shown", {0, 0, 0, 0}, drawn},
        {"other levels", {1, 3, -2, 0}, drawn},
        {"hidden", {2, 0, 0, 0}, ""},
        {"the first class hidden", {0, 2, 0, 0}, ""},
        {"the last class hidden", {0, 0, 2, 0}, ""},
        {"the association class hidden", {0, 0, 0, 2}, drawn},
    };
    for (const Row& row : rows) {
        Drawing drawing;
        KivClass* const classes[] = {drawing.addClass("Not drawn", drawing.view), drawing.addClass("B", drawing.view),
                                     drawing.addClass("C", drawing.view)};        // 10 to 12
        auto* const places = drawing.draw(drawing.association("", drawing.view)); // 25
        drawing.note("n", places);
        drawing.role("first", places, classes[0]);        // 13
        drawing.role("without a class", places, nullptr); // 17
        drawing.role("second", places, classes[1]);       // 21
        places->roles.add(nullptr);
        places->associationClass = classes[2];
        places->modelLevel = row.levels[0];
        for (int i = 0; i < 3; ++i)
            classes[i]->modelLevel = row.levels[i + 1];
        const std::string text = objectWith("ClassDiagram", drawing.written());
        const std::string roles = objectWith("roleview_list", text);
        const bool isDrawn = *row.roles != '\0';
        EXPECT_EQ(entries("(object", roles), row.roles) << row.what;
        EXPECT_EQ(entries("supplier", roles), isDrawn ? "@10 @11" : "") << row.what;
        EXPECT_EQ(entries("supplier", viewWith(29, text)), isDrawn ? "@12" : "") << row.what;
        EXPECT_EQ(text.find("(object NoteView") != std::string::npos, isDrawn) << row.what;
    }
}

} // namespace
