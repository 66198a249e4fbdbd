#pragma once

#include "reader/notation/Petal.h"

#include <string>
#include <string_view>

namespace dump {

/// The kind of a value as a dump calls it: "text", "block", "number", "boolean", "word", "reference", "point", "tuple",
/// "list", "value", "object".
[[nodiscard]] std::string_view nameOfKind(const reader::Value& value);

/// What a value says, without quotes, escapes and bars; a number, a point, a word as it stands; a reference without
/// `@`. It points into `value` or to `room`.
[[nodiscard]] std::string_view textMeant(const reader::Value& value, std::string& room);

} // namespace dump
