#pragma once

#include "kiv/KivRelationship.h"

#include <algorithm>

/// Which elements take part in an export.

/// The level code of elements that are not exported.
inline constexpr int hiddenLevel = 2;

[[nodiscard]] inline bool isHidden(const KivModelObject& object)
{
    return object.modelLevel == hiddenLevel;
}

/// A role without a participant is no role of its association, though it has its numbers.
[[nodiscard]] inline bool isWritten(const KivAssociationRole* role)
{
    return role && role->participant;
}

/// Whether the level code excludes the association or a class that it touches.
[[nodiscard]] inline bool isHidden(const KivAssociation& association)
{
    const auto touchesHidden = [](const KivAssociationRole* role) {
        return isWritten(role) && isHidden(*role->participant);
    };
    return association.modelLevel == hiddenLevel ||
           std::any_of(association.roles.begin(), association.roles.end(), touchesHidden);
}

/// The cardinality text of a role.
[[nodiscard]] inline KivString cardinalityOf(const KivAssociationRole& role)
{
    int lower = 0;
    int upper = 0;
    decodeMultiplicity(role.multiplicity, &lower, &upper);
    return buildMultiplicity(lower, upper);
}

/// Nothing is said about a cardinality of none.
[[nodiscard]] inline bool isShown(const KivString& cardinality)
{
    return !cardinality.isEmpty() && cardinality != "0";
}
