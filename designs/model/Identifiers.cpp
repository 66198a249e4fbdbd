#include "designs/model/Identifiers.h"

#include "designs/model/Settling.h"
#include "designs/model/Walk.h"

namespace design {

NewIdentifiers::NewIdentifiers(Package& root)
{
    forEachElement(root, [&](const Element& element) { taken.insert(element.id); });
}

std::string NewIdentifiers::make()
{
    std::string id;
    do {
        id = "petal-" + std::to_string(++last);
    } while (!take(id));
    return id;
}

void giveIdentifiers(Design& design, Report& report)
{
    NewIdentifiers identifiers(design.root);
    std::unordered_set<std::string> met;
    forEachElement(design.root, [&](Element& element) {
        if (element.id.empty() || met.insert(element.id).second)
            return;
        report.made("identifier", element.id, element.name, "it is given twice; the second element got another one");
        element.id = identifiers.make();
    });
    const auto require = [&](auto& elements) {
        for (Element& element : elements)
            if (element.id.empty())
                element.id = identifiers.make();
    };
    forEachPackage(design.root, [&](Package& package) {
        require(package.classifiers);
        require(package.associations);
        require(package.relationships);
        require(package.diagrams);
    });
}

} // namespace design
