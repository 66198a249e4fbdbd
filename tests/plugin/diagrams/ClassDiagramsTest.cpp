#include "plugin/diagrams/Drawing.h"

#include <set>

namespace {

// Sub-packages come before the diagrams of their parent; a diagram of another kind takes no index.
TEST(ClassDiagram, IndexesRunThroughThePackageTree)
{
    Drawing drawing;
    KivPackage* const sub = drawing.package("Sub", drawing.view);
    KivPackage* const deep = drawing.package("Deep", sub);
    KivPackage* const late = drawing.package("Late", drawing.view);
    KivClass* const order = drawing.drawClass("Order");
    sub->diagrams.add(drawing.make<KivDiagram>("Other kind"));
    drawing.draw(order, drawing.diagram("In Sub", sub));
    drawing.draw(order, drawing.diagram("In Deep", deep));
    drawing.draw(order, drawing.diagram("In Late", late));
    drawing.main->description = "a free label";
    const std::string text = drawing.written();
    EXPECT_EQ(entries("max_width", objectWith("(object Label", text)), "600");
    // Order 10; Deep 11 to 3011; Sub with a plain diagram 3012 to 6013; Late 6014 to 9014; Main 9015; view and model.
    constexpr long multiplier = 12017;
    const char* const inOrder[] = {"In Deep", "In Sub", "In Late", "Main"};
    for (int index = 0; index < 4; ++index)
        EXPECT_NE(viewWith(10 + index * multiplier,
                           objectWith("(object ClassDiagram \"" + std::string(inOrder[index]) + '"', text)),
                  "(no object)")
            << inOrder[index];
}

TEST(CategoryViews, KeepThePlacesOfPackagesOfOtherKinds)
{
    Drawing drawing;
    drawing.view->addChildPackage(drawing.make<KivPackage>("Other kind"));
    drawing.package("Orders and their long, long history", drawing.view);
    drawing.package("Logical View", drawing.view);
    drawing.package("Bob \"B\"", drawing.view);
    const std::string text = drawing.written();
    EXPECT_EQ(entries("location", text), "(700,400) (500,340) (1140,400) (940,340) (1580,400) (1380,340)");
    EXPECT_EQ(entries("nlines", text), "2 1 1");
    EXPECT_EQ(entries("(object", objectWith("diagram_item_list", text)),
              R"-(CategoryView "LogicalView::Orders and their long, long history" @11 )-"
              R"-(CategoryView "LogicalView::Logical View" @12 CategoryView "LogicalView::Bob \"B\"" @13)-");
    EXPECT_EQ(entries("quidu", objectWith("diagram_item_list", text)),
              R"("344A1400000B" "344A1400000C" "344A1400000D")");
}

// The attach lines of a text, as "note view>what it is attached to".
std::string attachments(std::string_view text)
{
    std::string result;
    for (std::size_t at = 0; (at = text.find("\r\n\t\t\t(object AttachView", at)) != std::string_view::npos; ++at) {
        const std::string line = objectAt(text, at);
        result.append(entries("client", line)).append(">").append(entries("supplier", line)).append(" ");
    }
    return result;
}

std::size_t countOf(std::string_view piece, std::string_view text)
{
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(piece, at)) != std::string_view::npos; ++at)
        ++count;
    return count;
}

TEST(Notes, AreAttachedToTheViewsOfTheirElements)
{
    Drawing drawing;
    KivClass* const order = drawing.drawClass("Order");                                                    // 10
    KivClass* const item = drawing.drawClass("Item");                                                      // 12
    auto* const operation = drawing.draw(drawing.operation("of no kind that is drawn", item));             // 11
    KivClass* const hidden = drawing.drawClass("Hidden");                                                  // 13
    KivClass* const elsewhere = drawing.addClass("Elsewhere", drawing.view);                               // 14
    auto* const uses = drawing.draw(drawing.dependency("", drawing.view, order, item));                    // 15
    auto* const realizes = drawing.draw(drawing.realization("", drawing.view, order, item));               // 17
    auto* const inherits = drawing.draw(drawing.generalization("", drawing.view, {item}, {order}));        // 18
    auto* const places = drawing.draw(drawing.association("", drawing.view, order, item));                 // 30
    auto* const concealed = drawing.draw(drawing.association("", drawing.view, order, hidden));            // 42
    auto* const outside = drawing.draw(drawing.dependency("", drawing.view, order, elsewhere));            // 46
    auto* const orphan = drawing.draw(drawing.generalization("", drawing.view, {elsewhere}, {elsewhere})); // 48
    hidden->modelLevel = 2;
    auto* const shared = drawing.note("shared", order);
    for (KivModelObject* const element : std::initializer_list<KivModelObject*>{
             item, item, hidden, uses, realizes, inherits, places, concealed, outside, orphan, operation})
        element->notes.add(shared);
    item->notes.add(nullptr);
    const std::string text = drawing.written();
    // Main is 52. Classes come first, then associations, generalizations, realizations and dependencies; the note of
    // the orphan, which has no view, is attached to nothing.
    EXPECT_EQ(attachments(text), "@53>@10 @54>@12 @55>@12 @56>@30 @57>@19 @59>@17 @60>@15 ");
    EXPECT_EQ(countOf("(object NoteView @", text), 8U);
    EXPECT_EQ(entries("(object", objectWith("AttachView", text)), "AttachView \"\" @61");
}

