#include "designs/formats/shared/Json.h"

#include "designs/formats/Format.h"
#include "text/JsonFault.h"
#include "text/Places.h"
#include "text/Utf8.h"

namespace design::json {

namespace {

[[noreturn]] void throwFault(std::string_view text, simdjson::error_code error)
{
    if (error == simdjson::MEMALLOC || error == simdjson::CAPACITY)
        throw UnreadableDesign("there is not enough memory for a file of this size");
    const auto fault = text::findJsonFault(text, simdjson::DEFAULT_MAX_DEPTH);
    if (!fault)
        throw UnreadableDesign(simdjson::error_message(error));
    throw UnreadableDesign(text::lineAndColumnAt(text, fault->offset).asText() + ": " + fault->message(text));
}

template <class Type>
Type valueOr(const Object& object, std::string_view key, Type otherwise)
{
    Type value = otherwise;
    return object[key].get(value) == simdjson::SUCCESS ? value : otherwise;
}

} // namespace

Document::Document(std::string_view text)
{
    if (text.starts_with(text::byteOrderMark))
        text.remove_prefix(text::byteOrderMark.size());
    const simdjson::error_code error = parser.parse(text.data(), text.size()).get(tree);
    if (error != simdjson::SUCCESS)
        throwFault(text, error);
}

std::string_view text(const Object& object, std::string_view key)
{
    return valueOr<std::string_view>(object, key, {});
}

bool flag(const Object& object, std::string_view key)
{
    return valueOr(object, key, false);
}

double number(const Object& object, std::string_view key)
{
    return valueOr(object, key, 0.0);
}

} // namespace design::json
