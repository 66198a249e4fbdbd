#include "diagrams/ClassDiagrams.h"

#include "diagrams/Labels.h"
#include "diagrams/LinePoints.h"
#include "model/ExportState.h"
#include "model/NumberBlocks.h"
#include "model/WrittenElements.h"
#include "petal/PetalWriter.h"

#include <optional>
#include <vector>

namespace {

constexpr SegmentLabelShape inheritanceStereotypeLabel = {segmentStereotype, 10, 120, "0.400018", 25, 1};

bool isDrawn(const KivClass* theClass, const KivClassDiagram& diagram)
{
    return theClass && !isHidden(*theClass) && theClass->links.contains(&diagram);
}

struct DrawnSubtype {
    const KivClass* theClass;
    std::size_t index; // among all subtypes
};

std::vector<DrawnSubtype> drawnSubtypesOf(const KivGeneralization& generalization, const KivClassDiagram& diagram)
{
    std::vector<DrawnSubtype> drawn;
    for (std::size_t i = 0; i < generalization.subtypes.count(); ++i)
        if (const KivClass* const subtype = generalization.subtypes.at(i); isDrawn(subtype, diagram))
            drawn.push_back({subtype, i});
    return drawn;
}

// What the views of one supertype have in common.
struct Tree {
    int view;              // number of the tree view
    int supplier;          // number of the supertype's view
    bool isTree;           // more than one subtype hangs on it
    Point fork;            // where the lines from the subtypes meet
    Coordinate bottom = 0; // lower edge of the supertype's box
};

const KivClass* firstSubtype(const KivGeneralization& generalization)
{
    for (const KivClass* const subtype : generalization.subtypes)
        if (subtype)
            return subtype;
    return nullptr;
}

// The fork stands half way between the supertype and the first subtype, drawn or not.
void placeFork(Tree& tree, const KivGeneralization& generalization, const KivClass& supertype,
               const KivClassDiagram& diagram)
{
    const KivClass* const first = firstSubtype(generalization);
    const KivProjection* const above = geometryOn(supertype, diagram);
    const KivProjection* const below = first ? geometryOn(*first, diagram) : nullptr;
    if (!above || !below)
        return;
    const auto sum = static_cast<double>(Coordinate{above->y} + below->y);
    tree.fork = {scaledX(above->x), truncated(sum * static_cast<double>(YScale) * 0.5)};
    tree.bottom = scaledY(Coordinate{above->y} + above->height / 2);
}

//     (object InheritTreeView "" @40
//     location\t\t(100,200)
//     supplier   \t@12
//     vertices   \t(list Points
//     \t(100,200)
//     \t(100,120)))
void printTreeView(const KivGeneralization& generalization, const Tree& tree)
{
    object([&] {
        line("(object InheritTreeView ", quoted(generalization.getName()), " @", tree.view);
        line("location\t\t", tree.fork);
        line("supplier   \t@", tree.supplier);
        flatList("vertices   \t(list Points", [&] {
            line("\t", tree.fork);
            line("\t", Point{tree.fork.x, tree.bottom});
        });
    });
}

// The top of the subtype's box, in the middle.
Point topOf(const KivProjection* box)
{
    if (!box)
        return {};
    return {scaledX(box->x), scaledY(Coordinate{box->y} - box->height / 2)};
}

void printInheritanceLine(const Tree& tree, const Point& top, const KivProjection* projection)
{
    if (tree.isTree) {
        line("line_style\t3");
        line("origin_attachment     ", Point{top.x, tree.fork.y});
        line("terminal_attachment   ", top);
        line("drawSupplier \t@", tree.view);
    } else if (const KivString* const vertices = verticesOf(projection)) {
        printLine(*vertices);
    }
}

//     (object InheritView "" @41
//     line_color \t3342489
//     quidu      "3449E8000029"
//     client \t@13
//     supplier \t@12
//     line_style\t0)
void printInheritView(const KivGeneralization& generalization, const Tree& tree, const KivClassDiagram& diagram,
                      const KivClass& subtype, long number, int offset)
{
    const int view = viewNumber(offset, number);
    const KivString& name = generalization.getName();
    const KivString& stereotype = generalization.stereotype;
    const Point top = topOf(geometryOn(subtype, diagram));
    const KivProjection* const projection = geometryOn(generalization, diagram);
    object([&] {
        line("(object InheritView ", quoted(name), " @", view);
        if (!name.isEmpty())
            printItemLabel(view, top, 600, name);
        if (!stereotype.isEmpty())
            printSegmentLabel(inheritanceStereotypeLabel,
                              viewNumber(offset, number + GeneralizationBlock::stereotypeLabel), view,
                              {top.x + 12, top.y + 120}, stereotype.length(), quotedStereotype(stereotype));
        if (projection)
            line("line_color \t", projection->lineColor);
        line("quidu      ", quoted(makeQuid(nquid, number)));
        line("client \t@", viewNumber(offset, subtype.pid));
        line("supplier \t@", tree.supplier);
        printInheritanceLine(tree, top, projection);
    });
}

void printSupertype(const KivGeneralization& generalization, std::size_t index,
                    const std::vector<DrawnSubtype>& drawnSubtypes, const KivClassDiagram& diagram, int offset)
{
    const KivClass& supertype = *generalization.supertypes.at(index);
    const GeneralizationBlock block(generalization);
    Tree tree = {
        viewNumber(offset, block.tree(index)), viewNumber(offset, supertype.pid), drawnSubtypes.size() > 1, {}};
    placeFork(tree, generalization, supertype, diagram);
    if (tree.isTree)
        printTreeView(generalization, tree);
    deeper([&] {
        for (const DrawnSubtype& subtype : drawnSubtypes)
            printInheritView(generalization, tree, diagram, *subtype.theClass, block.pair(index, subtype.index),
                             offset);
    });
}

} // namespace

int printInheritanceInDiagram(KivClassDiagram* diagram, KivGeneralization* generalization, int offset)
{
    // The same for every supertype, so they are looked for once.
    std::optional<std::vector<DrawnSubtype>> drawnSubtypes;
    for (std::size_t j = 0; j < generalization->supertypes.count(); ++j) {
        if (!isDrawn(generalization->supertypes.at(j), *diagram))
            continue;
        if (!drawnSubtypes)
            drawnSubtypes = drawnSubtypesOf(*generalization, *diagram);
        printSupertype(*generalization, j, *drawnSubtypes, *diagram, offset);
    }
    return 1;
}

int firstInheritanceView(const KivClassDiagram& diagram, const KivGeneralization& generalization, int offset)
{
    for (std::size_t j = 0; j < generalization.supertypes.count(); ++j) {
        if (!isDrawn(generalization.supertypes.at(j), diagram))
            continue;
        for (std::size_t i = 0; i < generalization.subtypes.count(); ++i)
            if (isDrawn(generalization.subtypes.at(i), diagram))
                return viewNumber(offset, GeneralizationBlock(generalization).pair(j, i));
        break;
    }
    return 0;
}
