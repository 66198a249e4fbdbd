#include "text/Utf8.h"

#include "text/Encodings.h"

#include <algorithm>
#include <array>
#include <simdjson.h>

namespace text {

namespace {

// The first two bytes of a character decide whether there is one: what follows them is any continuation.
struct LeadRange {
    unsigned char firstLead, lastLead, firstSecond, lastSecond;
    std::size_t length;
};
constexpr std::array<LeadRange, 8> leadRanges = {{{0xC2, 0xDF, 0x80, 0xBF, 2},
                                                  {0xE0, 0xE0, 0xA0, 0xBF, 3},
                                                  {0xE1, 0xEC, 0x80, 0xBF, 3},
                                                  {0xED, 0xED, 0x80, 0x9F, 3},
                                                  {0xEE, 0xEF, 0x80, 0xBF, 3},
                                                  {0xF0, 0xF0, 0x90, 0xBF, 4},
                                                  {0xF1, 0xF3, 0x80, 0xBF, 4},
                                                  {0xF4, 0xF4, 0x80, 0x8F, 4}}};

bool isBetween(char32_t value, char32_t first, char32_t last)
{
    return value >= first && value <= last;
}

} // namespace

bool isUtf8(std::string_view text)
{
    return text.empty() || simdjson::validate_utf8(text.data(), text.size());
}

std::size_t characterLength(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80U)
        return 1;
    const auto* const range = std::find_if(leadRanges.begin(), leadRanges.end(), [&](const LeadRange& each) {
        return lead >= each.firstLead && lead <= each.lastLead;
    });
    if (range == leadRanges.end() || text.size() < range->length)
        return 0;
    const auto second = static_cast<unsigned char>(text[1]);
    if (second < range->firstSecond || second > range->lastSecond)
        return 0;
    const std::string_view rest = text.substr(2, range->length - 2);
    return std::all_of(rest.begin(), rest.end(), isContinuation) ? range->length : 0;
}

char32_t codePoint(std::string_view character)
{
    constexpr std::array<unsigned, 5> leadMasks = {0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t result = static_cast<unsigned char>(character.front()) & leadMasks[character.size()];
    for (const char byte : character.substr(1))
        result = result << 6U | (static_cast<unsigned char>(byte) & 0x3FU);
    return result;
}

void appendCharacter(std::string& text, char32_t codePoint)
{
    const auto trail = [&](unsigned shift) { text += static_cast<char>(0x80U | (codePoint >> shift & 0x3FU)); };
    if (codePoint < 0x80U) {
        text += static_cast<char>(codePoint);
    } else if (codePoint < 0x800U) {
        text += static_cast<char>(0xC0U | codePoint >> 6U);
        trail(0);
    } else if (codePoint < 0x10000U) {
        text += static_cast<char>(0xE0U | codePoint >> 12U);
        trail(6);
        trail(0);
    } else {
        text += static_cast<char>(0xF0U | codePoint >> 18U);
        trail(12);
        trail(6);
        trail(0);
    }
}

std::size_t countCharacters(std::string_view text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return !isContinuation(byte); }));
}

std::string_view beginningOf(std::string_view text, std::size_t mostBytes)
{
    std::size_t cut = std::min(mostBytes, text.size());
    while (cut > 0 && cut < text.size() && isContinuation(text[cut]))
        --cut;
    return text.substr(0, cut);
}

std::string shortened(std::string_view text, std::size_t mostBytes)
{
    std::string result(beginningOf(text, mostBytes));
    if (result.size() < text.size())
        result += "...";
    return result;
}

bool isWellFormed(std::string_view text)
{
    return text.find('\0') == std::string_view::npos && isUtf8(text);
}

std::string mended(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        if (length == 0)
            appendCharacter(result, windowsCharacter(text.front()));
        else if (text.front() != '\0')
            result += text.substr(0, length);
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result;
}

CharacterKind kindOf(char32_t codePoint)
{
    constexpr char32_t arabicLetterMark = 0x061C;
    constexpr char32_t deleteCharacter = 0x7F;
    if (codePoint == '\t' || codePoint == '\n' || codePoint == '\r' || isBetween(codePoint, 0x2028, 0x2029))
        return CharacterKind::Blank;
    const bool isControl = codePoint < 0x20 || isBetween(codePoint, deleteCharacter, 0x9F);
    const bool turnsDirection = codePoint == arabicLetterMark || isBetween(codePoint, 0x200E, 0x200F) ||
                                isBetween(codePoint, 0x202A, 0x202E) || isBetween(codePoint, 0x2066, 0x2069);
    const bool isNoCharacter = (codePoint & 0xFFFEU) == 0xFFFEU || isBetween(codePoint, 0xFDD0, 0xFDEF);
    return isControl || turnsDirection || isNoCharacter ? CharacterKind::Hostile : CharacterKind::Shown;
}

std::string onOneLine(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        const char32_t character = length == 0 ? windowsCharacter(text.front()) : codePoint(text.substr(0, length));
        switch (kindOf(character)) {
        case CharacterKind::Shown:
            appendCharacter(result, character);
            break;
        case CharacterKind::Blank:
            result += ' ';
            break;
        case CharacterKind::Hostile:
            result += '?';
            break;
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result;
}

} // namespace text
