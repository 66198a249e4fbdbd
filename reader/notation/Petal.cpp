#include "reader/notation/Petal.h"

#include "text/Words.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace reader {

namespace {

constexpr Value noValue{};

template <typename T>
std::optional<T> parsed(std::string_view text)
{
    if (text.starts_with('+'))
        text.remove_prefix(1);
    T number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

bool equalsIgnoringCase(std::string_view text, std::string_view lower)
{
    return std::equal(text.begin(), text.end(), lower.begin(), lower.end(),
                      [](char a, char b) { return a == b || (a >= 'A' && a <= 'Z' && a - 'A' + 'a' == b); });
}

// `\\` and `\"` stand for their second character; before anything else a backslash is one.
std::string unescaped(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == '\\' || text[i + 1] == '"'))
            ++i;
        result += text[i];
    }
    return result;
}

std::string withoutBars(std::string_view block)
{
    std::string result;
    result.reserve(block.size());
    while (!block.empty()) {
        const std::size_t bar = std::min(block.find('|') + 1, block.size());
        const std::size_t lineEnd = std::min(block.find('\n'), block.size());
        std::string_view line = block.substr(bar, lineEnd - bar);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        result += line;
        if (lineEnd != block.size())
            result += '\n';
        block.remove_prefix(std::min(lineEnd + 1, block.size()));
    }
    return result;
}

void appendObjects(const Value& value, std::vector<const Object*>& objects)
{
    if (const Object* const object = value.asObject())
        objects.push_back(object);
    else if (const List* const list = value.asList())
        for (const Value& member : list->values())
            appendObjects(member, objects);
    else if (const TypedValue* const typed = value.asTyped())
        appendObjects(typed->value, objects);
}

} // namespace

std::string_view Value::raw() const
{
    switch (valueKind) {
    case ValueKind::text:
    case ValueKind::block:
    case ValueKind::number:
    case ValueKind::word:
    case ValueKind::reference:
    case ValueKind::point:
        return {text, length};
    default:
        return {};
    }
}

std::string Value::asText() const
{
    switch (valueKind) {
    case ValueKind::text:
        return unescaped(raw());
    case ValueKind::block:
        return withoutBars(raw());
    case ValueKind::number:
    case ValueKind::word:
        return std::string(raw());
    case ValueKind::typed: {
        const Value& inner = typed->value;
        return inner.kind() == ValueKind::typed ? std::string() : inner.asText();
    }
    default:
        return {};
    }
}

std::optional<double> Value::asNumber() const
{
    const Value& value = valueKind == ValueKind::typed ? typed->value : *this;
    if (value.valueKind != ValueKind::number)
        return std::nullopt;
    return parsed<double>(value.raw());
}

std::optional<std::int64_t> Value::asInt() const
{
    const Value& value = valueKind == ValueKind::typed ? typed->value : *this;
    if (value.valueKind != ValueKind::number)
        return std::nullopt;
    if (const auto whole = parsed<std::int64_t>(value.raw()))
        return whole;
    constexpr double firstTooLarge = 9.2233720368547758e18;
    const auto number = asNumber();
    if (!number || std::abs(*number) >= firstTooLarge)
        return std::nullopt;
    return static_cast<std::int64_t>(*number);
}

std::optional<bool> Value::asBool() const
{
    if (valueKind == ValueKind::word && equalsIgnoringCase(raw(), "true"))
        return true;
    if (valueKind == ValueKind::word && equalsIgnoringCase(raw(), "false"))
        return false;
    return std::nullopt;
}

std::optional<Point> Value::asPoint() const
{
    if (valueKind != ValueKind::point)
        return std::nullopt;
    const std::string_view inside = raw().substr(1, length - 2);
    const std::size_t comma = inside.find(',');
    const auto x = parsed<double>(text::trimmed(inside.substr(0, comma)));
    const auto y = parsed<double>(text::trimmed(inside.substr(comma + 1)));
    if (!x || !y)
        return std::nullopt;
    return Point{*x, *y};
}

std::optional<std::uint32_t> Value::asReference() const
{
    const auto number = valueKind == ValueKind::reference ? parsed<std::int64_t>(raw()) : std::nullopt;
    if (!number || *number < std::numeric_limits<std::int32_t>::min() ||
        *number > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;
    return static_cast<std::uint32_t>(*number);
}

const Object* Value::asObject() const
{
    return valueKind == ValueKind::object ? object : nullptr;
}

const List* Value::asList() const
{
    return valueKind == ValueKind::list || valueKind == ValueKind::tuple ? list : nullptr;
}

const TypedValue* Value::asTyped() const
{
    return valueKind == ValueKind::typed ? typed : nullptr;
}

const char* Value::position() const
{
    switch (valueKind) {
    case ValueKind::none:
        return nullptr;
    case ValueKind::text:
    case ValueKind::reference:
        return text - 1; // the quote or the @ in front
    case ValueKind::object:
        return object->position();
    case ValueKind::list:
    case ValueKind::tuple:
        return list->position();
    case ValueKind::typed:
        return typed->position;
    default:
        return text;
    }
}

std::vector<const Object*> List::objects() const
{
    std::vector<const Object*> result;
    for (const Value& value : values())
        if (const Object* const object = value.asObject())
            result.push_back(object);
    return result;
}

const char* Value::endPosition() const
{
    switch (valueKind) {
    case ValueKind::none:
        return nullptr;
    case ValueKind::text: {
        const char* const end = text + length;
        return *end == '"' ? end + 1 : end; // the second quote may be missing
    }
    case ValueKind::object:
        return object->endPosition();
    case ValueKind::list:
    case ValueKind::tuple:
        return list->endPosition();
    case ValueKind::typed:
        return typed->position + typed->length;
    default:
        return text + length;
    }
}

std::string Object::name() const
{
    return nameCount == 0 ? std::string() : firstName[0].asText();
}

std::string Object::lastName() const
{
    return nameCount == 0 ? std::string() : firstName[nameCount - 1].asText();
}

std::optional<std::uint32_t> Object::viewNumber() const
{
    return hasNumber ? std::optional(ownNumber) : std::nullopt;
}

const Value& Object::get(std::string_view key) const
{
    for (const Attribute& attribute : attributes())
        if (attribute.key == key)
            return attribute.value;
    return noValue;
}

std::int64_t Object::integer(std::string_view key, std::int64_t otherwise) const
{
    return get(key).asInt().value_or(otherwise);
}

double Object::number(std::string_view key, double otherwise) const
{
    return get(key).asNumber().value_or(otherwise);
}

bool Object::flag(std::string_view key, bool otherwise) const
{
    return get(key).asBool().value_or(otherwise);
}

std::vector<const Object*> Object::objects(std::string_view key) const
{
    const List* const list = get(key).asList();
    return list ? list->objects() : std::vector<const Object*>();
}

std::vector<const Object*> childrenOf(const Object& object)
{
    std::vector<const Object*> result;
    for (const Attribute& attribute : object.attributes())
        appendObjects(attribute.value, result);
    return result;
}

} // namespace reader
