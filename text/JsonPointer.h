#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace text {

/// JSON pointer of the value or key that begins at `offset`; the text must be well-formed up to there. It stays one
/// line whatever the keys hold.
[[nodiscard]] std::string jsonPointerAt(std::string_view json, std::size_t offset);

} // namespace text
