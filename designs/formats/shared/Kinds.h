#pragma once

#include "designs/model/Design.h"
#include "designs/model/Report.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

/// What the formats call the kinds of elements and their properties, and what every format says of what has no place.

namespace design {

/// What becomes a classifier, and the stereotype of those that are no kind of their own in the host model. Objects are
/// among them: relations lead to them as they do to classes.
struct NamedClassifier {
    std::string_view type;
    ClassifierKind kind;
    std::string_view stereotype = {};
};

/// A relation between two elements, and the names of its ends in the file.
struct NamedRelationship {
    std::string_view type;
    RelationshipKind kind;
    std::string_view stereotype = {};
    const char* client = "client";
    const char* supplier = "supplier";
};

/// The row of that type, or null.
template <class Row, std::size_t size>
const Row* rowOf(const std::array<Row, size>& table, std::string_view type)
{
    const auto* const row =
        std::find_if(table.begin(), table.end(), [type](const Row& each) { return each.type == type; });
    return row == table.end() ? nullptr : row;
}

template <std::size_t size>
bool isOneOf(const std::array<std::string_view, size>& words, std::string_view word)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// Words of UML; for other ones what a file means that says nothing.
[[nodiscard]] Visibility visibilityNamed(std::string_view word);
[[nodiscard]] Aggregation aggregationNamed(std::string_view word);
[[nodiscard]] Direction directionNamed(std::string_view word);

/// Of a class that is active or not.
[[nodiscard]] constexpr Concurrency concurrencyOf(bool isActive)
{
    return isActive ? Concurrency::Active : Concurrency::Sequential;
}

/// "StateMachine" as "state machine".
[[nodiscard]] std::string plainWords(std::string_view type);

} // namespace design
