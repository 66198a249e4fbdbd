#pragma once

#include "compare/facts/Snapshot.h"

#include <cstdint>
#include <optional>

/// What elements are known by. Two that have the same key, one in each state, can be the same element; nothing: this
/// element is not known by such a thing. `isNew` says which state it is in.
namespace compare {

using Key = std::optional<std::uint64_t> (*)(const Snapshot& state, bool isNew, const Node& node);

[[nodiscard]] bool isRelation(const reader::Object& object);
[[nodiscard]] bool isFeature(const reader::Object& object);

[[nodiscard]] std::optional<std::uint64_t> quidOf(const Node& node);
[[nodiscard]] std::optional<std::uint64_t> quidAndAll(const Node& node);

[[nodiscard]] std::optional<std::uint64_t> quidAndName(const Snapshot& state, bool isNew, const Node& node);
[[nodiscard]] std::optional<std::uint64_t> quidAndOwner(const Snapshot& state, bool isNew, const Node& node);
[[nodiscard]] std::optional<std::uint64_t> quidAndContent(const Snapshot& state, bool isNew, const Node& node);
[[nodiscard]] std::optional<std::uint64_t> ownerAndContent(const Snapshot& state, bool isNew, const Node& node);

// Units are all but features, whose names are in many classes.
[[nodiscard]] std::optional<std::uint64_t> unitNameAndContent(const Snapshot& state, bool isNew, const Node& node);
[[nodiscard]] std::optional<std::uint64_t> unitName(const Snapshot& state, bool isNew, const Node& node);
[[nodiscard]] std::optional<std::uint64_t> unitContent(const Snapshot& state, bool isNew, const Node& node);
[[nodiscard]] std::optional<std::uint64_t> featureNameAndContent(const Snapshot& state, bool isNew, const Node& node);

/// A feature of the same owner that has another name and is otherwise the same; `parameterByFacts` of those alone that
/// never have quids.
[[nodiscard]] std::optional<std::uint64_t> featureByFacts(const Snapshot& state, bool isNew, const Node& node);
[[nodiscard]] std::optional<std::uint64_t> parameterByFacts(const Snapshot& state, bool isNew, const Node& node);

/// An association that has its name and ends as before, in whichever package.
[[nodiscard]] std::optional<std::uint64_t> associationByEnds(const Snapshot& state, bool isNew, const Node& node);
/// One of the same package between the same elements, whatever its ends are called.
[[nodiscard]] std::optional<std::uint64_t> associationByOwner(const Snapshot& state, bool isNew, const Node& node);

/// A relation is known by what it leads to, an association by what all its ends are called and lead to.
[[nodiscard]] std::uint64_t endsOf(const Snapshot& state, bool isNew, std::uint32_t place);

/// What a reference leads to, as a number that is the same in both states when it is the same element. Elements must be
/// paired before.
[[nodiscard]] std::uint64_t targetKey(const Snapshot& state, bool isNew, const reader::Object& from);

} // namespace compare
