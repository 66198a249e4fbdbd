#include "tool/commands/Commands.h"

#include "text/Files.h"
#include "text/NearestName.h"
#include "text/Utf8.h"
#include "text/Words.h"
#include "tool/commands/DiagramList.h"
#include "tool/output/FileRoles.h"
#include "tool/output/OutputFile.h"
#include "tool/pictures/MadeAhead.h"
#include "tool/pictures/PictureNames.h"
#include "tool/results/OutputNames.h"
#include "tool/terminal/Amounts.h"
#include "tool/terminal/Findings.h"
#include "tool/terminal/Progress.h"

#include "loading/Loading.h"
#include "reader/index/Index.h"
#include "render/Draw.h"
#include "render/paper/Image.h"
#include "render/paper/Text.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <functional>
#include <optional>

namespace {

namespace fs = std::filesystem;
using reader::Diagram;
using render::ImageFormat;

constexpr std::pair<std::string_view, ImageFormat> formats[] = {
    {"svg", ImageFormat::svg},
    {"png", ImageFormat::png},
    {"pdf", ImageFormat::pdf},
};

bool isFormat(const std::string& name)
{
    return std::any_of(std::begin(formats), std::end(formats),
                       [&](const auto& format) { return format.first == name; });
}

ImageFormat formatCalled(const std::string& name)
{
    const auto* const found =
        std::find_if(std::begin(formats), std::end(formats), [&](const auto& format) { return format.first == name; });
    return found == std::end(formats) ? ImageFormat::svg : found->second;
}

// `svg` of `Orders.SVG`; empty for other endings.
std::string formatOfEnding(const std::string& path)
{
    const std::string ending = text::lowerCase(fs::path(path).extension().string());
    return ending.size() > 1 && isFormat(ending.substr(1)) ? ending.substr(1) : std::string();
}

NamedDiagram named(const Diagram& diagram)
{
    return {diagram.name, std::string(reader::diagramKindName(diagram.kind)),
            diagram.owner ? reader::shownName(*diagram.owner) : std::string()};
}

// Whether the pictures go into a folder, by the name that the user gives. One with an ending is a file.
bool isFolder(const std::string& output)
{
    if (output.empty() || meansFolder(output))
        return true;
    if (output == "-" || !formatOfEnding(output).empty())
        return false;
    if (fs::path(output).has_extension())
        throw WrongUsage(output + ": a picture ends in .svg, .png or .pdf, the name of a folder in a slash");
    return true;
}

// The pictures of a file, in a folder or as one file.
class Drawing {
public:
    Drawing(const DrawRequest& request, const Making& making, const reader::Document& document,
            const text::ReadRecord& read)
        : request(request), making(making), document(document), read(read), index(document)
    {
    }

    int run()
    {
        const int exitCode = select();
        if (exitCode != done)
            return exitCode;
        return isFolder(making.output) ? drawAll() : drawInto(making.output);
    }

private:
    // Takes those that are asked for, or all in which there is something.
    int select()
    {
        const std::set<std::string> wanted(request.diagrams.begin(), request.diagrams.end());
        std::set<std::string> unknown = wanted;
        for (const Diagram& diagram : index.diagrams()) {
            bool isNamed = false;
            for (const std::string& name : wanted)
                if (isCalled(diagram, name)) {
                    isNamed = true;
                    unknown.erase(name);
                }
            if (isNamed || (wanted.empty() && !isEmpty(diagram)))
                selected.push_back(&diagram);
            else if (wanted.empty())
                ++emptyOnes;
        }
        for (const std::string& name : unknown)
            report(text::fileName(making.input) + ": " + whyNotADiagram(name));
        return unknown.empty() ? done : wrongUsage;
    }

    // Whether the user can mean it: by its name, with as many of the packages around it as are needed, or its quid.
    [[nodiscard]] bool isCalled(const Diagram& diagram, const std::string& name) const
    {
        return ("::" + fullNameOf(diagram, index)).ends_with("::" + name) || diagram.object->text("quid") == name;
    }

    static bool isEmpty(const Diagram& diagram) { return diagram.object->objects("items").empty(); }

    [[nodiscard]] std::string whyNotADiagram(const std::string& name) const
    {
        std::vector<std::string_view> known;
        for (const Diagram& diagram : index.diagrams())
            known.emplace_back(diagram.name);
        std::string reason = "there is no diagram '" + text::onOneLine(name) + "'";
        if (const auto nearest = text::nearestName(name, known))
            reason.append("; did you mean '").append(text::onOneLine(*nearest)).append("'?");
        return reason.append(" (see: --list)");
    }

    int drawInto(const std::string& file)
    {
        if (!std::all_of(selected.begin(), selected.end(), [](const Diagram* each) { return isEmpty(*each); }))
            std::erase_if(selected, [](const Diagram* each) { return isEmpty(*each); });
        if (selected.size() != 1) {
            reportLines((file == "-" ? "standard output" : text::onOneLine(file)) + " takes one diagram, not " +
                        std::to_string(selected.size()) + "; name it with --diagram" + namesOfSelected());
            return wrongUsage;
        }
        const std::string format = request.format.empty() ? formatOfEnding(file) : request.format;
        refuseClashes({{file, role}}, read);
        const int exitCode = write(made(*selected.front(), file, formatCalled(format)), *selected.front(), file);
        if (exitCode == done && file != "-")
            tell(file);
        return exitCode;
    }

    // The beginning of a list for the user to choose from.
    [[nodiscard]] std::string namesOfSelected() const
    {
        constexpr std::size_t most = 10;
        std::string names;
        for (std::size_t i = 0; i < std::min(selected.size(), most); ++i)
            names.append(i == 0 ? ":\n  " : "\n  ").append(text::onOneLine(fullNameOf(*selected[i], index)));
        return selected.size() > most ? names + "\n  ... (see: --list)" : names;
    }

