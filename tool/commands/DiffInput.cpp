#include "tool/commands/DiffInput.h"

#include "text/Files.h"
#include "tool/input/DesignImport.h"
#include "tool/input/RoseText.h"

#include "compare/changes/Changes.h"
#include "compare/changes/Pairing.h"

#include "kiv/KivIbmRationalRose98ExportDllInterface.h"

#include <array>
#include <cstddef>

namespace {

// The model of what is no Rose file; none when the content is of no format but maybe of that of Rose.
std::optional<std::unique_ptr<KivModel>> modelOf(const std::string& content, const std::string& file)
{
    if (isModelFile(content)) {
        std::optional<LoadedModel> loaded = takeModelFile(content, text::fileName(file));
        return loaded ? std::move(loaded->model) : std::unique_ptr<KivModel>();
    }
    const design::Format* const format = isRoseFile(content) ? nullptr : design::formatOf({content, file});
    if (!format)
        return std::nullopt;
    return importDesign(*format, {content, file}, std::nullopt).converted.model;
}

reader::Document documentOf(KivModel& model, const std::string& file, std::string_view typeSystem)
{
    return {roseTextOf(model, typeSystem), file};
}

std::size_t differencesOf(const reader::Document& before, const reader::Document& after)
{
    compare::Snapshot first(before, compare::Depth::meaning);
    compare::Snapshot second(after, compare::Depth::meaning);
    compare::pair(first, second);
    return compare::changesOf({first, second, compare::Depth::meaning}).size();
}

void settleDocument(DiffInput& input, const reader::Document& other)
{
    const std::array typeSystems = {BP_SUPPORTED_TYPES_ENUM_C__.getText(), BP_SUPPORTED_TYPES_ENUM_AS_IS.getText(),
                                    BP_SUPPORTED_TYPES_ENUM_JAVA.getText(),
                                    BP_SUPPORTED_TYPES_ENUM_ORACLE_7_X___8.getText()};
    std::optional<std::size_t> fewest;
    for (const std::string_view typeSystem : typeSystems) {
        reader::Document document = documentOf(*input.model, input.file, typeSystem);
        const std::size_t differences = differencesOf(document, other);
        if (fewest && differences >= *fewest)
            continue;
        fewest = differences;
        input.document.emplace(std::move(document));
        if (differences == 0)
            return;
    }
}

} // namespace

std::optional<DiffInput> readDiffInput(const std::string& file, const ReadRequest& reading)
{
    DiffInput input;
    input.file = file;
    std::string content = text::readFile(file);
    if (std::optional<std::unique_ptr<KivModel>> model = modelOf(content, file)) {
        if (!*model)
            return std::nullopt;
        input.model = std::move(*model);
        return input;
    }
    try {
        input.document.emplace(std::move(content), file, readOptions(reading));
    } catch (const reader::NotPetal& error) {
        report(text::fileName(file) + ": " + error.what());
        return std::nullopt;
    }
    return input;
}

void settleDocuments(DiffInput& before, DiffInput& after)
{
    if (before.model && after.model)
        for (DiffInput* const input : {&before, &after})
            input->document.emplace(documentOf(*input->model, input->file, BP_SUPPORTED_TYPES_ENUM_AS_IS.getText()));
    else if (before.model)
        settleDocument(before, *after.document);
    else if (after.model)
        settleDocument(after, *before.document);
}
