#pragma once

#include <cstdint>
#include <string_view>

namespace compare {

/// Of a text.
[[nodiscard]] std::uint64_t hashOf(std::string_view text);

/// Of two hashes, whose order counts.
[[nodiscard]] std::uint64_t mixed(std::uint64_t a, std::uint64_t b);

} // namespace compare
