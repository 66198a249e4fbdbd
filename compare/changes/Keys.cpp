#include "compare/changes/Keys.h"

#include "compare/facts/Hash.h"
#include "compare/facts/Values.h"
#include "reader/index/Kinds.h"

#include <string>
#include <string_view>

namespace compare {

using reader::ElementKind;
using reader::Object;

namespace {

std::optional<std::uint64_t> quidAnd(const Node& node, std::optional<std::uint64_t> other)
{
    const auto quid = quidOf(node);
    return quid && other ? std::optional(mixed(*quid, *other)) : std::nullopt;
}

// The place of the owner in the new state, if both states have it.
std::optional<std::uint64_t> ownerOf(const Snapshot& state, bool isNew, const Node& node)
{
    if (node.parent == nobody)
        return std::nullopt;
    const std::uint32_t owner = isNew ? node.parent : state[node.parent].partner;
    return owner == nobody || (isNew && state[owner].partner == nobody) ? std::nullopt
                                                                        : std::optional<std::uint64_t>(owner);
}

// What names an element that is in no file that was read.
std::string nameIn(const Object& from)
{
    for (const std::string_view key : {"supplier", "class", "type"})
        if (from.has(key))
            return from.text(key);
    return from.lastName();
}

} // namespace

bool isRelation(const Object& object)
{
    return reader::elementKindOf(object) == ElementKind::relation || object.is("Role", "Link");
}

bool isFeature(const Object& object)
{
    return reader::elementKindOf(object) == ElementKind::feature;
}

std::optional<std::uint64_t> quidOf(const Node& node)
{
    const std::string_view quid = node.object->get("quid").raw();
    return quid.empty() ? std::nullopt : std::optional(hashOf(quid));
}

std::optional<std::uint64_t> quidAndAll(const Node& node)
{
    return quidAnd(node, node.content);
}

std::optional<std::uint64_t> quidAndName(const Snapshot& /*state*/, bool /*isNew*/, const Node& node)
{
    return quidAnd(node, node.name == 0 ? std::nullopt : std::optional(node.name));
}

std::optional<std::uint64_t> quidAndOwner(const Snapshot& state, bool isNew, const Node& node)
{
    return quidAnd(node, ownerOf(state, isNew, node));
}

std::optional<std::uint64_t> quidAndContent(const Snapshot& /*state*/, bool /*isNew*/, const Node& node)
{
    return quidAnd(node, node.hasSubstance ? std::optional(node.content) : std::nullopt);
}

std::optional<std::uint64_t> ownerAndContent(const Snapshot& state, bool isNew, const Node& node)
{
    const auto owner = ownerOf(state, isNew, node);
    return owner && node.hasSubstance ? std::optional(mixed(*owner, node.content)) : std::nullopt;
}

std::optional<std::uint64_t> unitNameAndContent(const Snapshot& /*state*/, bool /*isNew*/, const Node& node)
{
    const bool isUnit = node.name != 0 && !isFeature(*node.object);
    return isUnit ? std::optional(mixed(node.name, node.content)) : std::nullopt;
}

std::optional<std::uint64_t> unitName(const Snapshot& /*state*/, bool /*isNew*/, const Node& node)
{
    const bool isUnit = node.name != 0 && !isFeature(*node.object);
    return isUnit ? std::optional(node.name) : std::nullopt;
}

std::optional<std::uint64_t> unitContent(const Snapshot& /*state*/, bool /*isNew*/, const Node& node)
{
    return node.hasSubstance && !isFeature(*node.object) ? std::optional(node.content) : std::nullopt;
}

std::optional<std::uint64_t> featureNameAndContent(const Snapshot& /*state*/, bool /*isNew*/, const Node& node)
{
    const bool isNamed = node.name != 0 && isFeature(*node.object);
    return isNamed ? std::optional(mixed(node.name, node.content)) : std::nullopt;
}

std::optional<std::uint64_t> featureByFacts(const Snapshot& state, bool isNew, const Node& node)
{
    const auto owner = isFeature(*node.object) ? ownerOf(state, isNew, node) : std::nullopt;
    return owner ? std::optional(mixed(*owner, node.content)) : std::nullopt;
}

std::optional<std::uint64_t> parameterByFacts(const Snapshot& state, bool isNew, const Node& node)
{
    return node.object->is("Parameter") ? featureByFacts(state, isNew, node) : std::nullopt;
}

std::optional<std::uint64_t> associationByEnds(const Snapshot& state, bool isNew, const Node& node)
{
    if (!node.object->is("Association"))
        return std::nullopt;
    return mixed(node.name, endsOf(state, isNew, state.placeOf(node)));
}

std::optional<std::uint64_t> associationByOwner(const Snapshot& state, bool isNew, const Node& node)
{
    const auto owner = node.object->is("Association") ? ownerOf(state, isNew, node) : std::nullopt;
    if (!owner)
        return std::nullopt;
    std::uint64_t ends = 0;
    state.forEachChild(state.placeOf(node),
                       [&](std::uint32_t role) { ends += targetKey(state, isNew, *state[role].object); });
    return mixed(*owner, ends);
}

std::uint64_t endsOf(const Snapshot& state, bool isNew, std::uint32_t place)
{
    if (!state[place].object->is("Association"))
        return targetKey(state, isNew, *state[place].object);
    std::uint64_t ends = 0;
    state.forEachChild(place, [&](std::uint32_t role) {
        ends += mixed(state[role].name, targetKey(state, isNew, *state[role].object));
    });
    return ends;
}

std::uint64_t targetKey(const Snapshot& state, bool isNew, const Object& from)
{
    const reader::Reference target = state.index().element(from);
    const std::uint32_t place = state.find(target.element);
    if (place == nobody)
        return hashOf(lastPart(nameIn(from)));
    const std::uint32_t common = isNew ? place : state[place].partner;
    return common == nobody ? mixed(1, place) : mixed(2, common);
}

} // namespace compare
