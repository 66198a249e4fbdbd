#pragma once

#include <cstddef>
#include <vector>

namespace design {

/// For each of some things the indexes of those that it needs.
using Needs = std::vector<std::vector<std::size_t>>;

/// The indexes so that what is needed stands in front of what needs it, and the first that can be taken is. Of things
/// that need each other one is taken all the same, the first of them, once everything else that it needs is there.
[[nodiscard]] std::vector<std::size_t> neededFirst(const Needs& needs);

} // namespace design
