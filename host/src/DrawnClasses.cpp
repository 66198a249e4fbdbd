#include "DrawnClasses.h"

#include <algorithm>
#include <functional>
#include <string>

namespace {

std::string withoutPlace(const KivClassDiagram& diagram, std::size_t count)
{
    const std::string where =
        diagram.getName().isEmpty() ? named("diagram", diagram) : '"' + std::string(diagram.getName().view()) + '"';
    return counted(count, "box of ", "boxes of ") + where +
           (count == 1 ? " has no place" : " have no place and lie on each other");
}

} // namespace

void DrawnClasses::count(const KivClass& theClass, bool isLost)
{
    if (theClass.links.isEmpty())
        return;
    places.clear();
    for (const KivProjection* const projection : theClass.projections)
        if (projection)
            places.push_back(projection->diagram);
    std::sort(places.begin(), places.end(), std::less<>());
    for (const KivObject* const diagram : theClass.links) {
        if (!diagram || diagram->elementType != KivElementType::ClassDiagram)
            continue;
        Counts& counts = countsOf[diagram];
        ++counts.met;
        if (isHiddenElement(theClass))
            continue;
        counts.unwritten += isLost ? 1U : 0U;
        counts.withoutPlace += std::binary_search(places.begin(), places.end(), diagram, std::less<>()) ? 0U : 1U;
    }
}

void DrawnClasses::find(const std::vector<const KivClassDiagram*>& diagrams, FaultList& list)
{
    for (const KivClassDiagram* const diagram : diagrams) {
        const auto isClass = [](const KivModelObject* each) {
            return each && each->elementType == KivElementType::Class;
        };
        const auto drawn =
            static_cast<std::size_t>(std::count_if(diagram->elements.begin(), diagram->elements.end(), isClass));
        const Counts& counts = countsOf[diagram];
        const std::size_t unwritten = counts.unwritten + drawn - std::min(drawn, counts.met);
        if (unwritten > 0)
            list.add(KivFaultKind::DrawnOnly, *diagram, "elements",
                     named("diagram", *diagram) + " draws " + counted(unwritten, "class that is", "classes that are") +
                         " in no written package");
        if (counts.withoutPlace > 0)
            list.add(KivFaultKind::NoPlace, *diagram, "", withoutPlace(*diagram, counts.withoutPlace));
    }
}
