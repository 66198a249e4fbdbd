#include "reader/document/CharsetHint.h"

#include "text/Encodings.h"
#include "text/Utf8.h"

#include <algorithm>
#include <optional>
#include <string>

namespace reader {

namespace {

constexpr std::string_view undefinedBytes = "\x81\x8D\x8F\x90\x9D";
constexpr std::size_t fewUndefined = 3;
constexpr std::size_t fewLetters = 8; // with so few, chance makes letters of a script
constexpr std::size_t sampleSize = std::size_t{64} * 1024;

// A charset and the letters of the scripts that it is for. All bytes are something in most charsets, so what fits is
// told by how many of the characters beyond ASCII are letters of one script. Arabic stands in front of Cyrillic, since
// Windows-1251 has a letter wherever Windows-1256 has one.
struct Candidate {
    std::string_view charset;
    char32_t firstLetter, lastLetter;
    std::size_t leastLetters; // of a hundred characters
};
constexpr Candidate candidates[] = {
    {"CP1256", 0x0600, 0x06FF, 90},
    {"CP936", 0x4E00, 0x9FFF, 90},
    {"CP1251", 0x0400, 0x04FF, 90},
};

bool isUndefined(char byte)
{
    return undefinedBytes.find(byte) != std::string_view::npos;
}

// Whole lines from that of the first undefined byte on: a character of two bytes never has a line end in it.
std::string_view sampleOf(std::string_view bytes, std::size_t firstUndefined)
{
    const std::size_t start = bytes.substr(0, firstUndefined).rfind('\n') + 1; // npos + 1 is 0
    bytes.remove_prefix(start);
    if (bytes.size() <= sampleSize)
        return bytes;
    const std::size_t end = bytes.substr(0, sampleSize).rfind('\n');
    return bytes.substr(0, end == std::string_view::npos ? sampleSize : end);
}

// Joiners and marks of direction belong to the words that they stand in.
bool isJoiner(char32_t character)
{
    return character >= 0x200C && character <= 0x200F;
}

// Such a letter beside one of another script is in no word.
bool isLatin(char byte)
{
    return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

bool fits(const Candidate& candidate, std::string_view sample)
{
    const std::optional<text::Decoded> decoded = text::decoded(sample, std::string(candidate.charset));
    if (!decoded || decoded->undecodable > 0)
        return false;
    std::size_t letters = 0;
    std::size_t all = 0;
    std::string_view text = decoded->text;
    bool isBehindLatin = false;
    while (!text.empty()) {
        const std::size_t length = std::max<std::size_t>(text::characterLength(text), 1);
        const char32_t character = text::codePoint(text.substr(0, length));
        text.remove_prefix(length);
        const bool isMixed = isBehindLatin || (!text.empty() && isLatin(text.front()));
        isBehindLatin = length == 1 && isLatin(static_cast<char>(character));
        if (length == 1 || isJoiner(character))
            continue;
        ++all;
        letters += !isMixed && character >= candidate.firstLetter && character <= candidate.lastLetter ? 1 : 0;
    }
    return letters * 100 >= all * candidate.leastLetters && letters >= fewLetters;
}

} // namespace

CharsetHint hintFor(std::string_view bytes)
{
    CharsetHint hint;
    hint.undefined = static_cast<std::size_t>(std::count_if(bytes.begin(), bytes.end(), isUndefined));
    if (hint.undefined < fewUndefined)
        return hint;
    hint.firstUndefined = bytes.find_first_of(undefinedBytes);
    const std::string_view sample = sampleOf(bytes, hint.firstUndefined);
    for (const Candidate& candidate : candidates)
        if (hint.charset.empty() && fits(candidate, sample))
            hint.charset = candidate.charset;
    return hint;
}

} // namespace reader
