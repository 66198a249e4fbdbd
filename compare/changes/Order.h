#pragma once

#include <cstdint>
#include <vector>

namespace compare {

/// Which members of a sequence of different numbers stand out of order: the fewest without which the rest grows.
[[nodiscard]] std::vector<bool> outOfOrder(const std::vector<std::uint32_t>& sequence);

} // namespace compare
