#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace text {

/// Bytes of some encoding as UTF-8.
struct Decoded {
    std::string text;
    std::size_t undecodable = 0;      ///< number of bytes that are no character there; U+FFFD stands for them
    std::size_t firstUndecodable = 0; ///< offset in `text` of the first of those
};

/// Whether the system knows an encoding of that name.
[[nodiscard]] bool isEncoding(const std::string& name);

/// Converts bytes by an encoding that the system knows by name; none when it knows no such encoding. A byte order mark
/// of UTF-16 and UTF-32 goes. The bytes that Windows-1252 does not define are taken as the control characters that
/// Latin-1 has there, so every byte is something in it.
[[nodiscard]] std::optional<Decoded> decoded(std::string_view bytes, const std::string& encoding);

/// The character of a byte in Windows-1252.
[[nodiscard]] char32_t windowsCharacter(char byte);

} // namespace text
