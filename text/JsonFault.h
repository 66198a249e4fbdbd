#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Why a text is no JSON, in words for the person who wrote it. A parser refuses it first; this goes through it again.

namespace text {

struct JsonFault {
    std::size_t offset = 0;            ///< of the first byte that cannot stand where it stands; the size at the end
    std::string expected;              ///< e.g. "a comma or ]"
    std::string found;                 ///< e.g. "a comment, which JSON does not have"
    std::optional<std::size_t> opened; ///< place of the bracket that is still open, where the text ends too early

    /// "expected a comma or ], found the end of the text (the [ of 3:5 is open)"
    [[nodiscard]] std::string message(std::string_view json) const;
};

/// The first fault, or none when there is none. Values may lie in each other `deepestLevel` deep.
[[nodiscard]] std::optional<JsonFault> findJsonFault(std::string_view json, std::size_t deepestLevel);

/// Whether `token` is a number in JSON's notation.
[[nodiscard]] bool isJsonNumber(std::string_view token);

/// Place of the closing quote of the text whose opening quote stands at `quote`; the size when there is none.
[[nodiscard]] std::size_t endOfJsonString(std::string_view json, std::size_t quote);

} // namespace text
