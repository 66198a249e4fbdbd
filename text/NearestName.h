#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace text {

/// The name among `known` that `name` was surely meant to be: the first of those to which the fewest steps lead, case
/// aside, but none that takes more steps than a third of the word's letters. A step inserts, deletes or replaces a
/// letter, or exchanges two neighbours.
[[nodiscard]] std::optional<std::string_view> nearestName(std::string_view name,
                                                          std::span<const std::string_view> known);

} // namespace text
