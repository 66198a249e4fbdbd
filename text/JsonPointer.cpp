#include "text/JsonPointer.h"

#include "text/JsonFault.h"
#include "text/JsonWriter.h"

#include <simdjson.h>
#include <vector>

namespace text {

namespace {

// An open object or list on the way to a value.
struct Level {
    bool isObject = false;
    bool keyIsNext = false;
    std::string key;
    std::size_t index = 0;
};

// A text without its quotes and escapes; as it stands when it cannot be read.
std::string unescaped(std::string_view quoted)
{
    simdjson::dom::parser parser;
    std::string_view text;
    if (parser.parse(quoted.data(), quoted.size()).get(text) == simdjson::SUCCESS)
        return std::string(text);
    return std::string(quoted.substr(1, quoted.size() - 2));
}

std::string escapedKey(const std::string& key)
{
    std::string result;
    for (const char byte : key) {
        const auto code = static_cast<unsigned char>(byte);
        if (byte == '~' || byte == '/') {
            result += byte == '~' ? "~0" : "~1";
        } else if (code < 0x20U || code == 0x7FU) {
            const std::string quoted = jsonQuoted({&byte, 1});
            result.append(quoted, 1, quoted.size() - 2);
        } else {
            result += byte;
        }
    }
    return result;
}

std::string pointerOf(const std::vector<Level>& levels)
{
    std::string pointer;
    for (const Level& level : levels) {
        if (level.isObject && level.keyIsNext)
            break;
        pointer += '/';
        pointer += level.isObject ? escapedKey(level.key) : std::to_string(level.index);
    }
    return pointer;
}

} // namespace

std::string jsonPointerAt(std::string_view json, std::size_t offset)
{
    std::vector<Level> levels;
    for (std::size_t at = 0; at < json.size(); ++at) {
        const char byte = json[at];
        if (byte == '"') {
            const std::size_t end = endOfJsonString(json, at);
            if (!levels.empty() && levels.back().keyIsNext) {
                levels.back().key = unescaped(json.substr(at, end + 1 - at));
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

} // namespace text
