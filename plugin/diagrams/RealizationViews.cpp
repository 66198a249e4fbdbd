#include "diagrams/ClassDiagrams.h"

#include "diagrams/RelationViews.h"

//     (object RealizeView "" @41
//     quidu      "3449E0000029"
//     client \t@13
//     supplier \t@12)
int printRealizationInDiagram(KivClassDiagram* diagram, KivRealization* realization, int offset)
{
    if (!isDrawable(*realization, *diagram))
        return 0;
    object([&] {
        line("(object RealizeView \"\" @", viewNumber(offset, realization->pid));
        printRelationLine(*realization, *diagram, offset);
    });
    return 1;
}
