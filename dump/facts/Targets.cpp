#include "dump/facts/Targets.h"

#include <algorithm>
#include <iterator>

namespace dump {

using reader::Object;
using reader::ReferenceState;
using reader::Value;
using reader::ValueKind;

namespace {

// The keys of quids that lead somewhere, and those of the names that stand beside them. The name of what `quidu` means
// stands in front of it, or a view has it behind its kind.
constexpr std::pair<std::string_view, std::string_view> quidKeys[] = {
    {"quidu", ""}, {"supplier_quidu", "supplier"}, {"client_quidu", "client"}};

bool isFullName(std::string_view text)
{
    return text.find("::") != std::string_view::npos;
}

std::string fullNameOf(const Object& view)
{
    const auto names = view.names();
    const auto found = std::ranges::find_if(names, [](const Value& name) { return isFullName(name.raw()); });
    return found == names.end() ? std::string() : found->asText();
}

} // namespace

std::string_view stateOf(const reader::Reference& reference)
{
    switch (reference.state) {
    case ReferenceState::found:
        return reference.isByName ? "by name" : "found";
    case ReferenceState::none:
        return "none";
    case ReferenceState::unloaded:
        return "unloaded";
    case ReferenceState::missing:
        break;
    }
    return "missing";
}

Target targetOf(const reader::Reference& reference, const Elements& elements)
{
    return {elements.numberOf(reference.element), stateOf(reference)};
}

const Object* viewMeant(const Source& source, Elements::Number from, std::uint32_t number)
{
    const Elements::Number diagram = source.elements.diagram(from);
    return source.index.view(*source.elements.object(diagram == 0 ? from : diagram), number);
}

void Targets::beginObject(Elements::Number object, const Member& member)
{
    beginList(member);
    levels.push_back({object});
}

void Targets::beginList(const Member& member)
{
    if (!levels.empty() && member.position == Member::nowhere)
        levels.back().textBefore = nullptr;
}

std::optional<Target> Targets::of(const Member& member)
{
    if (member.kind == ValueKind::reference)
        return viewTarget(member);
    if (member.position != Member::nowhere)
        return std::nullopt;
    std::optional<Target> result;
    if (member.kind == ValueKind::text) {
        const auto* const key =
            std::ranges::find_if(quidKeys, [&](const auto& row) { return row.first == member.key; });
        if (key != std::end(quidKeys))
            result = quidTarget(*member.value, static_cast<std::size_t>(key - std::begin(quidKeys)));
    }
    levels.back().textBefore = member.kind == ValueKind::text ? member.value : nullptr;
    return result;
}

// Interactions have their numbers outside of the diagrams.
Target Targets::viewTarget(const Member& member) const
{
    const Elements::Number from = levels.back().object;
    const auto number = member.value->asReference();
    const Object* const view = !number ? nullptr
                               : member.key == "mechanism_ref"
                                   ? source.index.viewIn(nullptr, *source.elements.object(from), *number)
                                   : viewMeant(source, from, *number);
    return {source.elements.numberOf(view), view ? "found" : "missing"};
}

// The name is asked for only where the quid leads nowhere.
Target Targets::quidTarget(const Value& value, std::size_t key)
{
    const std::string_view quid = isFullName(value.raw()) ? std::string_view() : value.raw();
    if (!quid.empty()) {
        const reader::Reference byQuid = source.index.lookUp(quid, {});
        if (byQuid.state == ReferenceState::found || byQuid.state == ReferenceState::none)
            return targetOf(byQuid, source.elements);
    }
    const Object& object = *source.elements.object(levels.back().object);
    const bool isNamedBefore = key == 0 && levels.back().textBefore && !object.viewNumber();
    const std::string name = isNamedBefore ? levels.back().textBefore->asText() : nameBehind(key);
    return targetOf(source.index.lookUp(quid, name), source.elements);
}

// Looked for once in an object, however often it has such a key.
const std::string& Targets::nameBehind(std::size_t key)
{
    std::optional<std::string>& name = levels.back().names[key];
    const Object& object = *source.elements.object(levels.back().object);
    if (!name)
        name = key == 0 ? fullNameOf(object) : object.text(quidKeys[key].second);
    return *name;
}

} // namespace dump
