#pragma once

#include "kiv/KivOptions.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Model files to measure with, as texts.

/// A design as people make them, of about `objects` model objects: packages of 50 classes, each with 8 attributes and
/// 5 operations with 2 arguments; documentation on a third of everything; associations, generalizations and one
/// diagram in each package.
[[nodiscard]] std::string ordinaryDesign(std::size_t objects);

/// A design that is large in one respect only, where an export could cost more than its size.
struct Trap {
    std::string_view name;
    std::string (*design)(std::size_t size);
    std::size_t divisor = 1; ///< what a size of one million is divided by, where the design would be too large
    std::vector<std::pair<const KivBridgeOptionLiteral*, std::string_view>> options = {};
};
[[nodiscard]] std::span<const Trap> traps();
