#include "designs/formats/shared/Json.h"

#include "designs/formats/Format.h"
#include "text/JsonFault.h"
#include "text/Places.h"
#include "text/Utf8.h"

namespace design {

namespace {

[[noreturn]] void throwFault(std::string_view text, simdjson::error_code error)
{
    text::JsonFault fault;
    fault.expected = "well-formed JSON";
    fault.found = simdjson::error_message(error);
    if (const auto found = text::findJsonFault(text, simdjson::DEFAULT_MAX_DEPTH))
        fault = *found;
    throw UnreadableDesign(text::lineAndColumnAt(text, fault.offset).asText() + ": " + fault.message(text));
}

} // namespace

JsonDocument::JsonDocument(std::string_view text)
{
    if (text.starts_with(text::byteOrderMark))
        text.remove_prefix(text::byteOrderMark.size());
    const simdjson::error_code error = parser.parse(text.data(), text.size()).get(document);
    if (error == simdjson::MEMALLOC || error == simdjson::CAPACITY)
        throw UnreadableDesign("there is not enough memory for a file of this size");
    if (error != simdjson::SUCCESS)
        throwFault(text, error);
}

} // namespace design
