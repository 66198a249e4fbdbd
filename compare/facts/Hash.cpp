#include "compare/facts/Hash.h"

#include <functional>

namespace compare {

std::uint64_t hashOf(std::string_view text)
{
    return std::hash<std::string_view>()(text);
}

std::uint64_t mixed(std::uint64_t a, std::uint64_t b)
{
    std::uint64_t hash = (a ^ (b + 0x9E3779B97F4A7C15U + (a << 6U) + (a >> 2U))) * 0xBF58476D1CE4E5B9U;
    hash = (hash ^ (hash >> 27U)) * 0x94D049BB133111EBU;
    return hash ^ (hash >> 31U);
}

} // namespace compare
