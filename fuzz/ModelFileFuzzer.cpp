#include "kiv/KivModelFile.h"
#include "Target.h"

#include <algorithm>
#include <simdjson.h>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

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

void checkFault(const ModelFileFault& fault, std::string_view text)
{
    const std::string message = fault.message();
    require(fault.line >= 1 && fault.column >= 1, "a place for " + message);
    require(fault.text.starts_with("expected "), "a whole message, not " + message);
    require(simdjson::validate_utf8(message), "UTF-8 in the message, not " + message);
    require(std::none_of(message.begin(), message.end(), [](char byte) { return byte >= 0 && byte < ' '; }),
            "a message of one line, not " + message);
    if (fault.pointer.empty() && !fault.text.starts_with("expected an object with the design"))
        require(!isJson(text), "another message for well-formed JSON, not " + message);
}

void checkFaults(const ModelFileError& error, std::string_view text)
{
    const std::vector<ModelFileFault>& faults = error.getFaults();
    require(!faults.empty() && faults.size() <= error.getCount(), "a reason");
    require(std::string_view(error.what()).starts_with("fuzzed:"), "the file's name at the start");
    for (const ModelFileFault& fault : faults)
        checkFault(fault, text);
    const auto isBehind = [](const ModelFileFault& a, const ModelFileFault& b) {
        return std::tie(a.line, a.column) < std::tie(b.line, b.column);
    };
    require(std::is_sorted(faults.begin(), faults.end(), isBehind), "the order of the file");
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
        checkFaults(error, text);
    }
    return 0;
}
