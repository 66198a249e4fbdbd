#include "designs/model/Settling.h"
#include "designs/model/Walk.h"

#include <vector>

namespace design {

void leaveUseCases(Design& design, Report& report)
{
    forEachPackage(design.root, [&](Package& package) {
        std::erase_if(package.classifiers, [&](const Classifier& classifier) {
            if (classifier.kind != ClassifierKind::UseCase)
                return false;
            report.left("use case", classifier.id, classifier.name, nothingOfThisKind);
            design.kinds.emplace(classifier.id, "use case");
            return true;
        });
        std::erase_if(package.diagrams, [&](const Diagram& diagram) {
            if (diagram.kind != DiagramKind::UseCase)
                return false;
            report.left("use case diagram", diagram.id, diagram.name, classDiagramsOnly);
            return true;
        });
    });
}

} // namespace design
