#pragma once

#include "reader/notation/Petal.h"
#include "reader/notation/Scanner.h"

#include <string>
#include <string_view>

namespace reader {

/// The start of a text as a message shows it.
[[nodiscard]] std::string shortened(std::string_view text);

/// What stands in a file, as a message names it: `the text "Order"`, `(object Class "Order"`.
[[nodiscard]] std::string describe(const Token& token);
[[nodiscard]] std::string describe(const Object& object);

} // namespace reader
