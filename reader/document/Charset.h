#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace reader {

/// The text of a file in UTF-8, without a byte order mark.
struct DecodedText {
    std::string text;
    std::string encoding;             ///< what iconv calls the encoding of the bytes
    std::size_t undecodable = 0;      ///< number of bytes that are no character there; U+FFFD stands for them
    std::size_t firstUndecodable = 0; ///< offset in `text` of the first of those
    std::string_view fitting;         ///< a charset in which the bytes are words where they are none in `encoding`
};

/// What iconv calls the encoding that a `charSet` number of Windows stands for.
[[nodiscard]] std::string_view encodingOfCharSet(std::int64_t charSet);

/// The number behind `charSet` in the `Petal` object at the start of `bytes`; 0 when there is none.
[[nodiscard]] std::int64_t charSetIn(std::string_view bytes);

/// Decodes a file: by `charset` if that is not empty, else by its byte order mark, else as UTF-8 if it is that, else by
/// its `charSet`. Throws NotPetal when iconv does not know `charset`.
[[nodiscard]] DecodedText decode(std::string bytes, const std::string& charset);

} // namespace reader
