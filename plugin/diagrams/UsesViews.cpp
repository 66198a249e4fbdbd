#include "diagrams/ClassDiagrams.h"

#include "diagrams/Labels.h"
#include "diagrams/RelationViews.h"
#include "model/NumberBlocks.h"

namespace {

constexpr SegmentLabelShape usesStereotypeLabel = {segmentStereotype, 10, 120, "0.400018", 25, 0};

} // namespace

//     (object UsesView "reads" @41
//     label      \t(object ItemLabel ...)
//     quidu      "3449E0000029"
//     client \t@13
//     supplier \t@12)
int printUsesInDiagram(KivClassDiagram* diagram, KivDependency* dependency, int offset)
{
    if (!isDrawable(*dependency, *diagram))
        return 0;
    const int view = viewNumber(offset, dependency->pid);
    const KivString& name = dependency->getName();
    const KivString& stereotype = dependency->stereotype;
    object([&] {
        line("(object UsesView ", quoted(name), " @", view);
        if (!name.isEmpty())
            printItemLabel(view, {12, 60}, 600, name);
        if (!stereotype.isEmpty())
            printSegmentLabel(usesStereotypeLabel,
                              viewNumber(offset, dependency->pid + dependencyBlock::stereotypeLabel), view, {12, -60},
                              stereotype.length(), quotedStereotype(stereotype));
        printRelationLine(*dependency, *diagram, offset);
    });
    return 1;
}
