#pragma once

#include "diagrams/LinePoints.h"
#include "petal/PetalWriter.h"

/// What views of realizations and dependencies have in common.

/// Whether both ends are there and on the diagram.
template <class Relationship>
[[nodiscard]] bool isDrawable(const Relationship& relationship, const KivClassDiagram& diagram)
{
    return relationship.client && relationship.supplier && relationship.supplier->links.contains(&diagram) &&
           relationship.client->links.contains(&diagram);
}

///     line_color \t3342489
///     quidu      "3449E0000029"
///     client \t@13
///     supplier \t@12
///     line_style\t0
template <class Relationship>
void printRelationLine(const Relationship& relationship, const KivClassDiagram& diagram, int offset)
{
    const KivProjection* const projection = geometryOn(relationship, diagram);
    if (projection)
        line("line_color \t", projection->lineColor);
    line("quidu      ", quoted(makeQuid(iquid, relationship.pid)));
    line("client \t@", viewNumber(offset, relationship.client->pid));
    line("supplier \t@", viewNumber(offset, relationship.supplier->pid));
    if (const KivString* const vertices = verticesOf(projection))
        printLine(*vertices);
}
