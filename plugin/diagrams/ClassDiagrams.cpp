#include "diagrams/ClassDiagrams.h"

#include "diagrams/Labels.h"
#include "diagrams/NoteNumbers.h"
#include "model/ExportState.h"
#include "model/Numbering.h"
#include "petal/PetalWriter.h"

#include <vector>

namespace {

// A note view that is still to be written, and the view that it is attached to.
struct PendingNote {
    int viewNumber;
    KivString text;
    int target;
};

//     (object CategoryView "LogicalView::Orders" @18
//     location\t\t(260,400)
//     label      \t(object ItemLabel ...)
//     icon_style \t "Icon"
//     line_color \t 3342489
//     fill_color \t 13434879
//     quidu      \t"344A14000012"
//     width\t\t400
//     height\t\t200)
void printCategoryView(const KivPackage& package, std::size_t place, int offset)
{
    constexpr Coordinate distance = 440;
    const auto left = static_cast<Coordinate>(place) * distance;
    const int view = viewNumber(offset, package.pid);
    object([&] {
        line("(object CategoryView ", quoted("LogicalView::", package.getName()), " @", view);
        line("location\t\t", Point{left + 260, 400});
        printItemLabel(view, {left + 60, 340}, 400, package.getName());
        line("icon_style \t \"Icon\"");
        line("line_color \t 3342489");
        line("fill_color \t 13434879");
        line("quidu      \t", quoted(makeQuid(pquid, package.pid)));
        line("width\t\t400");
        line("height\t\t200");
    });
}

// A package of another kind keeps its place and gets no view.
void printCategoryViews(const KivPackage& package, int offset)
{
    for (std::size_t i = 0; i < package.childPackages.count(); ++i) {
        const KivPackage* const child = package.childPackages.at(i);
        if (child->elementType == KivElementType::DesignPackage)
            printCategoryView(*child, i, offset);
    }
}

int targetOf(const KivClassDiagram& diagram, const KivModelObject& element, int offset)
{
    if (element.elementType == KivElementType::Generalization)
        return firstInheritanceView(diagram, static_cast<const KivGeneralization&>(element), offset);
    return viewNumber(offset, element.pid);
}

// The views of one diagram's elements. Lines come after the boxes that they join, kind by kind.
class ElementViews {
public:
    ElementViews(KivClassDiagram& theDiagram, int theOffset, NoteNumbers& theNumbers)
        : diagram(theDiagram), offset(theOffset), numbers(theNumbers)
    {
    }

    template <class Element>
    void print(KivElementType type, int (*printView)(KivClassDiagram*, Element*, int))
    {
        for (KivModelObject* const element : diagram.elements)
            if (element->elementType == type && printView(&diagram, static_cast<Element*>(element), offset) == 1)
                addNotes(*element);
    }
    [[nodiscard]] const std::vector<PendingNote>& pendingNotes() const { return notes; }

private:
    void addNotes(const KivModelObject& element)
    {
        if (element.notes.isEmpty())
            return;
        const int target = targetOf(diagram, element, offset);
        for (const KivNote* const note : element.notes)
            if (note)
                notes.push_back({numbers.take(), note->getText(), target});
    }

    KivClassDiagram& diagram;
    int offset;
    NoteNumbers& numbers;
    std::vector<PendingNote> notes;
};

void printFreeLabel(int number, const KivString& text)
{
    printLabel(number, {0, 0}, 600, makeRoseDesc(text));
}

//     (object NoteView @504
//     location\t(0,0)
//     label      \t(object ItemLabel ...))
void printNoteView(const PendingNote& note)
{
    object([&] {
        line("(object NoteView @", note.viewNumber);
        line("location\t(0,0)");
        printItemLabel(note.viewNumber, {0, 0}, 240, makeRoseDesc(note.text));
    });
}

//     (object AttachView "" @506
//     client     \t@504
//     supplier   \t@26
//     line_style \t0)
void printAttachView(const PendingNote& note, int number)
{
    object([&] {
        line("(object AttachView \"\" @", number);
        line("client     \t@", note.viewNumber);
        line("supplier   \t@", note.target);
        line("line_style \t0");
    });
}

//     (object ClassDiagram "Main"
//     quid       \t"3449E00001F4"
//     title      \t"Main"
//     zoom       \t100
//     max_height \t28350
//     max_width  \t21600
//     origin_x   \t0
//     origin_y   \t0
void printDiagramHead(const KivClassDiagram& diagram)
{
    line("(object ClassDiagram ", quoted(diagram.getName()));
    line("quid       \t", quoted(makeQuid(iquid, diagram.pid)));
    line("title      \t", quoted(diagram.getName()));
    line("zoom       \t100");
    line("max_height \t28350");
    line("max_width  \t21600");
    line("origin_x   \t0");
    line("origin_y   \t0");
}

void printItems(KivClassDiagram& diagram, int offset)
{
    // The diagram's own notes have the first numbers, since they come first in the file.
    NoteNumbers numbers(diagram.pid);
    std::vector<int> freeLabels;
    for (const KivNote* const note : diagram.notes)
        if (note)
            freeLabels.push_back(numbers.take());

    if (diagram.package)
        printCategoryViews(*diagram.package, offset);
    ElementViews views(diagram, offset, numbers);
    views.print(KivElementType::Class, printClassesInDiagram);
    views.print(KivElementType::Association, printAssociationsInDiagram);
    views.print(KivElementType::Generalization, printInheritanceInDiagram);
    views.print(KivElementType::Realization, printRealizationInDiagram);
    views.print(KivElementType::Dependency, printUsesInDiagram);

    auto number = freeLabels.begin();
    for (const KivNote* const note : diagram.notes)
        if (note)
            printFreeLabel(*number++, note->getText());
    for (const PendingNote& note : views.pendingNotes())
        printNoteView(note);
    for (const PendingNote& note : views.pendingNotes())
        if (note.target > 0)
            printAttachView(note, numbers.take());
    if (!diagram.description.isEmpty())
        printFreeLabel(numbers.take(), diagram.description);
}

} // namespace

int NoteNumbers::take()
{
    if (left == 0)
        return lowBits(nextFreeViewNumber++);
    --left;
    return lowBits(next++);
}

// The level is raised and not lowered, so every further diagram of a package stands one level deeper; readers
// go by the parentheses.
int printClassDiagrams(KivClassDiagram* diagram, int diagramIndex)
{
    const auto offset = static_cast<int>(static_cast<unsigned>(diagramIndex) * static_cast<unsigned>(multiplier));
    increaseIndent();
    object([&] {
        printDiagramHead(*diagram);
        list("items\t(list diagram_item_list", [&] { printItems(*diagram, offset); });
    });
    return 1;
}
