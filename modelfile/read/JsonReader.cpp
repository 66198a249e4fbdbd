#include "modelfile/read/JsonReader.h"

#include "text/JsonFault.h"
#include "text/NearestName.h"
#include "text/Utf8.h"
#include "text/Words.h"

#include <algorithm>

namespace modelfile {

namespace {

constexpr std::size_t longestQuotation = 60;

// What a token that starts like this can be.
std::string describe(std::string_view token)
{
    switch (token.empty() ? '\0' : token.front()) {
    case '{':
        return "an object";
    case '[':
        return "a list";
    case 'n':
    case 't':
    case 'f':
        return std::string(token);
    case '"':
        break;
    default:
        return "the number " + text::shortened(token, longestQuotation);
    }
    return "the text " + std::string(shownPart(token)) + (token.size() > longestQuotation ? "...\"" : "");
}

bool isJsonToken(std::string_view token)
{
    const char first = token.empty() ? '\0' : token.front();
    return first == '{' || first == '[' || first == '"' || token == "null" || token == "true" || token == "false" ||
           text::isJsonNumber(token);
}

std::vector<std::string_view> namesOf(std::span<const CodeName> rows)
{
    std::vector<std::string_view> names;
    for (const CodeName& row : rows)
        names.push_back(row.name);
    return names;
}

} // namespace

std::string nearestOf(std::string_view name, std::span<const std::string_view> known)
{
    const std::optional<std::string_view> nearest = text::nearestName(name, known);
    return nearest ? text::jsonQuoted(*nearest) : "";
}

std::string_view shownPart(std::string_view text)
{
    return text::beginningOf(text, longestQuotation);
}

std::string alternatives(std::span<const std::string_view> choices)
{
    std::string result;
    for (std::size_t i = 0; i < choices.size(); ++i) {
        if (i > 0)
            result += i + 1 == choices.size() ? " or " : ", ";
        result += text::jsonQuoted(choices[i]);
    }
    return result;
}

void JsonReader::fail(const char* at, std::string expected, std::string found, std::string missing, std::string nearest)
{
    throw ContentError{at, std::move(expected), std::move(found), std::move(missing), std::move(nearest)};
}

void JsonReader::failValue(Value& value, std::string expected)
{
    const std::string_view token = tokenOf(value);
    if (!isJsonToken(token))
        throw SyntaxError{token.data(), "something that is no JSON value"};
    fail(token.data(), std::move(expected), describe(token));
}

std::string_view JsonReader::readText(Value& value, const char* expected)
{
    const std::string_view token = tokenOf(value);
    simdjson::ondemand::raw_json_string raw;
    if (token.empty() || token.front() != '"' || value.get_raw_json_string().get(raw) != simdjson::SUCCESS)
        failValue(value, expected);
    if (token.find('\\') == std::string_view::npos)
        return token.substr(1, token.size() - 2);
    const std::optional<std::string_view> read = unescape(raw, token.size());
    if (!read)
        fail(token.data(), "a text with valid escapes", describe(token));
    if (read->find('\0') != std::string_view::npos)
        fail(token.data(), "a text without U+0000", describe(token));
    return *read;
}

// The parser's own room for texts with escapes is meant for each text once, and some are looked at twice here.
std::optional<std::string_view> JsonReader::unescape(simdjson::ondemand::raw_json_string raw, std::size_t length)
{
    scratch.resize(length + simdjson::SIMDJSON_PADDING);
    std::uint8_t* to = scratch.data();
    std::string_view result;
    if (parser.unescape(raw, to).get(result) != simdjson::SUCCESS || !text::isUtf8(result))
        return std::nullopt;
    return result;
}

std::string_view JsonReader::keep(std::string_view read)
{
    const bool isInFile = read.data() >= text.data() && read.data() < text.data() + text.size();
    return isInFile ? read : kept.emplace_back(read);
}

bool JsonReader::takeInteger(Value& value)
{
    std::int64_t taken = 0;
    return text::isJsonNumber(tokenOf(value)) && value.get_int64().get(taken) == simdjson::SUCCESS;
}

std::string JsonReader::rangeOf(std::int64_t least, std::int64_t most)
{
    return "an integer from " + std::to_string(least) + " to " + std::to_string(most);
}

int JsonReader::readCode(Value& value, std::span<const CodeName> names)
{
    const std::string_view token = tokenOf(value);
    if (token.empty() || token.front() != '"')
        return readInteger<int>(value);
    const std::string_view name = readText(value);
    const std::optional<int> code = codeNamed(names, name);
    if (!code)
        fail(token.data(), alternatives(namesOf(names)) + ", or a number", describe(token), "",
             nearestOf(name, namesOf(names)));
    return *code;
}

bool JsonReader::readBool(Value& value)
{
    bool result = false;
    if (value.get_bool().get(result) != simdjson::SUCCESS)
        failValue(value, "true or false");
    return result;
}

std::size_t JsonReader::readChoice(Value& value, std::span<const std::string_view> choices)
{
    const std::string_view token = tokenOf(value);
    if (token.empty() || token.front() != '"')
        failValue(value, alternatives(choices));
    const std::string_view text = readText(value);
    const auto found = std::find(choices.begin(), choices.end(), text);
    if (found == choices.end())
        fail(token.data(), alternatives(choices), describe(token), "", nearestOf(text, choices));
    return static_cast<std::size_t>(found - choices.begin());
}

Array JsonReader::arrayOf(Value& value)
{
    Array array;
    if (value.get_array().get(array) != simdjson::SUCCESS)
        failValue(value, "a list");
    return array;
}

Object JsonReader::readObject(Value& value)
{
    Object object;
    if (value.get_object().get(object) != simdjson::SUCCESS)
        failValue(value, "an object");
    return object;
}

void JsonReader::rewind(Object& object) const
{
    bool isEmpty = false;
    if (const auto error = object.reset().get(isEmpty); error != simdjson::SUCCESS)
        throwSyntaxError(error, nullptr);
}

std::string_view JsonReader::readKey(simdjson::ondemand::field& field, const char*& at)
{
    const char* const raw = field.key().raw();
    at = raw - 1;
    const char* end = raw;
    bool isEscaped = false;
    for (; *end != '"'; end += *end == '\\' ? 2 : 1)
        isEscaped = isEscaped || *end == '\\';
    const auto length = static_cast<std::size_t>(end - raw);
    if (!isEscaped)
        return {raw, length};
    const std::optional<std::string_view> key = unescape(field.key(), length + 2);
    if (!key)
        fail(at, "a key with valid escapes", describe({at, length + 2}));
    return *key;
}

Object JsonReader::readDocument(simdjson::ondemand::document& theDocument)
{
    document = &theDocument;
    Object object;
    const auto error = theDocument.get_object().get(object);
    if (error == simdjson::SUCCESS)
        return object;
    std::string_view token;
    if (error != simdjson::INCORRECT_TYPE || theDocument.raw_json_token().get(token) != simdjson::SUCCESS ||
        !isJsonToken(text::trimmed(token)))
        throwSyntaxError(error, nullptr);
    fail(text.data(), "an object with the design", describe(text::trimmed(token)));
}

void JsonReader::requireEnd() const
{
    if (locate())
        throwSyntaxError(simdjson::TRAILING_CONTENT, nullptr);
}

void JsonReader::throwSyntaxError(simdjson::error_code error, const char* fallback) const
{
    const char* const at = locate();
    throw SyntaxError{at ? at : fallback, simdjson::error_message(error)};
}

// Where the parser stands; null at the end of the text.
const char* JsonReader::locate() const
{
    const char* at = nullptr;
    return document && document->current_location().get(at) == simdjson::SUCCESS ? at : nullptr;
}

} // namespace modelfile