// The numbers of all views and labels.
std::multiset<long> numbersIn(std::string_view text)
{
    std::multiset<long> numbers;
    for (std::size_t at = 0; (at = text.find("(object ", at)) != std::string_view::npos; ++at) {
        const std::string_view line = text.substr(at, text.find("\r\n", at) - at);
        if (const std::size_t sign = line.rfind(" @"); sign != std::string_view::npos)
            numbers.insert(std::stol(std::string(line.substr(sign + 2))));
    }
    return numbers;
}

TEST(Notes, PastADiagramsOwnNumbersTakeFreeOnes)
{
    struct Row {
        const char* what;
        int mainNotes;
        int sideNotes;
    };
    const Row rows[] = {
        {"all of the own numbers", 2996, 2996},      {"one more on the first diagram", 2997, 1},
        {"one more on the second diagram", 1, 2997}, {"one more on both", 2997, 2997},
        {"many more on both", 3100, 6100},
    };
    for (const Row& row : rows) {
        Drawing drawing;
        KivClass* const order = drawing.drawClass("Order");
        KivClassDiagram* const side = drawing.diagram("Side", drawing.view);
        drawing.note("on both", drawing.draw(order, side));
        drawing.main->description = side->description = "described";
        for (int i = 0; i < row.mainNotes; ++i)
            drawing.note("", drawing.main);
        for (int i = 0; i < row.sideNotes; ++i)
            drawing.note("", side);

        // Order is 10, Main 11, Side 3011, and 6013 comes after the model. Besides its notes a diagram has a note
        // view, an attach line and the label of its description.
        constexpr long multiplier = 6013;
        std::multiset<long> expected = {10, 10 + multiplier};
        long nextFree = 2 * multiplier;
        const auto expectNotes = [&](long diagram, int count) {
            for (int i = 1; i <= count; ++i)
                expected.insert(i < 3000 ? diagram + i : nextFree++);
        };
        expectNotes(11, row.mainNotes + 3);
        expectNotes(3011, row.sideNotes + 3);
        EXPECT_EQ(numbersIn(drawing.written()), expected) << row.what;
    }
}

// A note's line goes only to a number above zero.
TEST(Notes, OfViewsWhoseNumbersWrap)
{
    Drawing drawing;
    KivClass* const order = drawing.drawClass("Order");
    drawing.note("", order);
    constexpr int count = 1000;
    for (int i = 0; i < count; ++i)
        drawing.draw(order, drawing.diagram("D", drawing.package("P", drawing.view)));
    const std::string text = drawing.written();
    const std::multiset<long> numbers = numbersIn(text);
    // Order is 10; then come the diagrams, each with its package, Main, the view and the model.
    constexpr unsigned multiplier = 11 + count * 3001 + 3000 + 2;
    std::size_t positive = 0;
    for (unsigned index = 0; index <= count; ++index) {
        const auto number = static_cast<int>(index * multiplier + 10);
        positive += number > 0 ? 1 : 0;
        EXPECT_TRUE(numbers.contains(number)) << index;
    }
    EXPECT_LT(positive, count) << "nothing has wrapped";
    EXPECT_EQ(countOf("(object AttachView", text), positive);
    EXPECT_EQ(countOf("(object NoteView", text), count + 1U);
}

// Every kind of view, on both diagrams.
class EveryView : public testing::Test {
protected:
    EveryView()
    {
        const char* const name = "name";
        drawing.package(name, drawing.view);
        KivClass* const classes[] = {drawing.addClass(name, drawing.view), drawing.addClass(name, drawing.view),
                                     drawing.addClass(name, drawing.view)};
        for (KivClass* const theClass : classes)
            drawTwice(theClass);
        auto* const places = drawTwice(drawing.association(name, drawing.view));
        drawing.role(name, places, classes[0])->multiplicity = {1, 1, true};
        drawing.role(name, places, classes[1])->constraint = places->constraint = "ordered";
        places->associationClass = classes[2];
        drawTwice(drawing.association("", drawing.view));
        drawTwice(drawing.generalization(name, drawing.view, {classes[0], classes[1]}, {classes[2], classes[1]}));
        drawTwice(drawing.generalization(name, drawing.view, {classes[0]}, {classes[2]}));
        drawTwice(drawing.realization(name, drawing.view, classes[0], classes[2]));
        drawTwice(drawing.dependency(name, drawing.view, classes[0], classes[2]));
        text = drawing.written({{BP_SHOW_CONSTRAINTS_IN_DIAGRAMS, "True"}});
    }

    template <class Element>
    Element* drawTwice(Element* element)
    {
        drawing.note("", element);
        element->stereotype = "s\\";
        return drawing.draw(drawing.draw(element), side);
    }

    Drawing drawing;
    KivClassDiagram* const side = drawing.diagram("Side", drawing.view);
    std::string text;
};

TEST_F(EveryView, HasANumberOfItsOwnAndReferencesFindIt)
{
    const std::multiset<long> numbers = numbersIn(text);
    // On each diagram: a sub-package and three classes; an association with three labels, two roles with four and a
    // line to its class, and one with a stereotype; two trees and five inheritance views with stereotypes; a
    // realization; a dependency with a stereotype; and nine notes with their lines.
    EXPECT_EQ(numbers.size(), 2U * (4 + 4 + 2 + 4 + 1 + 2 + 2 + 10 + 1 + 2 + 18));
    EXPECT_EQ(std::set<long>(numbers.begin(), numbers.end()).size(), numbers.size());
    for (std::size_t at = 0; (at = text.find("\t@", at)) != std::string::npos; ++at)
        EXPECT_TRUE(numbers.contains(std::stol(text.substr(at + 2)))) << text.substr(text.rfind('\n', at), 40);
}

} // namespace
