#include "tool/commands/Commands.h"

#include "tool/output/FileRoles.h"
#include "tool/output/OutputFile.h"
#include "tool/pictures/PagePictures.h"
#include "tool/results/OutputNames.h"
#include "tool/terminal/Amounts.h"
#include "tool/terminal/Findings.h"
#include "tool/terminal/Progress.h"

#include "browse/Page.h"

#include <algorithm>
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
    return file == "-" ? "-" : stemOf(file) + ".html";
}

// Writes the page and says what is in it.
std::string writePage(const reader::Document& document, const std::string& title, const std::string& outputName)
{
    const reader::Index index(document);
    OutputFile output(outputName);
    PagePictures pictures(outputName, index.diagrams().size(), sizeOf(document));
    const auto picture = [&](const reader::Diagram& diagram) { return pictures.draw(document, index, diagram); };
    const browse::PageOptions options = {title, picture};
    browse::writePage(document, index, options, [&](std::string_view piece) { output.write(piece); });
    std::string made = counted(document.objectCount(), "object", "objects") + ", " +
                       counted(index.diagrams().size(), "diagram", "diagrams") + ", " + sizeText(output.size());
    output.commit();
    pictures.reportLeftOut();
    return made;
}

int browseFile(const BrowseRequest& request, const Making& making)
{
    return reportFailures(making.input, making.output, [&] {
        const text::ReadRecord read;
        const reader::Document document(making.input, readOptions(request.reading));
        refuseClashes({{making.output, "the page"}}, read);
        const std::string made = writePage(document, titleOf(making.input), making.output);
        if (!request.isQuiet)
            reportFindings(document);
        if (making.output != "-" && !request.isQuiet)
            tellMade(making.output, made);
        // The page shows what could be read, and says so; a script must know it, too.
        return std::ranges::any_of(
                   document.findings(),
                   [](const reader::Finding& finding) { return finding.severity == reader::Severity::error; })
                   ? foundFaults
                   : done;
    });
}

} // namespace

int runBrowse(const BrowseRequest& request)
{
    if (request.isQuiet)
        forbidProgress();
    return reportFailures("", request.output, [&] {
        const Outputs outputs = outputsFor(request.files, request.output, defaultPageName);
        return makeAll(outputs.makings, [&](const Making& making) { return browseFile(request, making); });
    });
}
