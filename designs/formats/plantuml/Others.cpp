#include "designs/formats/plantuml/Others.h"

namespace design::plantuml {

std::string linesOf(const rose::DrawnDiagram& diagram)
{
    switch (diagram.kind) {
    case reader::DiagramKind::sequence:
        return sequenceOf(diagram);
    case reader::DiagramKind::state:
    case reader::DiagramKind::activity:
        return statesOf(diagram);
    case reader::DiagramKind::collaboration:
    case reader::DiagramKind::component:
    case reader::DiagramKind::deployment:
        return figuresOf(diagram);
    default:
        return "";
    }
}

} // namespace design::plantuml
