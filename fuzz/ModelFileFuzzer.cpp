#include "ModelFile.h"
#include "Target.h"

#include <algorithm>
#include <simdjson.h>
#include <string>

// Any bytes either are a model or are refused in words.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        const LoadedModel loaded = parseModel(asText(data, size), "fuzzed");
        require(loaded.model != nullptr, "a model");
        require(loaded.objects >= 1, "the model itself among the objects");
    } catch (const ModelFileError& error) {
        const std::string message = error.what();
        require(message.starts_with("fuzzed:"), "the file's name at the start of the message, not " + message);
        require(message.find(": expected ") != std::string::npos, "a whole message, not " + message);
        require(simdjson::validate_utf8(message), "UTF-8 in the message, not " + message);
        require(std::none_of(message.begin(), message.end(), [](char byte) { return byte >= 0 && byte < ' '; }),
                "a message of one line, not " + message);
    }
    return 0;
}
