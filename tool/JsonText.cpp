#include "JsonText.h"

#include <algorithm>
#include <simdjson.h>
#include <vector>

LineAndColumn lineAndColumnAt(std::string_view text, std::size_t offset)
{
    const std::string_view before = text.substr(0, offset);
    const auto lineFeeds = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    const std::size_t lineStart = before.rfind('\n') + 1; // npos + 1 is 0
    const auto characters =
        std::count_if(before.begin() + static_cast<std::ptrdiff_t>(lineStart), before.end(),
                      [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; });
    return {lineFeeds + 1, static_cast<std::size_t>(characters) + 1};
}

namespace {

// Control characters as JSON writes them, so that a message stays one line; everything else as it is.
void appendJson(std::string& text, char byte)
{
    constexpr const char* digits = "0123456789abcdef";
    const auto code = static_cast<unsigned char>(byte);
    if (code == '\n')
        text += "\\n";
    else if (code < 0x20U)
        text.append("\\u00").append(1, digits[code >> 4U]).append(1, digits[code & 0xFU]);
    else
        text += byte;
}

// An open object or list on the way to a value.
struct Level {
    bool isObject = false;
    bool keyIsNext = false;
    std::string key;
    std::size_t index = 0;
};

std::size_t stringEnd(std::string_view text, std::size_t quote)
{
    std::size_t end = quote + 1;
    while (end < text.size() && text[end] != '"')
        end += text[end] == '\\' ? 2 : 1;
    return std::min(end, text.size());
}

// A text without its quotes and escapes; as it stands when it cannot be read.
std::string unescaped(std::string_view quoted)
{
    simdjson::dom::parser parser;
    std::string_view text;
    if (parser.parse(quoted.data(), quoted.size()).get(text) == simdjson::SUCCESS)
        return std::string(text);
    return std::string(quoted.substr(1, quoted.size() - 2));
}

std::size_t characterLength(char lead)
{
    const auto byte = static_cast<unsigned char>(lead);
    return byte < 0x80U ? 1 : byte < 0xE0U ? 2 : byte < 0xF0U ? 3 : 4;
}

std::size_t validUtf8Length(std::string_view text)
{
    std::size_t at = 0;
    while (at < text.size()) {
        const std::string_view character = text.substr(at, characterLength(text[at]));
        if (!simdjson::validate_utf8(character.data(), character.size()))
            break;
        at += character.size();
    }
    return at;
}

std::string pointerOf(const std::vector<Level>& levels)
{
    std::string pointer;
    for (const Level& level : levels) {
        if (level.isObject && level.keyIsNext)
            break;
        pointer += '/';
        if (!level.isObject) {
            pointer += std::to_string(level.index);
            continue;
        }
        for (const char byte : level.key) {
            if (byte == '~' || byte == '/')
                pointer += byte == '~' ? "~0" : "~1";
            else
                appendJson(pointer, byte);
        }
    }
    return pointer;
}

} // namespace

std::string pointerAt(std::string_view text, std::size_t offset)
{
    std::vector<Level> levels;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char byte = text[at];
        if (byte == '"') {
            const std::size_t end = stringEnd(text, at);
            if (!levels.empty() && levels.back().keyIsNext) {
                levels.back().key = unescaped(text.substr(at, end + 1 - at));
                levels.back().keyIsNext = false;
            }
            if (end >= offset)
                break;
            at = end;
        } else if (at >= offset) {
            break;
        } else if (byte == '{' || byte == '[') {
            levels.push_back({byte == '{', byte == '{', {}, 0});
        } else if (byte == '}' || byte == ']') {
            if (!levels.empty())
                levels.pop_back();
        } else if (byte == ',' && !levels.empty()) {
            levels.back().keyIsNext = levels.back().isObject;
            ++levels.back().index;
        }
    }
    return pointerOf(levels);
}

std::size_t firstStrayByte(std::string_view text)
{
    const std::size_t valid = validUtf8Length(text);
    for (std::size_t at = 0; at < valid; ++at) {
        if (text[at] != '"')
            continue;
        const std::size_t end = stringEnd(text, at);
        for (std::size_t inside = at + 1; inside < std::min(end, valid); ++inside)
            if (static_cast<unsigned char>(text[inside]) < 0x20U)
                return inside;
        if (end >= text.size())
            return at;
        at = end;
    }
    return valid;
}

std::size_t firstMisplacedByte(std::string_view text)
{
    std::vector<bool> areObjects; // the brackets open
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char byte = text[at];
        if (byte == '"') {
            at = stringEnd(text, at);
        } else if (byte == '{' || byte == '[') {
            areObjects.push_back(byte == '{');
        } else if (byte == '}' || byte == ']') {
            if (areObjects.empty() || areObjects.back() != (byte == '}'))
                return at;
            areObjects.pop_back();
            if (areObjects.empty())
                return std::min(text.find_first_not_of(" \t\r\n", at + 1), text.size());
        }
    }
    return text.size();
}

bool isJsonNumber(std::string_view token)
{
    std::size_t at = 0;
    const auto digits = [&] {
        const std::size_t start = at;
        while (at < token.size() && token[at] >= '0' && token[at] <= '9')
            ++at;
        return at > start;
    };
    const auto take = [&](std::string_view any) {
        const bool found = at < token.size() && any.find(token[at]) != std::string_view::npos;
        at += found ? 1U : 0U;
        return found;
    };
    take("-");
    if (!take("0") && !digits())
        return false;
    if (take(".") && !digits())
        return false;
    if (take("eE")) {
        take("+-");
        if (!digits())
            return false;
    }
    return at == token.size();
}

std::string jsonQuoted(std::string_view text)
{
    std::string result = "\"";
    for (const char byte : text)
        if (byte == '"' || byte == '\\')
            result.append(1, '\\').append(1, byte);
        else
            appendJson(result, byte);
    return result + '"';
}
