#include "tool/commands/Commands.h"

#include "text/Files.h"
#include "tool/input/DesignImport.h"
#include "tool/output/FileRoles.h"
#include "tool/output/OutputFile.h"
#include "tool/results/OutputNames.h"
#include "tool/terminal/Amounts.h"
#include "tool/terminal/Progress.h"

#include "kiv/KivModelFile.h"

#include <algorithm>
#include <iostream>
#include <sstream>
#include <utility>

namespace {

std::string modelFileOf(KivModel& model, const KivIds& ids)
{
    std::ostringstream stream;
    writeModelFile(model, stream, [&](const KivObject& object) {
        const auto found = ids.find(&object);
        return found == ids.end() ? std::string() : found->second;
    });
    return std::move(stream).str();
}

// What is to be written, and what there is to say of the design that it comes from.
struct Input {
    std::string modelFile;
    std::string contents;
    std::optional<ImportedDesign> imported;
};

// A design, or a model file whose boxes are to be placed; none after its mistakes were told.
std::optional<Input> readInput(const ImportRequest& request, const std::string& path)
{
    const std::string content = text::readFile(path);
    const std::optional<bool> hasLayout = request.design.hasLayout;
    if (request.design.format.empty() && hasLayout.value_or(false) && isModelFile(content)) {
        KivIds ids;
        std::optional<LoadedModel> loaded = takeModelFile(content, text::fileName(path), &ids);
        if (!loaded)
            return std::nullopt;
        loaded->model = placeBoxes(std::move(loaded->model), text::fileName(path), request.isQuiet);
        return Input{modelFileOf(*loaded->model, ids), contentsOf(*loaded->model), std::nullopt};
    }
    const design::Format& format = formatOfImport(content, path, request.design.format);
    Input input;
    const reader::ReadOptions reading = readOptions(request.reading);
    input.imported = importDesign(format, {content, path, &reading}, hasLayout);
    input.contents = contentsOf(*input.imported->converted.model);
    input.modelFile = modelFileOf(*input.imported->converted.model, input.imported->converted.ids);
    return input;
}

int importFile(const ImportRequest& request, const Making& making)
{
    const text::ReadRecord read;
    const std::optional<Input> input = readInput(request, making.input);
    if (!input)
        return invalidModel;
    refuseClashes({{making.output, "the output"}, {request.design.reportFile, "the report"}}, read);
    showProgress("writing what is in " + text::fileName(making.input));
    OutputFile output(making.output);
    output.write(input->modelFile);
    std::optional<OutputFile> reportFile;
    if (!request.design.reportFile.empty())
        reportFile.emplace(request.design.reportFile).write(reportAsJson(input->imported));
    std::vector<OutputFile*> files = {&output};
    if (reportFile)
        files.push_back(&*reportFile);
    OutputFile::commitAll(files);
    clearProgress();
    if (input->imported && !request.isQuiet)
        std::cerr << summaryOf(*input->imported);
    if (making.output != "-" && !request.isQuiet)
        tellMade(making.output, input->contents + ", " + sizeText(input->modelFile.size()));
    return done;
}

// The name of the design without its folder and ending, with that of a model file.
std::string defaultModelName(const std::string& design)
{
    return design == "-" ? "-" : stemOf(design) + ".model.json";
}

int listFormats()
{
    std::size_t longest = 0;
    for (const design::Format& format : design::formats())
        longest = std::max(longest, format.name.size());
    for (const design::Format& format : design::formats())
        if (format.read)
            std::cout << format.name << std::string(longest + 2 - format.name.size(), ' ') << format.description
                      << '\n';
    return endOfOutput(done, exportFailed);
}

} // namespace

int runImport(const ImportRequest& request)
{
    if (request.listsFormats)
        return listFormats();
    if (request.designs.empty()) {
        report("DESIGN is required; see petal import --help");
        return wrongUsage;
    }
    if (request.isQuiet)
        forbidProgress();
    return reportFailures("", request.output, [&] {
        const Outputs outputs = outputsFor(request.designs, request.output, defaultModelName);
        refuseForSeveral("--report", request.design.reportFile, outputs.makings.size());
        return makeAll(outputs.makings, [&](const Making& making) {
            return reportFailures(making.input, making.output, [&] { return importFile(request, making); });
        });
    });
}
