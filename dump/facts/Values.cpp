#include "dump/facts/Values.h"

namespace dump {

using reader::ValueKind;

std::string_view nameOfKind(const reader::Value& value)
{
    switch (value.kind()) {
    case ValueKind::none:
    case ValueKind::typed:
        return "value";
    case ValueKind::text:
        return "text";
    case ValueKind::block:
        return "block";
    case ValueKind::number:
        return "number";
    case ValueKind::word:
        return value.asBool() ? "boolean" : "word";
    case ValueKind::reference:
        return "reference";
    case ValueKind::point:
        return "point";
    case ValueKind::tuple:
        return "tuple";
    case ValueKind::object:
        return "object";
    case ValueKind::list:
        break;
    }
    return "list";
}

std::string_view textMeant(const reader::Value& value, std::string& room)
{
    const bool isPlain = value.kind() == ValueKind::text ? value.raw().find('\\') == std::string_view::npos
                                                         : value.kind() != ValueKind::block;
    if (isPlain)
        return value.raw();
    room = value.asText();
    return room;
}

} // namespace dump
