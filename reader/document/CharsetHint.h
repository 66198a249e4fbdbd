#pragma once

#include <cstddef>
#include <string_view>

namespace reader {

/// Files written on a system with another charset often say that they are in Windows-1252. Then there are bytes in them
/// that it does not define.
struct CharsetHint {
    std::string_view charset; ///< for `--charset`: one in which the bytes are words; empty when none is known
    std::size_t undefined = 0;
    std::size_t firstUndefined = 0; ///< offset of the first of those
};

/// Looks at the bytes of a file that is to be in Windows-1252. A few undefined bytes say nothing.
[[nodiscard]] CharsetHint hintFor(std::string_view bytes);

} // namespace reader
