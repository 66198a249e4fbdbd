#include "compare/facts/Values.h"

#include "reader/index/Kinds.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <system_error>
#include <vector>

namespace compare {

using reader::Object;
using reader::Value;
using reader::ValueKind;

namespace {

constexpr int deepestValue = 100; // what is deeper is in no file that a tool has written

void append(std::string& text, const Value& value, int depth);

void appendNumber(std::string& text, double number)
{
    char digits[32];
    auto* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    text.append(digits, end);
}

void appendObject(std::string& text, const Object& object, int depth)
{
    std::vector<const reader::Attribute*> attributes;
    for (const reader::Attribute& attribute : object.attributes())
        attributes.push_back(&attribute);
    std::stable_sort(attributes.begin(), attributes.end(),
                     [](const auto* a, const auto* b) { return a->key < b->key; });
    text.append("(").append(object.kind());
    for (const Value& name : object.names())
        text.append(" ").append(name.asText());
    for (const reader::Attribute* const attribute : attributes) {
        if (attribute->key == "quid" || attribute->key == "quidu")
            continue;
        text.append(" ").append(attribute->key).append("=");
        append(text, attribute->value, depth + 1);
    }
    text += ')';
}

void appendList(std::string& text, const reader::List& list, int depth)
{
    std::string_view separator;
    for (const Value& member : list.values()) {
        if (const Object* const object = member.asObject(); object && isNode(*object))
            continue;
        text += separator;
        append(text, member, depth + 1);
        separator = ", ";
    }
}

void append(std::string& text, const Value& value, int depth)
{
    if (depth > deepestValue)
        return;
    if (const auto point = value.asPoint()) {
        appendPoint(text, *point);
    } else if (const Object* const object = value.asObject()) {
        if (!isNode(*object))
            appendObject(text, *object, depth);
    } else if (const reader::List* const list = value.asList()) {
        appendList(text, *list, depth);
    } else if (const reader::TypedValue* const typed = value.asTyped()) {
        append(text, typed->value, depth + 1);
    } else if (value.kind() == ValueKind::number) {
        const auto number = value.asNumber();
        if (number && std::isfinite(*number) && value.raw().find('.') != std::string_view::npos)
            appendNumber(text, *number);
        else
            text += value.raw();
    } else if (value.kind() == ValueKind::text && value.raw().find('\\') == std::string_view::npos) {
        text += value.raw();
    } else if (value.kind() != ValueKind::reference) {
        text += value.asText();
    }
}

} // namespace

void appendPoint(std::string& text, const reader::Point& point)
{
    appendNumber(text += '(', point.x);
    appendNumber(text += ", ", point.y);
    text += ')';
}

bool isNode(const Object& object)
{
    const reader::KnownKind* const kind = reader::knownKindOf(object);
    if (!kind)
        return reader::diagramKindOf(object) || (!object.viewNumber() && object.has("quid"));
    return kind->diagram || kind->element != reader::ElementKind::none || object.is("Design", "Processes");
}

bool isOrdered(const Object& object)
{
    return object.is("ClassAttribute", "Operation", "Parameter");
}

void appendValue(std::string& text, const Value& value)
{
    append(text, value, 0);
}

bool areNear(std::string_view one, std::string_view other, std::int64_t distance)
{
    const auto numberAt = [](std::string_view& text) -> std::optional<std::int64_t> {
        std::int64_t number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc())
            return std::nullopt;
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        return number;
    };
    while (!one.empty() && !other.empty()) {
        const std::optional<std::int64_t> first = numberAt(one);
        const std::optional<std::int64_t> second = numberAt(other);
        if (first.has_value() != second.has_value())
            return false;
        if (first) {
            // the distance of two numbers of any signs
            const auto [least, greatest] = std::minmax(*first, *second);
            if (static_cast<std::uint64_t>(greatest) - static_cast<std::uint64_t>(least) >
                static_cast<std::uint64_t>(distance))
                return false;
            continue;
        }
        if (one.front() != other.front())
            return false;
        one.remove_prefix(1);
        other.remove_prefix(1);
    }
    return one.empty() && other.empty();
}

std::string_view lastPart(std::string_view name)
{
    const std::size_t colons = name.rfind("::");
    return colons == std::string_view::npos ? name : name.substr(colons + 2);
}

std::string nameOf(const Object& object)
{
    if (object.is("Design"))
        return {};
    if (object.is("Processes"))
        return "Deployment View";
    return reader::shownName(object);
}

} // namespace compare
