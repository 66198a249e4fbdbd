#pragma once

#include "kiv/KivRelationship.h"

/// The blocks of numbers that objects reserve for what exists in the file only. An object's own number is the first of
/// its block; the places of the rest count from it. An object of any other kind reserves its own number.

namespace associationBlock {
inline constexpr long size = 4;
inline constexpr long nameLabel = 1;
inline constexpr long stereotypeLabel = 2;
inline constexpr long constraintLabel = 3;
/// One more, for the line to the association class; reserved only where there is one.
inline constexpr long classLine = 4;
} // namespace associationBlock

namespace roleBlock {
inline constexpr long size = 4;
inline constexpr long nameLabel = 1;
inline constexpr long cardinalityLabel = 2;
inline constexpr long constraintLabel = 3;
} // namespace roleBlock

namespace dependencyBlock {
inline constexpr long size = 2;
inline constexpr long stereotypeLabel = 1;
} // namespace dependencyBlock

namespace classDiagramBlock {
inline constexpr long size = 3000;
/// From here on for notes, their lines and free labels.
inline constexpr long notes = 1;
} // namespace classDiagramBlock

/// For each supertype its tree, and behind it for each pair with a subtype the relationship and its view, the
/// stereotype label of that view, and a number that is not used. Supertypes and subtypes are given by their places in
/// the generalization, where a null counts.
class GeneralizationBlock {
public:
    explicit GeneralizationBlock(const KivGeneralization& generalization)
        : number(generalization.pid), supertypes(static_cast<long>(generalization.supertypes.count())),
          treeSize(pairSize * static_cast<long>(generalization.subtypes.count()) + 1)
    {
    }

    [[nodiscard]] long size() const { return treeSize * supertypes; }
    /// The number of a supertype's tree.
    [[nodiscard]] long tree(std::size_t supertype) const { return number + treeSize * static_cast<long>(supertype); }
    /// The number of a pair, from which its places count.
    [[nodiscard]] long pair(std::size_t supertype, std::size_t subtype) const
    {
        return tree(supertype) + 1 + pairSize * static_cast<long>(subtype);
    }
    static constexpr long stereotypeLabel = 1;

private:
    static constexpr long pairSize = 3;

    long number;
    long supertypes;
    long treeSize;
};
