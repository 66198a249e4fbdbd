#include "logical/LogicalView.h"

#include "petal/PetalWriter.h"
#include "petal/RoseKeywords.h"
#include "types/TypeNames.h"

//     (object ClassAttribute "number"
//     quid\t"3449E400001A"
//     type\t"int"
//     initv\t"0"
//     exportControl\t"Public"
//     Containment\t"Unspecified")
int printAttributes(KivAttribute* attribute)
{
    object([&] {
        line("(object ClassAttribute ", quoted(attribute->getName()));
        line("quid\t", quoted(makeQuid(aquid, attribute->pid)));
        if (!attribute->description.isEmpty())
            line("documentation\t", makeRoseDesc(attribute->description));
        if (!attribute->stereotype.isEmpty())
            line("stereotype\t", quoted(attribute->stereotype));
        if (attribute->type)
            line("type\t", quoted(getTypeString(attribute->type)));
        else
            line("type\t\"Int\"");
        if (!attribute->initialValue.isEmpty())
            line("initv\t", makeRoseDesc(attribute->initialValue));
        line("exportControl\t", keyword(visibilityKeywords, attribute->visibility));
        line("Containment\t", keyword(containmentKeywords, attribute->containment));
        if (attribute->isStatic)
            line("static\tTRUE");
        if (attribute->isDerived)
            line("derived\tTRUE");
    });
    return 1;
}
