#include "plugin/diagrams/Drawing.h"

#include <climits>

namespace {

// How a class takes part in a generalization.
enum class Part { Drawn, NotDrawn, Hidden, Null };

void addClasses(Drawing& drawing, KivVector<KivClass>& classes, const std::vector<Part>& parts)
{
    for (const Part part : parts) {
        KivClass* const added = part == Part::Null ? nullptr : drawing.addClass("C", drawing.view);
        if (part == Part::Drawn || part == Part::Hidden)
            drawing.draw(added);
        if (part == Part::Hidden)
            added->modelLevel = 2;
        classes.add(added);
    }
}

TEST(InheritView, NumbersCountEveryPair)
{
    using enum Part;
    struct Row {
        const char* what;
        std::vector<Part> supertypes;
        std::vector<Part> subtypes;
        const char* views; // numbers of trees and views
        const char* ends;  // clients and suppliers
        const char* noted; // what a note is attached to
    };
    const Row rows[] = {
        {"one of each", {Drawn}, {Drawn}, "11 ", "@15@14 ", "@11"},
        {"two subtypes", {Drawn}, {Drawn, Drawn}, "tree 10 11 14 ", "@18@17 @19@17 ", "@11"},
        {"one of two", {Drawn}, {NotDrawn, Drawn}, "14 ", "@19@17 ", "@14"},
        {"two of four", {Drawn}, {NotDrawn, Drawn, Hidden, Drawn}, "tree 10 14 20 ", "@25@23 @27@23 ", "@14"},
        {"two supertypes", {Drawn, Drawn}, {Drawn}, "11 15 ", "@20@18 @20@19 ", "@11"},
        {"the second", {Hidden, Drawn}, {Drawn, Drawn}, "tree 17 18 21 ", "@26@25 @27@25 ", "@18"},
        {"nulls", {Null, Drawn}, {Null, Drawn, Null, Drawn}, "tree 23 27 33 ", "@37@36 @38@36 ", "@27"},
        {"no supertype drawn", {NotDrawn, Hidden, Null}, {Drawn, Drawn}, "", "", ""},
        {"no subtype drawn", {Drawn}, {NotDrawn, Hidden, Null}, "", "", ""},
        {"no subtypes", {Drawn}, {}, "", "", ""},
        {"no supertypes", {}, {Drawn}, "", "", ""},
    };
    for (const Row& row : rows) {
        Drawing drawing;
        auto* const is = drawing.draw(drawing.generalization("", drawing.view, {}, {})); // 10
        drawing.note("", is);
        addClasses(drawing, is->supertypes, row.supertypes);
        addClasses(drawing, is->subtypes, row.subtypes);
        const std::string text = drawing.written();
        std::string views;
        std::string ends;
        for (std::size_t at = 0; (at = text.find("(object Inherit", at)) != std::string::npos; ++at) {
            const std::string view = objectAt(text, at);
            const std::size_t number = view.find('@') + 1;
            const bool isTree = view.starts_with("(object InheritTreeView");
            views.append(isTree ? "tree " : "").append(view, number, view.find("\r\n") - number).append(" ");
            if (!isTree)
                ends.append(entries("client", view)).append(entries("supplier", view)).append(" ");
        }
        EXPECT_EQ(views, row.views) << row.what;
        EXPECT_EQ(ends, row.ends) << row.what;
        EXPECT_EQ(entries("supplier", objectWith("(object AttachView", text)), row.noted) << row.what;
        EXPECT_NE(text.find("(object NoteView"), std::string::npos) << row.what;
    }
}

TEST(InheritView, ForkOfATree)
{
    struct Row {
        const char* what;
        std::vector<int> supertype; // x, y and height, or nothing
        std::vector<int> first;     // not drawn
        const char* points;         // of the fork, of its lower end, and of a subtype's two ends
        const char* scale = "100";
        const char* useGeometry = "True";
    };
    const Row rows[] = {
        {"half way", {100, 100, 40}, {0, 300, 0}, "(100,200) (100,120) (8,200) (8,10)"},
        {"half ways are cut", {-100, -100, -41}, {0, -101, 0}, "(-100,-100) (-100,-120) (8,-100) (8,10)"},
        {"scaled", {101, 100, 41}, {0, 301, 0}, "(55,110) (55,66) (4,110) (4,5)", "55"},
        {"halved once scaled", {101, 100, 41}, {0, 301, 0}, "(202,401) (202,240) (16,401) (16,20)", "200"},
        {"without the supertype", {}, {0, 300, 0}, "(0,0) (0,0) (8,0) (8,10)"},
        {"without the first subtype", {100, 100, 40}, {}, "(0,0) (0,0) (8,0) (8,10)"},
        {"past the int range",
         {INT_MAX, INT_MAX, 40},
         {0, INT_MAX, 0},
         "(2147483647,2147483647) (2147483647,2147483647) (8,2147483647) (8,10)"},
        {"past the int range, scaled back",
         {INT_MIN, INT_MIN, INT_MIN},
         {0, INT_MIN, 0},
         "(-536870912,-536870912) (-536870912,-805306368) (2,-536870912) (2,2)",
         "25"},
        {"no geometry wanted", {100, 100, 40}, {0, 300, 0}, "(0,0) (0,0) (0,0) (0,0)", "100", "False"},
    };
    for (const Row& row : rows) {
        Drawing drawing;
        auto* const is = drawing.draw(drawing.generalization("", drawing.view, {}, {}));
        addClasses(drawing, is->supertypes, {Part::Drawn});
        addClasses(drawing, is->subtypes, {Part::Null, Part::NotDrawn, Part::Drawn, Part::Drawn});
        const auto place = [&](KivClass* theClass, const std::vector<int>& box) {
            if (!box.empty())
                drawing.projection(theClass, drawing.main, box[0], box[1], 0, box[2]);
        };
        place(is->supertypes.at(0), row.supertype);
        place(is->subtypes.at(1), row.first);
        place(is->subtypes.at(2), {8, 20, 20});
        const std::string text = drawing.written({{BP_USE_GRAPHICAL_INFORMATION, row.useGeometry},
                                                  {BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM, row.scale},
                                                  {BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM, row.scale}});
        const std::string tree = objectWith("(object InheritTreeView", text);
        const std::string view = objectWith("(object InheritView", text);
        const std::string fork = entries("location", tree);
        EXPECT_NE(tree.find("\r\n\t\t\t\t" + fork + "\r\n"), std::string::npos) << row.what << ": " << tree;
        const std::size_t end = tree.rfind('\t') + 1;
        EXPECT_EQ(fork + " " + tree.substr(end, tree.find(')', end) + 1 - end) + " " +
                      entries("origin_attachment", view) + " " + entries("terminal_attachment", view),
                  row.points)
            << row.what;
    }
}

// Three kinds of view whose lines are written alike; at the supplier the view may end.
TEST(RelationViews, Lines)
{
    struct Row {
        const char* what;
        const char* vertices; // null: a plain projection
        std::vector<const char*> lines;
    };
    const Row rows[] = {
        {"plain projection", nullptr, {}},
        {"no points", "", {"line_style\t0"}},
        {"slanted", "(0,0)\r\n(50,50)", {"vertices\t(list Points", "\t(0,0)", "\t(50,50))", "line_style\t0"}},
        {"upright",
         "(10,20)\r\n(10,80)",
         {"vertices\t(list Points", "\t(10,20)", "\t(10,80))", "line_style\t3", "origin_attachment     (10,20)",
          "terminal_attachment   (10,80)"}},
        {"no points in the text",
         "?",
         {"vertices\t(list Points)", "line_style\t3", "origin_attachment     (0,0)", "terminal_attachment   (0,0)"}},
    };
    for (const Row& row : rows) {
        Drawing drawing;
        KivClass* const order = drawing.drawClass("Order");
        KivClass* const clock = drawing.drawClass("Clock");
        KivModelObject* const relations[] = {
            drawing.draw(drawing.generalization("", drawing.view, {order}, {clock})),
            drawing.draw(drawing.realization("unused", drawing.view, order, clock)),
            drawing.draw(drawing.dependency("", drawing.view, order, clock)),
        };
        for (KivModelObject* const relation : relations) {
            KivProjection* const projection = row.vertices
                                                  ? drawing.lineProjection(relation, drawing.main, row.vertices)
                                                  : drawing.projection(relation, drawing.main, 1, 2, 3, 4);
            projection->lineColor = -7;
            drawing.lineProjection(relation, drawing.main, "(7,7)");
        }
        const auto expected = [&](std::string lineStart, const char* head, const char* quid, bool hasGeometry) {
            std::string view = lineStart + head;
            if (hasGeometry)
                view.append(lineStart).append("line_color \t-7");
            view.append(lineStart).append("quidu      \"").append(quid).append("\"");
            view.append(lineStart).append("client \t@10").append(lineStart).append("supplier \t@11");
            if (hasGeometry)
                for (const char* const line : row.lines)
                    view.append(lineStart).append(line);
            return view.append(")");
        };
        for (const bool hasGeometry : {true, false}) {
            const std::string text = drawing.written({{BP_USE_GRAPHICAL_INFORMATION, hasGeometry ? "True" : "False"}});
            EXPECT_EQ(viewWith(13, text),
                      expected("\r\n\t\t\t\t", "(object InheritView \"\" @13", "3449E800000D", hasGeometry))
                << row.what;
            EXPECT_EQ(viewWith(16, text),
                      expected("\r\n\t\t\t", "(object RealizeView \"\" @16", "3449E0000010", hasGeometry))
                << row.what;
            EXPECT_EQ(viewWith(17, text),
                      expected("\r\n\t\t\t", "(object UsesView \"\" @17", "3449E0000011", hasGeometry))
                << row.what;
        }
    }
}

TEST(RelationViews, NeedBothEndsOnTheDiagram)
{
    using enum Part;
    struct Row {
        const char* what;
        Part client;
        Part supplier;
        bool isDrawn;
    };
    const Row rows[] = {
        {"both", Drawn, Drawn, true},
        {"a hidden client has its line", Hidden, Drawn, true},
        {"a hidden supplier has its line", Drawn, Hidden, true},
        {"client not drawn", NotDrawn, Drawn, false},
        {"supplier not drawn", Drawn, NotDrawn, false},
        {"no client", Null, Drawn, false},
        {"no supplier", Drawn, Null, false},
        {"no ends", Null, Null, false},
    };
    for (const Row& row : rows) {
        Drawing drawing;
        KivVector<KivClass> ends;
        addClasses(drawing, ends, {row.client, row.supplier});
        KivClass* const order = drawing.addClass("Order", drawing.view);
        KivRealization* const realization = drawing.draw(drawing.realization("", drawing.view, order, order));
        KivDependency* const dependency = drawing.draw(drawing.dependency("", drawing.view, order, order));
        realization->client = dependency->client = ends.at(0);
        realization->supplier = dependency->supplier = ends.at(1);
        realization->modelLevel = dependency->modelLevel = 2;
        drawing.note("", realization);
        drawing.note("", dependency);
        const std::string text = objectWith("ClassDiagram", drawing.written());
        EXPECT_EQ(text.find("RealizeView") != std::string::npos, row.isDrawn) << row.what;
        EXPECT_EQ(text.find("UsesView") != std::string::npos, row.isDrawn) << row.what;
        EXPECT_EQ(text.find("NoteView") != std::string::npos, row.isDrawn) << row.what;
    }
}

} // namespace
