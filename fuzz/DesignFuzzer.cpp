#include "designs/Import.h"
#include "kiv/KivModelFile.h"
#include "reader/document/Document.h"
#include "Target.h"

#include <sstream>
#include <string>
#include <utility>

// The format that is read is given when the target is compiled; its name is that of --from.

// Any bytes either become a model file or are refused in words. No unit of a Rose file is read: it could be any file.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const design::Format* const format = design::formatNamed(PETAL_FUZZED_FORMAT);
    require(format != nullptr, "a format of this name");
    reader::ReadOptions reading;
    reading.readsUnits = false;
    const design::Source source{asText(data, size), "fuzzed", &reading};
    design::Report report;
    static_cast<void>(format->recognizes(source));
    std::ostringstream stream;
    try {
        const design::Converted converted = design::importDesign(*format, source, true, report);
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
