#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <zlib.h>

/// What stands packed in pages.

inline std::string fromBase64(std::string_view text)
{
    constexpr std::string_view characters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    std::uint32_t bits = 0;
    unsigned count = 0;
    for (const char c : text.substr(0, text.find('='))) {
        bits = bits << 6U | static_cast<std::uint32_t>(characters.find(c));
        count += 6;
        if (count >= 8)
            bytes += static_cast<char>(bits >> (count -= 8) & 0xFFU);
    }
    return bytes;
}

// What the script of that id holds, unpacked.
inline std::string unpacked(const std::string& page, const std::string& id)
{
    const std::string start = "<script type=\"text/plain\" id=\"" + id + "\">";
    const std::size_t from = page.find(start) + start.size();
    const std::string packed = fromBase64(std::string_view(page).substr(from, page.find("</script>", from) - from));
    std::string text;
    for (uLongf size = 4096;; size *= 4) {
        text.resize(size);
        uLongf used = size;
        const int result = uncompress(reinterpret_cast<Bytef*>(text.data()), &used,
                                      reinterpret_cast<const Bytef*>(packed.data()), packed.size());
        text.resize(used);
        if (result != Z_BUF_ERROR)
            return result == Z_OK ? text : "not packed: " + packed;
    }
}
