#include "Commands.h"

#include "FileRoles.h"
#include "OutputFile.h"

#include "browse/Page.h"
#include "render/Draw.h"
#include "render/Image.h"

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

void writePage(const reader::Document& document, const std::string& title, const std::string& outputName)
{
    const reader::Index index(document);
    OutputFile output(outputName);
    std::size_t number = 0; // parts of pictures are called by it, so that no two in the page are called alike
    const auto picture = [&](const reader::Diagram& diagram) {
        render::DrawOptions options;
        options.idPrefix.append("p").append(std::to_string(number++)).append("-");
        try {
            return render::svgOf(document, index, diagram, options);
        } catch (const render::ImageError& error) {
            throw render::ImageError(outputName + ": " + diagram.name + ": " + error.what());
        }
    };
    const browse::PageOptions options = {title, picture};
    browse::writePage(document, index, options, [&](std::string_view piece) { output.write(piece); });
    output.commit();
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
        return done;
    });
}

} // namespace

int runBrowse(const BrowseRequest& request)
{
    const std::string output = request.output.empty() ? defaultPageName(request.file) : request.output;
    return browseFile(request, output);
}
