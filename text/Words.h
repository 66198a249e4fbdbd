#pragma once

#include <string>
#include <string_view>

namespace text {

/// Without blanks, tabs and line ends at both ends.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// With the letters A to Z as small ones, whatever the locale.
[[nodiscard]] std::string lowerCase(std::string_view text);

} // namespace text
