#include "designs/settling/LeftDiagram.h"

namespace design {

namespace {

constexpr std::string_view withItsDiagram = "its diagram does not come out";

std::string_view nameOf(std::string_view id, const Catalogue& catalogue)
{
    if (const Classifier* const classifier = catalogue.classifier(id))
        return classifier->name;
    const Package* const package = catalogue.package(id);
    return package ? std::string_view(package->name) : std::string_view();
}

} // namespace

void leaveDiagram(const Diagram& diagram, const Catalogue& catalogue, std::string_view reason, Report& report)
{
    report.left("diagram", diagram.id, diagram.name, reason);
    for (const Box& box : diagram.boxes)
        report.left("box", box.elementId, nameOf(box.elementId, catalogue), withItsDiagram);
    for (const Line& line : diagram.lines)
        report.left("line", line.elementId, "", withItsDiagram);
}

} // namespace design
