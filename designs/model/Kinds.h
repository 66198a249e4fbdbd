#pragma once

#include "designs/model/Design.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

// The kinds of elements and what they are called: in the formats, by tables with a row for each, and in a model file.

namespace design {

/// What becomes a classifier, and the stereotype of those that are no kind of their own in the host model. Objects are
/// among them: relations lead to them as they do to classes.
struct NamedClassifier {
    std::string_view type;
    ClassifierKind kind;
    std::string_view stereotype;
};

/// A relation between two elements, and the names of its ends in the file.
struct NamedRelationship {
    std::string_view type;
    RelationshipKind kind;
    std::string_view stereotype;
    const char* client;
    const char* supplier;
};

/// What a relation is called, in a model file and in messages.
[[nodiscard]] constexpr std::string_view keyOf(RelationshipKind kind)
{
    switch (kind) {
    case RelationshipKind::Generalization:
        return "generalization";
    case RelationshipKind::Realization:
        return "realization";
    case RelationshipKind::Dependency:
        break;
    }
    return "dependency";
}

/// The row of that type, or null.
template <class Row, std::size_t size>
const Row* rowOf(const std::array<Row, size>& table, std::string_view type)
{
    const auto* const row =
        std::find_if(table.begin(), table.end(), [type](const Row& each) { return each.type == type; });
    return row == table.end() ? nullptr : row;
}

} // namespace design
