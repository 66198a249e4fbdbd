#pragma once

#include "compare/facts/Snapshot.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace compare {

/// Elements without partners that were renamed and changed at once: at least half of what is in one is in the other.
/// Gives places in the old and the new state, in their order; one may be in several pairs. Relations do not count.
[[nodiscard]] std::vector<std::pair<std::uint32_t, std::uint32_t>> alikeByContents(const Snapshot& before,
                                                                                   const Snapshot& after);

} // namespace compare
