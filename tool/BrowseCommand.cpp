#include "Commands.h"

#include "FileRoles.h"
#include "OutputFile.h"

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
    return file == "-" ? "-" : std::filesystem::path(file).stem().string() + ".html";
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

void writePage(const reader::Document& document, const std::string& title, const std::string& outputName)
{
    const reader::Index index(document);
    OutputFile output(outputName);
    std::size_t number = 0; // parts of pictures are called by it, so that no two in the page are called alike
    PictureRoom room(document);
    std::size_t leftOut = 0;
    const auto picture = [&](const reader::Diagram& diagram) {
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
    output.commit();
    if (leftOut > 0)
        report(outputName + ": the page would be too large; left out: the last " + std::to_string(leftOut) + " of " +
               std::to_string(index.diagrams().size()) + " pictures");
}

int browseFile(const BrowseRequest& request, const std::string& output)
{
    return reportFailures(request.file, output, [&] {
        const text::ReadRecord read;
        const reader::Document document(request.file, readOptions(request.reading));
        refuseClashes({{output, "the page"}}, read);
        writePage(document, titleOf(request.file), output);
        if (!request.isQuiet)
            reportFindings(document);
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
    const std::string output = request.output.empty() ? defaultPageName(request.file) : request.output;
    return browseFile(request, output);
}
