#include "tool/commands/Commands.h"

#include "text/Files.h"
#include "text/NearestName.h"
#include "tool/input/DesignImport.h"
#include "tool/output/FileRoles.h"
#include "tool/output/OutputFile.h"
#include "tool/results/OutputNames.h"
#include "tool/results/Statistics.h"
#include "tool/terminal/Amounts.h"
#include "tool/terminal/CommandLog.h"
#include "tool/terminal/Progress.h"

#include "kiv/KivIbmRationalRose98ExportDllInterface.h"
#include "kiv/KivModelFile.h"

#include <cerrno>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

namespace {

using Clock = CommandLog::Clock;

// The last line of every complete file. No text of a model can imitate it: a line feed in one is never followed by a
// tab.
constexpr std::string_view lastLine = "\r\n\tquid       \t\"38F75B630146\"))\r\n";

double secondsBetween(Clock::time_point from, Clock::time_point to)
{
    return std::chrono::duration<double>(to - from).count();
}

KivOptionList defaultOptions()
{
    KivOptionList options;
    KivIbmRationalRose98ExportDllInterface().getOptionList(options);
    return options;
}

std::vector<FileRole> rolesOf(const ExportRequest& request, const std::string& output)
{
    return {{output, "the output"},
            {request.log == "-" ? "" : request.log, "the log"}, // on standard error
            {request.statisticsFile, "the statistics"},
            {request.design.reportFile, "the report"}};
}

void proveComplete(OutputFile& output, const std::string& name)
{
    if (output.endsWith(lastLine))
        return;
    output.provokeWriteError();
    throw std::runtime_error(name + ": the file could not be written completely");
}

// What is to be exported, and what there is to say of it.
struct Input {
    LoadedModel loaded;
    std::optional<ImportedDesign> imported;
    std::vector<ModelWarning> warnings;
};

// Without geometry no box has a place, which is what the user asked for then.
bool needsPlaces(const ExportRequest& request)
{
    KivOptionList options = defaultOptions();
    for (const OptionValue& option : request.options)
        options.setValue(KivString(option.name), KivString(option.value));
    return options.getValue(BP_USE_GRAPHICAL_INFORMATION.getName()) == BOOLEAN_ENUM_VALUE_TRUE.getText();
}

// The model in a model file, or in a design of another tool, which is then imported; none after its mistakes were told.
std::optional<Input> loadAnyModel(const ExportRequest& request, const std::string& path)
{
    const std::string content = text::readFile(path);
    const std::string name = text::fileName(path);
    Input input;
    if (const design::Format* const format = formatOfExport(content, path, request.design.format)) {
        const reader::ReadOptions reading = readOptions(request.reading);
        input.imported = importDesign(*format, {content, path, &reading}, request.design.hasLayout);
        input.loaded = {std::move(input.imported->converted.model), content.size(), input.imported->converted.objects};
        if (!hasLogicalView(*input.loaded.model))
            input.imported->report.made("package", "", "Logical View", "a Rose file has everything in it");
    } else if (std::optional<LoadedModel> loaded = takeModelFile(content, name)) {
        input.loaded = std::move(*loaded);
    } else {
        return std::nullopt;
    }
    const bool isPlaced = !input.imported && request.design.hasLayout.value_or(false);
    const bool tells = !request.isQuiet || request.isStrict;
    if (tells || !request.design.reportFile.empty())
        input.warnings =
            findWarnings(*input.loaded.model, input.imported ? nullptr : &content, !isPlaced && needsPlaces(request));
    if (tells)
        tellWarnings(input.warnings, name, content);
    if (isPlaced)
        input.loaded.model = placeBoxes(std::move(input.loaded.model), name, request.isQuiet);
    return input;
}

// What the plug-in says about its file is about the output: the user does not know the path that it was given.
void runPlugin(const std::string& outputName, KivModel& model, KivOptionList& options, CommandLog& log)
{
    try {
        KivIbmRationalRose98ExportDllInterface().run(KivString(outputName), model, options, log);
    } catch (const KivException& error) {
        if (&error.getIdentifier() != &ROS_E_UNABLE_TO_OPEN_OUTPUT_FILE)
            throw;
        throw std::system_error(errno, std::generic_category(),
                                outputName + ": the temporary file beside it cannot be opened");
    }
}

KivOptionList optionsOf(const ExportRequest& request, const OutputFile& output)
{
    KivOptionList options = defaultOptions();
    for (const OptionValue& option : request.options)
        options.setValue(KivString(option.name), KivString(option.value));
    options.setValue(BP_FILE.getName(), KivString(output.temporaryPath()));
    return options;
}

// Moments of an export, for the statistics.
struct Moments {
    Clock::time_point start = Clock::now();
    Clock::time_point loaded = start;
    Clock::time_point runStart = start;
    Clock::time_point firstPackage = start;
    Clock::time_point runEnd = start;
};

// Exports the model into the temporary file, which is whole then.
void exportInto(OutputFile& output, const ExportRequest& request, const std::string& outputName, KivModel& model,
                Moments& moments)
{
    CommandLog log(request.log);
    KivOptionList options = optionsOf(request, output);
    moments.runStart = Clock::now();
    runPlugin(outputName, model, options, log);
    moments.runEnd = Clock::now();
    clearProgress();
    if (log.sawWrap() && !request.isQuiet)
        report(std::string("warning: ") + ROS_E_VIEW_NUMBERS_WRAP.getText());
    proveComplete(output, outputName);
    log.close();
    moments.firstPackage = log.firstProgress().value_or(moments.runEnd);
}

Statistics statisticsOf(const Moments& moments, const LoadedModel& loaded, std::size_t written)
{
    Statistics statistics;
    statistics.load = {secondsBetween(moments.start, moments.loaded), loaded.bytes, loaded.objects};
    statistics.number = {secondsBetween(moments.runStart, moments.firstPackage), loaded.bytes, loaded.objects};
    statistics.write = {secondsBetween(moments.firstPackage, moments.runEnd), written, loaded.objects};
    statistics.peakMemory = peakMemoryOfProcess();
    return statistics;
}

// Puts the output in place, and what is wanted beside it.
void placeAll(OutputFile& output, const ExportRequest& request, const Input& input, const Statistics& statistics)
{
    std::optional<OutputFile> statisticsFile;
    if (!request.statisticsFile.empty())
        statisticsFile.emplace(request.statisticsFile).write(statistics.asJson());
    std::optional<OutputFile> reportFile;
    if (!request.design.reportFile.empty())
        reportFile.emplace(request.design.reportFile).write(reportAsJson(input.imported, input.warnings));
    std::vector<OutputFile*> files = {&output};
    for (auto* const file : {&statisticsFile, &reportFile})
        if (*file)
            files.push_back(&**file);
    OutputFile::commitAll(files);
}

// Where tools that look for lost memory find it.
const KivModel* volatile left = nullptr;

// The process ends next; to take the model apart object by object would only cost time.
void leave(std::unique_ptr<KivModel> model)
{
    left = model.release();
}

// Loads the model, exports it into a temporary file and puts that in place.
int exportModel(const ExportRequest& request, const Making& making, bool isLast)
{
    Moments moments;
    const text::ReadRecord read;
    std::optional<Input> input = loadAnyModel(request, making.input);
    if (!input)
        return invalidModel;
    if (request.isStrict && !input->warnings.empty()) {
        report(text::fileName(making.input) + ": nothing is written, since there are warnings (--strict)");
        return exportFailed;
    }
    moments.loaded = Clock::now();
    refuseClashes(rolesOf(request, making.output), read);
    OutputFile output(making.output);
    exportInto(output, request, making.output, *input->loaded.model, moments);
    const Statistics statistics = statisticsOf(moments, input->loaded, output.size());
    const std::string made = contentsOf(*input->loaded.model) + ", " + sizeText(output.size());
    placeAll(output, request, *input, statistics);
    if (input->imported && !request.isQuiet)
        std::cerr << summaryOf(*input->imported);
    if (making.output != "-" && !request.isQuiet)
        tellMade(making.output, made);
    if (request.showsStatistics && !request.isQuiet)
        std::cerr << statistics.asText();
    if (isLast)
        leave(std::move(input->loaded.model));
    return done;
}

// The name of the output when none is given: the model's without its folder and ending, with `.mdl`.
std::string defaultOutput(const std::string& model)
{
    if (model == "-")
        return "-";
    std::string name = std::filesystem::path(model).filename().string();
    const auto cut = [&name](std::string_view ending) {
        if (name.size() > ending.size() && name.ends_with(ending))
            name.resize(name.size() - ending.size());
    };
    for (const std::string_view ending : {".json", ".model"})
        cut(ending);
    for (const design::Format& format : design::formats())
        for (const std::string_view ending : format.endings)
            cut(ending);
    return name + ".mdl";
}

} // namespace

