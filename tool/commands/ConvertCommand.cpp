#include "tool/commands/Commands.h"

#include "designs/model/Counts.h"
#include "text/Files.h"
#include "text/NearestName.h"
#include "text/Utf8.h"
#include "text/Words.h"
#include "tool/input/DesignImport.h"
#include "tool/input/RoseText.h"
#include "tool/results/ConvertedFiles.h"
#include "tool/results/OutputNames.h"
#include "tool/terminal/Amounts.h"
#include "tool/terminal/Progress.h"

#include "kiv/KivIbmRationalRose98ExportDllInterface.h"

#include <algorithm>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <utility>

namespace {

namespace fs = std::filesystem;

// What goes in and out by other ways than the table of formats: the host's own models, and the files of the bridge.
constexpr std::string_view modelFormat = "model";
constexpr std::string_view modelEnding = ".model.json";
constexpr std::string_view roseFormat = "rose";
constexpr std::string_view roseEnding = ".mdl";

bool goesOut(std::string_view name)
{
    const design::Format* const format = design::formatNamed(name);
    return name == modelFormat || name == roseFormat || (format && format->write);
}

std::vector<std::string_view> formatsOut()
{
    std::vector<std::string_view> names = {modelFormat};
    for (const design::Format& format : design::formats())
        if (goesOut(format.name))
            names.push_back(format.name);
    return names;
}

// The name of the format that is written, from the option or the ending of the output.
std::string_view targetOf(const ConvertRequest& request)
{
    if (!request.target.empty())
        return request.target;
    const std::string name = text::lowerCase(fs::path(request.output).filename().string());
    if (name.ends_with(modelEnding))
        return modelFormat;
    if (name.ends_with(roseEnding))
        return roseFormat;
    if (const design::Format* const format = design::formatWrittenTo(name))
        return format->name;
    throw WrongUsage(request.output.empty() || request.output == "-" || meansFolder(request.output)
                         ? "the format to write is not known; give it with --to"
                         : request.output + ": no format is known by this ending; give one with --to");
}

struct Input {
    design::Design design;
    std::string format;
    std::vector<design::ElementCount> counts; // as they were read
    design::Report report;
};

// Takes away the package that the Rose file of a model has around all others.
void openLogicalView(design::Design& design)
{
    std::vector<design::Package>& packages = design.root.packages;
    if (packages.size() == 1)
        packages = std::vector<design::Package>(std::move(packages.front().packages));
}

// The design that a file holds. A model file is read by way of its Rose file; none after its mistakes were told.
std::optional<Input> readInput(const ConvertRequest& request, const std::string& path)
{
    std::string content = text::readFile(path);
    const reader::ReadOptions reading = readOptions(request.reading);
    design::Source source{content, path, &reading};
    Input input;
    const design::Format* format = nullptr;
    bool isInView = true;
    if (request.design.format == modelFormat || (request.design.format.empty() && isModelFile(content))) {
        std::optional<LoadedModel> loaded = takeModelFile(content, text::fileName(path));
        if (!loaded)
            return std::nullopt;
        isInView = hasLogicalView(*loaded->model); // before the export makes one
        content = roseTextOf(*loaded->model, BP_SUPPORTED_TYPES_ENUM_AS_IS.getText());
        source.text = content;
        input.format = modelFormat;
        format = design::formatNamed(roseFormat);
    } else {
        format = &formatOfImport(content, path, request.design.format);
        input.format = format->name;
    }
    input.design = readSource(*format, source, input.report);
    if (!isInView)
        openLogicalView(input.design);
    input.counts = design::countElements(input.design);
    return input;
}

std::string endingOf(const std::string& place)
{
    return text::lowerCase(fs::path(place).extension().string());
}

void write(const ConvertRequest& request, const design::Format& target, const Making& making, Input& input,
           ConvertedFiles& files, bool isFolder)
{
    design::settleFor(target, input.design, request.design.hasLayout.value_or(true), input.report);
    const design::Catalogue catalogue(input.design.root);
    const std::string stem = stemOf(isFolder || files.place() == "-" ? making.input : files.place());
    try {
        target.write({input.design, catalogue, stem, isFolder, endingOf(files.place())}, files, input.report);
    } catch (const design::UnwritableDesign& error) {
        throw WrongUsage(files.place() + ": " + error.what());
    }
}

std::string pluralOf(std::string_view kind)
{
    const std::string word(kind);
    if (word.ends_with("y"))
        return word.substr(0, word.size() - 1) + "ies";
    return word + (word.ends_with("s") || word.ends_with("x") ? "es" : "s");
}

std::string summaryOf(const std::string& path, const Input& input)
{
    std::string text = text::onOneLine(text::fileName(path)) + " (" + input.format + "): ";
    const char* separator = "";
    for (const design::ElementCount& each : input.counts) {
        text.append(separator).append(counted(each.count, each.kind, pluralOf(each.kind)));
        separator = ", ";
    }
    return text + '\n' + linesOf(input.report);
}

std::string reportAsJson(const Input& input, const design::Format& target)
{
    constexpr int deepestLine = 2; // an entry a line
    std::string text;
    text::JsonWriter json(text, {.deepestLine = deepestLine, .isForTerminal = true});
    json.beginObject().member("from", input.format).member("to", target.name).beginObject("read");
    for (const design::ElementCount& each : input.counts)
        json.member(each.kind, std::uint64_t{each.count});
    json.endObject();
    writeReport(json, input.report);
    json.endObject();
    return text + '\n';
}

int convertFile(const ConvertRequest& request, const design::Format& target, const Making& making, bool isFolder)
{
    const text::ReadRecord read;
    std::optional<Input> input = readInput(request, making.input);
    if (!input)
        return invalidModel;
    const OutputFolder folder(isFolder ? making.output : std::string());
    ConvertedFiles files(target, making.output, isFolder);
    showProgress("writing what is in " + text::fileName(making.input));
    write(request, target, making, *input, files, isFolder);
    if (files.count() == 0) {
        report(text::fileName(making.input) + ": there is nothing in it that " + std::string(target.name) +
               " can hold");
        return exportFailed;
    }
    files.commit(request.design.reportFile, reportAsJson(*input, target), read);
    clearProgress();
    if (request.isQuiet)
        return done;
    std::cerr << summaryOf(making.input, *input);
    if (files.place() != "-")
        tellMade(files.place(), counted(files.count(), "file", "files") + ", " + sizeText(files.bytes()));
    return done;
}

// The outputs: for a format with a file for each diagram the folders, of several inputs one for each.
Outputs placesFor(const ConvertRequest& request, const design::Format& target, bool areFolders)
{
    if (!areFolders)
        return outputsFor(request.inputs, request.output, [&](const std::string& input) {
            return input == "-" ? input : stemOf(input).append(target.endings.front());
        });
    if (request.inputs.size() == 1)
        return {{{request.inputs.front(), request.output.empty() ? "." : request.output}}, OutputFolder("")};
    return {foldersFor(request.inputs, request.output), OutputFolder("")};
}

int convertFiles(const ConvertRequest& request, const design::Format& target)
{
    const bool areFolders = target.isWrittenByDiagram && (request.output.empty() || meansFolder(request.output));
    const Outputs outputs = placesFor(request, target, areFolders);
    return makeAll(outputs.makings, [&](const Making& making) {
        return reportFailures(making.input, making.output,
                              [&] { return convertFile(request, target, making, areFolders); });
    });
}

int convertToModel(const ConvertRequest& request)
{
    ImportRequest other;
    other.designs = request.inputs;
    other.output = request.output;
    other.design = request.design;
    other.reading = request.reading;
    other.isQuiet = request.isQuiet;
    return runImport(other);
}

int convertToRose(const ConvertRequest& request)
{
    ExportRequest other;
    other.models = request.inputs;
    other.output = request.output;
    other.design = request.design;
    other.reading = request.reading;
    other.isQuiet = request.isQuiet;
    if (other.design.format == modelFormat)
        other.design.format.clear();
    return runExport(other);
}

void listFormat(std::string_view name, bool isIn, bool isOut, std::string_view description)
{
    constexpr int nameWidth = 12;
    constexpr int columnWidth = 5;
    std::cout << std::left << std::setw(nameWidth) << name << std::setw(columnWidth) << (isIn ? "in" : "-")
              << std::setw(columnWidth) << (isOut ? "out" : "-") << description << '\n';
}

int listFormats()
{
    listFormat(modelFormat, true, true, "model file of the bridge (.model.json)");
    for (const design::Format& format : design::formats())
        listFormat(format.name, format.read != nullptr, goesOut(format.name), format.description);
    return endOfOutput(done, exportFailed);
}

} // namespace

std::string whyNotAFormatIn(const std::string& name)
{
    return name == modelFormat ? "" : whyNotAFormat(name);
}

std::string whyNotAFormatOut(const std::string& name)
{
    if (goesOut(name))
        return "";
    const std::vector<std::string_view> known = formatsOut();
    std::string reason = "there is no format '" + text::onOneLine(name) + "' to write";
    if (const auto nearest = text::nearestName(name, known))
        reason += "; did you mean " + std::string(*nearest) + "?";
    reason += "\nThe formats are:";
    for (const std::string_view each : known)
        reason.append("\n  ").append(each);
    return reason;
}

int runConvert(const ConvertRequest& request)
{
    if (request.listsFormats)
        return listFormats();
    if (request.inputs.empty()) {
        report("IN is required; see petal convert --help");
        return wrongUsage;
    }
    if (request.isQuiet)
        forbidProgress();
    return reportFailures("", request.output, [&] {
        refuseForSeveral("--report", request.design.reportFile, request.inputs.size());
        const std::string_view target = targetOf(request);
        if (target == modelFormat)
            return convertToModel(request);
        if (target == roseFormat)
            return convertToRose(request);
        return convertFiles(request, *design::formatNamed(target));
    });
}
