#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

/// A keyword with room behind it, so that it is copied as a whole, whatever its length.
struct Keyword {
    static constexpr std::size_t room = 32;
    std::array<char, room> text = {};
    std::size_t length = 0;

    template <std::size_t Size>
    constexpr Keyword(const char (&keyword)[Size]) : length(Size - 1) // NOLINT(google-explicit-constructor): in tables
    {
        static_assert(Size <= room);
        std::copy(keyword, keyword + length, text.begin());
    }
};

/// Keywords that stand for the model's integer codes. The last entry of a table stands for every code that has no
/// entry of its own.
template <std::size_t Count>
[[nodiscard]] constexpr const Keyword& keyword(const std::array<Keyword, Count>& table, int code) noexcept
{
    return table[code >= 0 && static_cast<std::size_t>(code) < Count ? static_cast<std::size_t>(code) : Count - 1];
}

inline constexpr std::array<Keyword, 4> visibilityKeywords = {
    "\"Public\"",
    "\"Protected\"",
    "\"Private\"",
    "\"Implementation\"",
};

/// A class knows only these two.
inline constexpr std::array<Keyword, 2> classVisibilityKeywords = {
    "\"Public\"",
    "\"Implementation\"",
};

inline constexpr std::array<Keyword, 4> concurrencyKeywords = {
    "\"Sequential\"",
    "\"Guarded\"",
    "\"Active\"",
    "\"Synchronous\"",
};

inline constexpr std::array<Keyword, 3> containmentKeywords = {
    "\"By Value\"",
    "\"By Reference\"",
    "\"Unspecified\"",
};

/// By `classType`: the kind of object that a class becomes.
inline constexpr std::array<Keyword, 10> classKinds = {
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
