#include "Commands.h"

#include "Amounts.h"
#include "FileRoles.h"
#include "Findings.h"
#include "OutputFile.h"
#include "OutputNames.h"
#include "Progress.h"

#include "browse/Page.h"
#include "render/Draw.h"
#include "render/Image.h"

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

// How large the pictures of a page may become together: one class may stand in many diagrams.
class PictureRoom {
public:
    explicit PictureRoom(const reader::Document& document)
    {
        double size = 0;
        for (const reader::File& file : document.files())
            size += static_cast<double>(document.text(file).size());
        bytesLeft = std::max(leastRoom, size * timesInput);
    }

    [[nodiscard]] double elements() const { return std::min(render::mostInSvg, bytesLeft / bytesInElement); }

    void take(const std::string& picture) { bytesLeft -= static_cast<double>(picture.size()); }

private:
    static constexpr double leastRoom = 8e6; // bytes
    static constexpr double timesInput = 60;
    static constexpr double bytesInElement = 250;
    double bytesLeft = 0;
};

// Writes the page and says what is in it.
std::string writePage(const reader::Document& document, const std::string& title, const std::string& outputName)
{
    const reader::Index index(document);
    OutputFile output(outputName);
    std::size_t number = 0; // parts of pictures are called by it, so that no two in the page are called alike
    PictureRoom room(document);
    std::size_t leftOut = 0;
    const auto picture = [&](const reader::Diagram& diagram) {
        showProgress("picture " + std::to_string(number + 1) + " of " + std::to_string(index.diagrams().size()) + ": " +
                     diagram.name);
        if (room.elements() < 1) {
            ++leftOut;
            return std::string();
        }
        render::DrawOptions options;
        options.mostElements = room.elements();
        options.idPrefix.append("p").append(std::to_string(number++)).append("-");
        try {
            std::string svg = render::svgOf(document, index, diagram, options);
            room.take(svg);
            return svg;
        } catch (const render::ImageError& error) {
            throw render::ImageError(outputName + ": " + diagram.name + ": " + error.what());
        }
    };
    const browse::PageOptions options = {title, picture};
    browse::writePage(document, index, options, [&](std::string_view piece) { output.write(piece); });
    std::string made = counted(document.objectCount(), "object", "objects") + ", " +
                       counted(index.diagrams().size(), "diagram", "diagrams") + ", " + sizeText(output.size());
    output.commit();
    if (leftOut > 0)
        report(outputName + ": the page would be too large; left out: the last " + std::to_string(leftOut) + " of " +
               std::to_string(index.diagrams().size()) + " pictures");
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
        return makeAll(outputsFor(request.files, request.output, defaultPageName),
                       [&](const Making& making) { return browseFile(request, making); });
    });
}
