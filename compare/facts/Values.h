#pragma once

#include "reader/notation/Petal.h"

#include <cstdint>
#include <string>
#include <string_view>

/// Values as texts that are equal when they mean the same.

namespace compare {

/// Whether an object takes part in a comparison by itself: an element or a diagram, no part of one.
[[nodiscard]] bool isNode(const reader::Object& object);

/// Whether elements of its kind have an order that somebody has chosen: attributes, operations, parameters.
[[nodiscard]] bool isOrdered(const reader::Object& object);

/// Appends a value: texts without quotes, blocks as texts, typed values as what is in them, objects with their keys in
/// order. Elements in it are left out, and so are references to views: their numbers mean nothing.
void appendValue(std::string& text, const reader::Value& value);

/// Whether two texts differ in numbers alone, in each by no more than `distance`.
[[nodiscard]] bool areNear(std::string_view one, std::string_view other, std::int64_t distance);

void appendPoint(std::string& text, const reader::Point& point);

/// Behind the last `::` of a name.
[[nodiscard]] std::string_view lastPart(std::string_view name);

/// Name of an element without its path; empty for what Rose numbers because it has none.
[[nodiscard]] std::string nameOf(const reader::Object& object);

} // namespace compare
