#pragma once

#include <optional>
#include <span>
#include <string_view>

/// The name among `known` that is most like `name`; nothing only when there are none.
[[nodiscard]] std::optional<std::string_view> nearestName(std::string_view name,
                                                          std::span<const std::string_view> known);
