#pragma once

#include <optional>
#include <span>
#include <string_view>

/// The name among `known` that `name` was most likely meant to be; nothing when none is close.
[[nodiscard]] std::optional<std::string_view> nearestName(std::string_view name,
                                                          std::span<const std::string_view> known);
