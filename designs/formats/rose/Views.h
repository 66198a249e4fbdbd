#pragma once

#include "designs/formats/rose/Reading.h"

#include <optional>
#include <string_view>
#include <vector>

/// Where the views of diagrams are and how they look, in pixels.

namespace design::rose {

inline constexpr double unitsInPixel = 300.0 / 96.0; ///< of a file at zoom 100

[[nodiscard]] std::optional<Point> pointIn(const Object& view, std::string_view key);
[[nodiscard]] std::vector<Point> verticesOf(const Object& view);
[[nodiscard]] Appearance appearanceOf(const Object& view);
/// Around the centre; of a view without a size its place alone.
[[nodiscard]] std::optional<Rectangle> boundsOf(const Object& view);

} // namespace design::rose
