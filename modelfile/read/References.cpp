#include "modelfile/read/References.h"

#include "text/JsonWriter.h"

#include "kiv/KivObject.h"

#include <algorithm>
#include <array>
#include <utility>

namespace modelfile {

namespace {

constexpr std::size_t mostComparedIds = 100'000; // for a hint; more would take too long

std::string_view nameOf(KivElementType code)
{
    constexpr std::array<std::pair<KivElementType, std::string_view>, 17> names = {{
        {KivElementType::Note, "a note"},
        {KivElementType::Type, "a type"},
        {KivElementType::TypeValue, "a literal"},
        {KivElementType::Package, "a package"},
        {KivElementType::Class, "a class"},
        {KivElementType::Association, "an association"},
        {KivElementType::Generalization, "a generalization"},
        {KivElementType::Dependency, "a dependency"},
        {KivElementType::Realization, "a realization"},
        {KivElementType::ModelElement, "an element of a package"},
        {KivElementType::Key, "a key"},
        {KivElementType::Attribute, "an attribute"},
        {KivElementType::Operation, "an operation"},
        {KivElementType::Argument, "an argument"},
        {KivElementType::AssociationRole, "a role"},
        {KivElementType::ClassDiagram, "a class diagram"},
        {KivElementType::Diagram, "a diagram"},
    }};
    const auto* const found =
        std::find_if(names.begin(), names.end(), [&](const auto& row) { return isInstance(code, row.first); });
    return found == names.end() ? "a model object" : found->second;
}

} // namespace

std::string_view References::takeId(Value& value, KivObject* object)
{
    const char* const at = JsonReader::tokenOf(value).data();
    const std::string_view id = reader.keep(reader.readText(value));
    if (!objects.add(id, object))
        JsonReader::fail(at, "an id that is used once", "the id " + text::jsonQuoted(id) + " again");
    return id;
}

void References::refer(Value& value, KivElementType expected, Assign assign, void* owner)
{
    const char* const at = JsonReader::tokenOf(value).data();
    if (JsonReader::isNull(value)) {
        if (value.is_null().error() != simdjson::SUCCESS)
            JsonReader::failValue(value, "null");
        references.push_back({{}, at, expected, assign, owner});
        return;
    }
    const std::string_view id = reader.keep(reader.readText(value, "an id (a text) or null"));
    references.push_back({id, at, expected, assign, owner});
}

void References::referAtOnce(Value& value, KivElementType expected, Assign assign, void* owner)
{
    refer(value, expected, assign, owner);
    const Reference& reference = references.back();
    if (!reference.id.data()) {
        references.pop_back();
        return;
    }
    KivObject* const found = objects.find(reference.id);
    if (found && found->isInstanceOf(expected)) {
        assign(owner, found);
        references.pop_back();
    }
}

void References::follow()
{
    for (const Reference& reference : references) {
        KivObject* target = nullptr;
        if (reference.id.data()) {
            target = objects.find(reference.id);
            if (!target || !target->isInstanceOf(reference.expected)) {
                addFault(reference, target);
                continue;
            }
        }
        reference.assign(reference.owner, target);
    }
}

void References::addFault(const Reference& reference, const KivObject* target)
{
    if (!target && reader.faults.isInSkipped(reference.id))
        return;
    const std::string found = target ? ", the id of " + std::string(nameOf(target->elementType))
                                     : std::string(", which is no id in the file");
    reader.faults.add({reference.at, "the id of " + std::string(nameOf(reference.expected)),
                       text::jsonQuoted(reference.id) + found, "", "", reference.id, reference.expected});
}

std::string References::nearestId(std::string_view id, KivElementType expected) const
{
    if (objects.all().size() > mostComparedIds)
        return "";
    std::vector<std::string_view> candidates;
    for (const IdTable::Named& each : objects.all()) {
        if (!each.object || !each.object->isInstanceOf(expected))
            continue;
        if (each.object->getName().view() == id)
            return "the id " + text::jsonQuoted(each.id);
        candidates.push_back(each.id);
    }
    return nearestOf(id, candidates);
}

} // namespace modelfile
