#include "tool/terminal/Amounts.h"

#include <array>
#include <cstdio>

std::string counted(std::size_t count, std::string_view one, std::string_view many)
{
    return std::to_string(count).append(" ").append(count == 1 ? one : many);
}

std::string sizeText(std::size_t bytes)
{
    constexpr std::size_t thousand = 1000;
    constexpr double firstRounded = 9.95; // from here on two digits need no point
    constexpr double firstOfNext = 999.5;
    if (bytes < thousand)
        return counted(bytes, "byte", "bytes");
    auto size = static_cast<double>(bytes);
    const char* unit = "";
    for (const char* const next : {"kB", "MB", "GB"}) {
        if (size < firstOfNext)
            break;
        size /= thousand;
        unit = next;
    }
    std::array<char, 40> text;
    std::snprintf(text.data(), text.size(), size < firstRounded ? "%.1f %s" : "%.0f %s", size, unit);
    return text.data();
}