std::string whyNotAnOption(std::string_view option)
{
    const KivOptionList options = defaultOptions();
    if (KivString(option) == BP_FILE.getName())
        return "BP_FILE is given by the output argument (-o)";
    if (options.find(KivString(option)))
        return "";
    std::vector<std::string_view> known;
    for (const KivOption& each : options.getOptions())
        if (each.name != BP_FILE.getName())
            known.push_back(each.name.view());
    std::string reason = "there is no option '" + std::string(option) + "'";
    if (const auto nearest = text::nearestName(option, known))
        reason += "; did you mean " + std::string(*nearest) + "?";
    reason += "\nThe options are:";
    for (const std::string_view name : known)
        reason += "\n  " + std::string(name);
    return reason;
}

int runExport(const ExportRequest& request)
{
    if (request.isQuiet)
        forbidProgress();
    return reportFailures("", request.output, [&] {
        const Outputs outputs = outputsFor(request.models, request.output, defaultOutput);
        const std::vector<Making>& makings = outputs.makings;
        for (const auto& [option, file] :
             {std::pair{"--log", &request.log}, std::pair{"--stats-json", &request.statisticsFile},
              std::pair{"--report", &request.design.reportFile}})
            refuseForSeveral(option, *file, makings.size());
        return makeAll(makings, [&](const Making& making) {
            const bool isLast = &making == &makings.back();
            return reportFailures(making.input, making.output, [&] { return exportModel(request, making, isLast); });
        });
    });
}
