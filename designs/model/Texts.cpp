#include "designs/model/Texts.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <simdjson.h>

namespace design {

namespace {

constexpr std::string_view blanks = " \t\r\n";

// A bound of a multiplicity: digits, or one of the signs for "as many as you like".
std::optional<std::int32_t> parseBound(std::string_view text)
{
    if (text == "*" || text == "n" || text == "N" || text == "m" || text == "-1")
        return -1;
    std::int32_t bound = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), bound);
    if (error != std::errc() || end != text.data() + text.size() || bound < 0)
        return std::nullopt;
    return bound;
}

// The characters of Windows-1252 from 0x80 to 0x9F; 0 where it has none.
constexpr std::array<char16_t, 32> windowsCharacters = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

void appendWindowsCharacter(std::string& text, unsigned char byte)
{
    constexpr char16_t replacement = 0xFFFD;
    char16_t character = byte;
    if (byte < 0xA0U)
        character = windowsCharacters[byte - 0x80U] == 0 ? replacement : windowsCharacters[byte - 0x80U];
    if (character >= 0x800U) {
        text += static_cast<char>(0xE0U | (character >> 12U));
        text += static_cast<char>(0x80U | ((character >> 6U) & 0x3FU));
    } else {
        text += static_cast<char>(0xC0U | (character >> 6U));
    }
    text += static_cast<char>(0x80U | (character & 0x3FU));
}

// Bytes that a character takes whose first byte is this one.
std::size_t characterLength(unsigned char lead)
{
    return lead < 0x80U ? 1 : lead < 0xE0U ? 2 : lead < 0xF0U ? 3 : 4;
}

int hexDigit(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'a' && digit <= 'f')
        return digit - 'a' + 10;
    return digit >= 'A' && digit <= 'F' ? digit - 'A' + 10 : -1;
}

} // namespace

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::optional<Multiplicity> parseMultiplicity(std::string_view text)
{
    text = trimmed(text);
    if (text.starts_with('[') && text.ends_with(']'))
        text = trimmed(text.substr(1, text.size() - 2));
    if (text.empty())
        return std::nullopt;
    const std::size_t dots = text.find("..");
    const auto lower = parseBound(trimmed(text.substr(0, dots)));
    const auto upper = dots == std::string_view::npos ? lower : parseBound(trimmed(text.substr(dots + 2)));
    if (!lower || !upper)
        return Multiplicity{0, -1, std::string(text)};
    return Multiplicity{*lower < 0 ? 0 : *lower, *upper, {}};
}

std::string textOf(const Multiplicity& multiplicity)
{
    if (!multiplicity.text.empty())
        return multiplicity.text;
    std::string upper = multiplicity.upper < 0 ? "*" : std::to_string(multiplicity.upper);
    if (multiplicity.lower == multiplicity.upper)
        return upper;
    return std::to_string(multiplicity.lower) + ".." + upper;
}

std::optional<std::uint32_t> parseColour(std::string_view text)
{
    if ((text.size() != 7 && text.size() != 4) || text.front() != '#')
        return std::nullopt;
    std::uint32_t colour = 0;
    for (const char digit : text.substr(1)) {
        const int value = hexDigit(digit);
        if (value < 0)
            return std::nullopt;
        colour = colour << 4U | static_cast<std::uint32_t>(value);
        if (text.size() == 4)
            colour = colour << 4U | static_cast<std::uint32_t>(value);
    }
    return colour;
}

bool isWellFormed(std::string_view text)
{
    return text.find('\0') == std::string_view::npos && simdjson::validate_utf8(text.data(), text.size());
}

std::string mended(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const auto lead = static_cast<unsigned char>(text[at]);
        const std::string_view character = text.substr(at, characterLength(lead));
        if (lead == 0) {
            ++at;
        } else if (simdjson::validate_utf8(character.data(), character.size())) {
            result += character;
            at += character.size();
        } else {
            appendWindowsCharacter(result, lead);
            ++at;
        }
    }
    return result;
}

} // namespace design
