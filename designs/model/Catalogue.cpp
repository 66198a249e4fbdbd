#include "designs/model/Catalogue.h"

#include "designs/model/Walk.h"

#include <cstddef>

namespace design {

Catalogue::Catalogue(const Package& root)
{
    std::size_t count = 0;
    forEachElement(root, [&](const Element& /*element*/) { ++count; });
    entries.reserve(count);
    forEachPackage(root, [&](const Package& package) {
        add(package, &package);
        for (const Classifier& classifier : package.classifiers) {
            add(classifier, &classifier);
            classifiersByName.emplace(classifier.name, &classifier);
            addFeatures(classifier);
        }
        for (const Association& association : package.associations) {
            add(association, &association);
            for (const AssociationEnd& end : association.ends)
                add(end, static_cast<const Element*>(&end));
        }
        for (const Relationship& relationship : package.relationships)
            add(relationship, &relationship);
        for (const Diagram& diagram : package.diagrams)
            add(diagram, static_cast<const Element*>(&diagram));
    });
}

void Catalogue::addFeatures(const Classifier& classifier)
{
    for (const Attribute& attribute : classifier.attributes)
        add(attribute, static_cast<const Element*>(&attribute));
    for (const Operation& operation : classifier.operations)
        add(operation, static_cast<const Element*>(&operation));
    for (const Literal& literal : classifier.literals)
        add(literal, static_cast<const Element*>(&literal));
}

void Catalogue::add(const Element& element, Entry entry)
{
    if (!element.id.empty())
        entries.emplace(element.id, entry);
}

const Classifier* Catalogue::classifierNamed(std::string_view name) const
{
    const auto found = name.empty() ? classifiersByName.end() : classifiersByName.find(name);
    return found == classifiersByName.end() ? nullptr : found->second;
}

const Classifier* Catalogue::classifierOf(const Reference& reference) const
{
    return reference.id.empty() ? classifierNamed(reference.name) : classifier(reference.id);
}

} // namespace design
