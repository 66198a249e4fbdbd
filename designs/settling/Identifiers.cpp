#include "designs/settling/Identifiers.h"

#include "designs/model/Walk.h"
#include "designs/settling/Settling.h"

#include <string_view>
#include <vector>

namespace design {

NewIdentifiers::NewIdentifiers(const Package& root)
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

namespace {

// Elements whose identifier an earlier one has.
std::vector<Element*> repetitions(Package& root)
{
    std::vector<Element*> repeated;
    std::unordered_set<std::string_view> met;
    forEachElement(root, [&](Element& element) {
        if (!element.id.empty() && !met.insert(element.id).second)
            repeated.push_back(&element);
    });
    return repeated;
}

// Elements that need an identifier and have none.
std::vector<Element*> nameless(Package& root)
{
    std::vector<Element*> found;
    const auto add = [&](auto& elements) {
        for (Element& element : elements)
            if (element.id.empty())
                found.push_back(&element);
    };
    forEachPackage(root, [&](Package& package) {
        add(package.classifiers);
        add(package.associations);
        add(package.relationships);
        add(package.diagrams);
    });
    return found;
}

} // namespace

void giveIdentifiers(Design& design, Report& report)
{
    std::vector<Element*> elements = repetitions(design.root);
    for (const Element* const element : elements)
        report.made("identifier", element->id, element->name, "it is given twice; the second element got another one");
    const std::vector<Element*> others = nameless(design.root);
    elements.insert(elements.end(), others.begin(), others.end());
    if (elements.empty())
        return;
    NewIdentifiers identifiers(design.root);
    for (Element* const element : elements)
        element->id = identifiers.make();
}

} // namespace design
