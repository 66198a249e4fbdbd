#include "designs/convert/TypeTable.h"

#include <utility>

namespace design {

const std::string& TypeTable::idOf(const Reference& reference)
{
    static const std::string none;
    if (reference.isEmpty())
        return none;
    if (const Classifier* const classifier = catalogue.classifierOf(reference))
        return entryOf(*classifier);
    return entryNamed(reference);
}

bool TypeTable::isEnumeration(const Type& type) const
{
    return type.classifier && type.classifier->kind == ClassifierKind::Enumeration &&
           !selection.isClass(*type.classifier);
}

const std::string& TypeTable::entryOf(const Classifier& classifier)
{
    const auto [found, isNew] = ids.emplace("id " + classifier.id, classifier.id);
    if (isNew) {
        if (selection.isClass(classifier))
            found->second = unusedId("type " + classifier.id);
        entries.push_back({found->second, classifier.name, &classifier});
    }
    return found->second;
}

const std::string& TypeTable::entryNamed(const Reference& reference)
{
    const std::string& name = reference.name.empty() ? reference.id : reference.name;
    const auto [found, isNew] = ids.emplace("name " + name, "");
    if (isNew) {
        found->second = unusedId("type " + name);
        entries.push_back({found->second, name, nullptr});
        if (!reference.id.empty() && !catalogue.has(reference.id))
            report.made("type", reference.id, name, "it lies outside of the file; a type of that name stands for it");
    }
    return found->second;
}

std::string TypeTable::unusedId(std::string id)
{
    while (catalogue.has(id) || !ownIds.insert(id).second)
        id += '\'';
    return id;
}

} // namespace design
