#include "Json.h"

#include "text/JsonWriter.h"

#include <algorithm>
#include <simdjson.h>
#include <utility>

namespace {

Json treeOf(simdjson::dom::element element)
{
    switch (element.type()) {
    case simdjson::dom::element_type::OBJECT: {
        Json object(Json::Kind::Object);
        const simdjson::dom::object source = element.get_object().value_unsafe();
        for (const auto& [key, value] : source)
            object.members.push_back({std::string(key), treeOf(value)});
        return object;
    }
    case simdjson::dom::element_type::ARRAY: {
        Json list(Json::Kind::List);
        const simdjson::dom::array source = element.get_array().value_unsafe();
        for (const auto value : source)
            list.members.push_back({{}, treeOf(value)});
        return list;
    }
    case simdjson::dom::element_type::STRING:
        return Json(std::string(element.get_string().value_unsafe()));
    case simdjson::dom::element_type::INT64:
        return Json(element.get_int64().value_unsafe());
    case simdjson::dom::element_type::BOOL: {
        Json boolean(Json::Kind::Boolean);
        boolean.boolean = element.get_bool().value_unsafe();
        return boolean;
    }
    default:
        return {};
    }
}

void append(std::string& text, const Json& value)
{
    switch (value.kind) {
    case Json::Kind::Null:
        text += "null";
        break;
    case Json::Kind::Boolean:
        text += value.boolean ? "true" : "false";
        break;
    case Json::Kind::Integer:
        text += std::to_string(value.integer);
        break;
    case Json::Kind::Text:
        text += text::jsonQuoted(value.text);
        break;
    case Json::Kind::List:
    case Json::Kind::Object: {
        text += value.isObject() ? '{' : '[';
        for (const JsonMember& member : value.members) {
            if (&member != &value.members.front())
                text += ',';
            if (value.isObject())
                text += text::jsonQuoted(member.key) + ':';
            append(text, member.value);
        }
        text += value.isObject() ? '}' : ']';
    }
    }
}

} // namespace

Json::Json() = default;
Json::Json(Kind theKind) : kind(theKind) {}
Json::Json(std::string theText) : kind(Kind::Text), text(std::move(theText)) {}
Json::Json(std::int64_t theInteger) : kind(Kind::Integer), integer(theInteger) {}

Json* Json::find(std::string_view key)
{
    const auto found = std::find_if(members.begin(), members.end(), [&](const auto& each) { return each.key == key; });
    return found == members.end() ? nullptr : &found->value;
}

std::string_view Json::textOf(std::string_view key)
{
    const Json* const value = find(key);
    return value ? std::string_view(value->text) : std::string_view();
}

void Json::set(std::string_view key, Json value)
{
    if (Json* const member = find(key))
        *member = std::move(value);
    else
        members.push_back({std::string(key), std::move(value)});
}

void Json::remove(std::string_view key)
{
    std::erase_if(members, [&](const JsonMember& member) { return member.key == key; });
}

std::optional<Json> parseJson(std::string_view text)
{
    simdjson::dom::parser parser;
    simdjson::dom::element root;
    if (parser.parse(text.data(), text.size()).get(root) != simdjson::SUCCESS)
        return std::nullopt;
    return treeOf(root);
}

std::string toText(const Json& value)
{
    std::string text;
    append(text, value);
    return text;
}
