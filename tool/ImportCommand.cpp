#include "Commands.h"

#include "DesignImport.h"
#include "FileRoles.h"
#include "OutputFile.h"
#include "text/Files.h"

#include "kiv/KivModelFile.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <utility>

namespace {

std::string modelFileOf(const design::Converted& converted)
{
    std::ostringstream stream;
    writeModelFile(*converted.model, stream, [&](const KivObject& object) { return converted.idOf(object); });
    return std::move(stream).str();
}

void importFile(const ImportRequest& request, const std::string& outputName)
{
    const text::ReadRecord read;
    const std::string content = text::readFile(request.input);
    const design::Format& format = formatOfImport(content, request.input, request.design.format);
    const std::optional<ImportedDesign> imported =
        importDesign(format, content, request.input, request.design.hasLayout);
    refuseClashes({{outputName, "the output"}, {request.design.reportFile, "the report"}}, read);
    OutputFile output(outputName);
    output.write(modelFileOf(imported->converted));
    std::optional<OutputFile> reportFile;
    if (!request.design.reportFile.empty())
        reportFile.emplace(request.design.reportFile).write(reportAsJson(imported));
    std::vector<OutputFile*> files = {&output};
    if (reportFile)
        files.push_back(&*reportFile);
    OutputFile::commitAll(files);
    if (!request.isQuiet)
        std::cerr << summaryOf(*imported);
}

// The name of the design without its folder and ending, with that of a model file.
std::string defaultModelName(const std::string& design)
{
    return design == "-" ? "-" : std::filesystem::path(design).stem().string() + ".model.json";
}

int listFormats()
{
    std::size_t longest = 0;
    for (const design::Format& format : design::formats())
        longest = std::max(longest, format.name.size());
    for (const design::Format& format : design::formats())
        std::cout << format.name << std::string(longest + 2 - format.name.size(), ' ') << format.description << '\n';
    return endOfOutput(done, exportFailed);
}

} // namespace

int runImport(const ImportRequest& request)
{
    if (request.listsFormats)
        return listFormats();
    if (request.input.empty()) {
        report("DESIGN is required; see petal import --help");
        return wrongUsage;
    }
    const std::string output = request.output.empty() ? defaultModelName(request.input) : request.output;
    return reportFailures(request.input, output, [&] {
        importFile(request, output);
        return done;
    });
}
