#include "designs/Import.h"
#include "kiv/KivModelFile.h"
#include "Target.h"

#include <sstream>
#include <string>
#include <utility>

// The format that is read is given when the target is compiled; its name is that of --from.

// Any bytes either become a model file or are refused in words.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const design::Format* const format = design::formatNamed(PETAL_FUZZED_FORMAT);
    require(format != nullptr, "a format of this name");
    const std::string_view text = asText(data, size);
    design::Report report;
    static_cast<void>(format->recognizes({text, "fuzzed"}));
    std::ostringstream stream;
    try {
        const design::Converted converted = design::importDesign(*format, {text, "fuzzed"}, true, report);
        writeModelFile(*converted.model, stream, [&](const KivObject& object) { return converted.idOf(object); });
    } catch (const design::UnreadableDesign& error) {
        require(!std::string_view(error.what()).empty(), "a reason");
        return 0;
    }
    try {
        require(parseModel(std::move(stream).str(), "imported").objects > 1, "more than an empty model");
    } catch (const ModelFileError& error) {
        require(false, "a valid model file, not " + std::string(error.what()));
    }
    return 0;
}
