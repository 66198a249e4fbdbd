#include "kiv/KivModelFile.h"
#include "Target.h"

#include <algorithm>
#include <cctype>
#include <simdjson.h>
#include <sstream>
#include <string>

namespace {

// Whether a parser that looks at every byte finds nothing wrong.
bool isJson(std::string_view text)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    constexpr std::size_t deepestLevel = 4096;
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(byteOrderMark.size());
    simdjson::dom::parser parser;
    if (parser.allocate(std::max(text.size(), deepestLevel), deepestLevel) != simdjson::SUCCESS)
        std::abort();
    return parser.parse(text.data(), text.size()).error() == simdjson::SUCCESS;
}

void checkMessage(const std::string& message, std::string_view text)
{
    require(message.starts_with("fuzzed:"), "the file's name at the start of the message, not " + message);
    require(message.find(": expected ") != std::string::npos, "a whole message, not " + message);
    require(simdjson::validate_utf8(message), "UTF-8 in the message, not " + message);
    require(std::none_of(message.begin(), message.end(), [](char byte) { return byte >= 0 && byte < ' '; }),
            "a message of one line, not " + message);
    const bool namesLine = std::isdigit(static_cast<unsigned char>(message[std::string_view("fuzzed:").size()])) != 0;
    if (namesLine) // other faults have a place in the JSON
        require(!isJson(text), "another message for well-formed JSON, not " + message);
}

std::string written(KivModel& model)
{
    std::ostringstream stream;
    writeModelFile(model, stream);
    return stream.str();
}

} // namespace

// Any bytes either are a model or are refused in words.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text = asText(data, size);
    try {
        const LoadedModel loaded = parseModel(std::string(text), "fuzzed");
        require(loaded.model != nullptr, "a model");
        require(loaded.objects >= 1, "the model itself among the objects");
        require(isJson(text), "no model from broken JSON");
        const std::string once = written(*loaded.model);
        require(written(*parseModel(once, "written").model) == once, "the same file for what was read from it");
    } catch (const ModelFileError& error) {
        checkMessage(error.what(), text);
    }
    return 0;
}
