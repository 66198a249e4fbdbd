#pragma once

#include <array>
#include <string_view>

/// Keywords that stand for the model's integer codes. The last entry of a table stands for every code that has no
/// entry of its own.
template <std::size_t Count>
[[nodiscard]] constexpr std::string_view keyword(const std::array<std::string_view, Count>& table, int code) noexcept
{
    return table[code >= 0 && static_cast<std::size_t>(code) < Count ? static_cast<std::size_t>(code) : Count - 1];
}

inline constexpr std::array<std::string_view, 4> visibilityKeywords = {
    "\"Public\"",
    "\"Protected\"",
    "\"Private\"",
    "\"Implementation\"",
};

/// A class knows only these two.
inline constexpr std::array<std::string_view, 2> classVisibilityKeywords = {
    "\"Public\"",
    "\"Implementation\"",
};

inline constexpr std::array<std::string_view, 4> concurrencyKeywords = {
    "\"Sequential\"",
    "\"Guarded\"",
    "\"Active\"",
    "\"Synchronous\"",
};

inline constexpr std::array<std::string_view, 3> containmentKeywords = {
    "\"By Value\"",
    "\"By Reference\"",
    "\"Unspecified\"",
};

/// By `classType`: the kind of object that a class becomes.
inline constexpr std::array<std::string_view, 10> classKinds = {
    "Class",
    "Class",
    "Parameterized_Class",
    "Instantiated_Class",
    "Class_Utility",
    "Parameterized_Class_Utility",
    "Instantiated_Class_Utility",
    "Class",
    "Metaclass",
    "Class",
};

/// Class types with a meaning of their own.
inline constexpr int dataClassType = 0;
inline constexpr int interfaceClassType = 9;
