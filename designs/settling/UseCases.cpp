#include "designs/model/Catalogue.h"
#include "designs/model/Walk.h"
#include "designs/settling/LeftDiagram.h"
#include "designs/settling/Settling.h"

#include <vector>

namespace design {

namespace {

bool isOfUseCases(const Diagram& diagram)
{
    return diagram.kind == DiagramKind::UseCase;
}

void leaveDiagrams(Package& root, Report& report)
{
    const Catalogue catalogue(root);
    forEachPackage(root, [&](Package& package) {
        for (const Diagram& diagram : package.diagrams)
            if (isOfUseCases(diagram))
                leaveDiagram(diagram, catalogue, "the host model has no use case diagrams", report);
        std::erase_if(package.diagrams, isOfUseCases);
    });
}

} // namespace

void leaveUseCases(Design& design, Report& report)
{
    leaveDiagrams(design.root, report);
    forEachPackage(design.root, [&](Package& package) {
        std::erase_if(package.classifiers, [&](const Classifier& classifier) {
            if (classifier.kind != ClassifierKind::UseCase)
                return false;
            report.left("use case", classifier.id, classifier.name, nothingOfThisKind);
            design.kinds.emplace(classifier.id, "use case");
            return true;
        });
    });
}

} // namespace design
