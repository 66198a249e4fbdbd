#include "tool/commands/DiffInput.h"

#include "text/Files.h"
#include "tool/input/DesignImport.h"
#include "tool/input/RoseText.h"

#include "compare/changes/Pairing.h"
#include "reader/index/Exports.h"

#include "kiv/KivIbmRationalRose98ExportDllInterface.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

namespace {

// A file of which it is known what it is.
struct Content {
    std::string file;
    std::string bytes;
    bool isModel = false;
    const design::Format* format = nullptr; // of another design

    [[nodiscard]] bool isDesign() const { return isModel || format; }
};

Content contentOf(const std::string& file)
{
    Content content = {file, text::readFile(file)};
    content.isModel = isModelFile(content.bytes);
    if (!content.isModel && !isRoseFile(content.bytes))
        content.format = design::formatOf({content.bytes, file});
    return content;
}

// None after its mistakes were told.
std::unique_ptr<KivModel> modelOf(const Content& content, const ReadRequest& reading)
{
    if (content.isModel) {
        std::optional<LoadedModel> loaded = takeModelFile(content.bytes, text::fileName(content.file));
        return loaded ? std::move(loaded->model) : nullptr;
    }
    const design::Format& format =
        content.format ? *content.format : formatOfImport(content.bytes, content.file, "rose");
    const reader::ReadOptions options = readOptions(reading);
    ImportedDesign imported = importDesign(format, {content.bytes, content.file, &options}, std::nullopt);
    for (const design::ReportEntry& entry : imported.report.leftEntries())
        if (entry.kind == design::missingUnit)
            report(entry.name + ": not loaded: " + entry.reason);
    return std::move(imported.converted.model);
}

std::optional<DiffInput> inputOf(Content content, bool isBesideDesign, const ReadRequest& reading)
{
    DiffInput input;
    input.file = content.file;
    if (content.isDesign() || (isBesideDesign && !reader::startsLikeAnExport(content.bytes))) {
        input.model = modelOf(content, reading);
        return input.model ? std::optional(std::move(input)) : std::nullopt;
    }
    try {
        input.document.emplace(std::move(content.bytes), content.file, readOptions(reading));
    } catch (const reader::NotPetal& error) {
        report(text::fileName(content.file) + ": " + error.what());
        return std::nullopt;
    }
    return input;
}

reader::Document documentOf(KivModel& model, const std::string& file, std::string_view typeSystem)
{
    return {roseTextOf(model, typeSystem), file};
}

bool isLanguage(const compare::Change& change)
{
    return change.what == "language";
}

std::size_t differencesOf(const reader::Document& before, const reader::Document& after)
{
    compare::Snapshot first(before, compare::Depth::meaning);
    compare::Snapshot second(after, compare::Depth::meaning);
    compare::pair(first, second);
    const std::vector<compare::Change> changes = compare::changesOf({first, second, compare::Depth::meaning});
    return changes.size() - static_cast<std::size_t>(std::ranges::count_if(changes, isLanguage));
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

} // namespace

bool DiffInputs::isOfExport(const compare::Change& change) const
{
    return (before.model || after.model) && isLanguage(change);
}

std::int64_t DiffInputs::nearness() const
{
    constexpr std::int64_t oneAndAHalfPixels = 5;
    return before.model || after.model ? oneAndAHalfPixels : 0;
}

std::optional<DiffInputs> readDiffInputs(const std::string& oldFile, const std::string& newFile,
                                         const ReadRequest& reading)
{
    Content oldContent = contentOf(oldFile);
    Content newContent = contentOf(newFile);
    const bool oldIsDesign = oldContent.isDesign();
    std::optional<DiffInput> before = inputOf(std::move(oldContent), newContent.isDesign(), reading);
    std::optional<DiffInput> after = inputOf(std::move(newContent), oldIsDesign, reading);
    if (!before || !after)
        return std::nullopt;
    settleDocuments(*before, *after);
    return DiffInputs{std::move(*before), std::move(*after)};
}
