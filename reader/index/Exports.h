#pragma once

#include <string_view>

namespace reader {

/// Whether a file is one of those that the bridge writes, told by its first lines, which are the same in all of them.
[[nodiscard]] bool startsLikeAnExport(std::string_view text);

} // namespace reader