    int drawAll()
    {
        if (selected.empty()) {
            report(text::fileName(making.input) + ": there are no diagrams in it" +
                   (emptyOnes > 0 ? " but empty ones" : ""));
            return done;
        }
        const fs::path folder = making.output;
        const std::string format = request.format.empty() ? "svg" : request.format;
        PictureNames names;
        std::vector<FileRole> pictures;
        for (const Diagram* const diagram : selected)
            pictures.push_back(
                {(folder / names.nameFor(named(*diagram), std::string(".").append(format))).string(), role});
        refuseClashes(pictures, read);
        std::optional<OutputFolder> outputFolder; // made when there is something for it
        int exitCode = done;
        MadeAhead<Picture> ahead(
            selected.size(), [&](std::size_t i) { return made(*selected[i], pictures[i].path, formatCalled(format)); });
        for (std::size_t i = 0; i < selected.size(); ++i) {
            showProgress("picture " + std::to_string(i + 1) + " of " + std::to_string(selected.size()) + ": " +
                         pictures[i].path);
            const Picture picture = ahead.next();
            if (!outputFolder)
                outputFolder.emplace(folder.string());
            exitCode = std::max(exitCode, write(picture, *selected[i], pictures[i].path));
        }
        const std::string name = folder.empty() ? "." : folder.string();
        tell(name + (name.ends_with('/') ? "" : "/"));
        return exitCode;
    }

    // How many pictures there are now in the folder or file.
    void tell(const std::string& place) const
    {
        std::string text = counted(drawn, "picture", "pictures") + ", " + sizeText(bytes);
        if (emptyOnes > 0)
            text += "; left out: " + counted(emptyOnes, "empty diagram", "empty diagrams");
        if (!request.isQuiet)
            tellMade(place, text);
    }

    // Pictures are made by several threads, written and told of by one.
    struct Picture {
        std::string bytes;
        std::vector<std::string> warnings;
        std::exception_ptr failure;
    };

    [[nodiscard]] Picture made(const Diagram& diagram, const std::string& file, ImageFormat format) const
    {
        Picture picture;
        try {
            picture.bytes =
                pictureOf(diagram, file, format, [&](const std::string& text) { picture.warnings.push_back(text); });
        } catch (...) {
            picture.failure = std::current_exception();
        }
        return picture;
    }

    // Where there is no library that draws, one message says so for all pictures.
    static void endWithoutLibrary(const Picture& picture)
    {
        try {
            if (picture.failure)
                std::rethrow_exception(picture.failure);
        } catch (const loading::NotLoaded&) {
            throw;
        } catch (...) { // is told of the picture alone
        }
    }

    [[nodiscard]] int write(const Picture& picture, const Diagram& diagram, const std::string& file)
    {
        endWithoutLibrary(picture);
        return reportFailures(making.input, file, [&] {
            for (const std::string& warning : picture.warnings)
                if (!request.isQuiet)
                    report(text::onOneLine(fullNameOf(diagram, index)) + ": " + warning);
            if (picture.failure)
                std::rethrow_exception(picture.failure);
            OutputFile output(file);
            output.write(picture.bytes);
            output.commit();
            ++drawn;
            bytes += picture.bytes.size();
            return done;
        });
    }

    [[nodiscard]] std::string pictureOf(const Diagram& diagram, const std::string& file, ImageFormat format,
                                        const std::function<void(const std::string&)>& warn) const
    {
        try {
            const double most = format == ImageFormat::svg ? render::mostInSvg : render::mostInImage;
            const std::string svg = render::svgOf(document, index, diagram, {"", warn, nullptr, most});
            return render::imageOf(svg, format, warn);
        } catch (const render::ImageError& error) {
            throw render::ImageError(file + ": " + fullNameOf(diagram, index) + ": " + error.what());
        }
    }

    static constexpr const char* role = "the picture";

    const DrawRequest& request;
    const Making& making;
    const reader::Document& document;
    const text::ReadRecord& read;
    reader::Index index;
    std::vector<const Diagram*> selected;
    std::size_t emptyOnes = 0;
    std::size_t drawn = 0;
    std::size_t bytes = 0;
};

// Of one file the pictures go where the user says, of several into a folder there for each.
std::vector<Making> placesFor(const DrawRequest& request)
{
    if (request.files.size() == 1)
        return {{request.files.front(), request.output}};
    if (!isFolder(request.output))
        throw WrongUsage((request.output == "-" ? "standard output" : request.output) +
                         " is one file for the pictures of " + std::to_string(request.files.size()) +
                         "; a folder takes them");
    return foldersFor(request.files, request.output);
}

int drawFile(const DrawRequest& request, const Making& making)
{
    return reportFailures(making.input, making.output, [&] {
        const text::ReadRecord read;
        const reader::Document document(making.input, readOptions(request.reading));
        if (!request.isQuiet)
            reportFindings(document);
        return Drawing(request, making, document, read).run();
    });
}

} // namespace

std::string whyNotAnImageFormat(const std::string& name)
{
    return isFormat(name) ? "" : "svg, png or pdf expected, found '" + text::onOneLine(name) + "'";
}

int runDraw(const DrawRequest& request)
{
    if (request.isQuiet)
        forbidProgress();
    if (request.listsDiagrams)
        return listDiagrams(request);
    return reportFailures("", request.output, [&] {
        static_cast<void>(isFolder(request.output)); // which refuses names that are neither
        return makeAll(placesFor(request), [&](const Making& making) { return drawFile(request, making); });
    });
}
