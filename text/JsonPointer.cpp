#include "text/JsonPointer.h"

#include "text/JsonFault.h"
#include "text/JsonWriter.h"

#include <algorithm>
#include <simdjson.h>

namespace text {

namespace {

constexpr std::string_view blanks = " \t\r\n";

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

std::size_t behindBlanks(std::string_view json, std::size_t at)
{
    return std::min(json.find_first_not_of(blanks, at), json.size());
}

} // namespace

std::string unescaped(std::string_view quoted)
{
    simdjson::dom::parser parser;
    std::string_view text;
    if (parser.parse(quoted.data(), quoted.size()).get(text) == simdjson::SUCCESS)
        return std::string(text);
    return std::string(quoted.substr(1, quoted.size() - 2));
}

void JsonWalk::goTo(std::size_t offset)
{
    while (at < json.size()) {
        if (json[at] == '"') {
            const std::size_t end = endOfJsonString(json, at);
            if (!around.empty() && around.back().keyIsNext) {
                around.back().key = json.substr(at, end + 1 - at);
                around.back().keyIsNext = false;
            }
            if (end >= offset)
                return;
            at = end;
        } else if (at >= offset) {
            return;
        } else {
            step();
        }
        ++at;
    }
}

// Over a byte outside of texts.
void JsonWalk::step()
{
    const char byte = json[at];
    if (byte == '{' || byte == '[') {
        around.push_back({at, byte == '{', byte == '{'});
    } else if (byte == '}' || byte == ']') {
        if (!around.empty())
            around.pop_back();
    } else if (byte == ',' && !around.empty()) {
        around.back().keyIsNext = around.back().isObject;
        ++around.back().index;
    }
}

std::string JsonWalk::pointer() const
{
    std::string pointer;
    for (const Level& level : around) {
        if (level.isObject && level.keyIsNext)
            break;
        pointer += '/';
        pointer += level.isObject ? escapedKey(unescaped(level.key)) : std::to_string(level.index);
    }
    return pointer;
}

std::string jsonPointerAt(std::string_view json, std::size_t offset)
{
    JsonWalk walk(json);
    walk.goTo(offset);
    return walk.pointer();
}

std::size_t endOfJsonValue(std::string_view json, std::size_t offset)
{
    std::size_t depth = 0;
    for (std::size_t at = offset; at < json.size(); ++at) {
        const char byte = json[at];
        if (byte == '"') {
            at = endOfJsonString(json, at);
        } else if (byte == '{' || byte == '[') {
            ++depth;
        } else if (byte == '}' || byte == ']') {
            depth -= depth > 0 ? 1U : 0U;
        } else if (depth == 0) {
            return std::min(json.find_first_of(" \t\r\n,:]}", at), json.size());
        }
        if (depth == 0)
            return std::min(at + 1, json.size());
    }
    return json.size();
}

std::optional<JsonMember> findJsonMember(std::string_view json, std::size_t object, std::string_view key)
{
    std::size_t at = behindBlanks(json, object + 1);
    while (at < json.size() && json[at] == '"') {
        const std::size_t end = endOfJsonString(json, at);
        const std::size_t colon = behindBlanks(json, end + 1);
        const std::size_t value = behindBlanks(json, colon + 1);
        if (json.substr(at + 1, end - at - 1) == key && value < json.size())
            return JsonMember{at, value};
        const std::size_t comma = behindBlanks(json, endOfJsonValue(json, value));
        at = behindBlanks(json, comma + 1);
    }
    return std::nullopt;
}

} // namespace text
