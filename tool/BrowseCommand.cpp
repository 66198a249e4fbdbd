#include "Commands.h"

#include "FileRoles.h"
#include "OutputFile.h"

#include "browse/Page.h"

#include <filesystem>

namespace {

// What pages are called that are read from standard input.
constexpr std::string_view titleOfInput = "Model";

std::string titleOf(const std::string& file)
{
    return file == "-" ? std::string(titleOfInput) : std::filesystem::path(file).filename().string();
}

// The file's name without its folder and ending, with that of a page.
std::string defaultPageName(const std::string& file)
{
    return file == "-" ? "-" : std::filesystem::path(file).stem().string() + ".html";
}

void writeFindings(const reader::Document& document)
{
    for (const reader::Finding& finding : document.findings())
        report(onOneLine(finding.place.file) + ":" + std::to_string(finding.place.line) + ":" +
               std::to_string(finding.place.column) + ": " + onOneLine(finding.text));
    for (const reader::MissingUnit& unit : document.missingUnits())
        if (!unit.isUnwanted)
            report(onOneLine(unit.fileName) + ": not loaded: " + onOneLine(unit.reason));
}

void browseFile(const BrowseRequest& request, const std::string& outputName)
{
    const reader::Document document(request.file, readOptions(request.reading));
    const reader::Index index(document);
    OutputFile output(outputName);
    const browse::PageOptions options = {titleOf(request.file), {}};
    browse::writePage(document, index, options, [&](std::string_view piece) { output.write(piece); });
    output.commit();
    if (!request.isQuiet)
        writeFindings(document);
}

} // namespace

int runBrowse(const BrowseRequest& request)
{
    const std::string output = request.output.empty() ? defaultPageName(request.file) : request.output;
    const std::string clash = clashOf({{request.file, "the file"}, {output, "the page"}});
    if (!clash.empty()) {
        report(clash);
        return wrongUsage;
    }
    try {
        return reportFailures(request.file, output, [&] { browseFile(request, output); });
    } catch (const reader::NotPetal& error) {
        report(request.file + ": " + error.what());
        return invalidModel;
    }
}
