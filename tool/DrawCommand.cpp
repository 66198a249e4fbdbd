#include "Commands.h"

#include "FileRoles.h"
#include "MadeAhead.h"
#include "OutputFile.h"
#include "text/NearestName.h"
#include "text/Utf8.h"
#include "text/Words.h"

#include "reader/Index.h"
#include "render/Draw.h"
#include "render/Image.h"
#include "render/Text.h"

#include <algorithm>
#include <cctype>
#include <exception>
#include <filesystem>
#include <functional>
#include <iostream>
#include <map>
#include <set>

namespace {

namespace fs = std::filesystem;
using reader::Diagram;
using render::ImageFormat;

constexpr std::pair<std::string_view, ImageFormat> formats[] = {
    {"svg", ImageFormat::svg},
    {"png", ImageFormat::png},
    {"pdf", ImageFormat::pdf},
};

// Names that some systems keep for devices, whatever comes behind a dot.
constexpr std::string_view devices[] = {"aux", "con", "nul", "prn"};

constexpr std::size_t longestName = 100; // bytes, far below what file systems take

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

// A name that every file system takes: what may stand for something else there becomes an underscore.
std::string safeName(const std::string& text)
{
    constexpr std::string_view unsafe = "/\\:*?\"<>|$`'&;!";
    std::string name = text::onOneLine(render::cleanText(text)); // what steers a terminal is a question mark in it
    std::replace_if(
        name.begin(), name.end(), [&](char c) { return unsafe.find(c) != std::string_view::npos; }, '_');
    name.resize(text::beginningOf(name, longestName).size());
    while (!name.empty() && (name.back() == ' ' || name.back() == '.'))
        name.pop_back();
    const std::string stem = text::lowerCase(name.substr(0, name.find('.')));
    const bool isDevice = std::find(std::begin(devices), std::end(devices), stem) != std::end(devices);
    if (!name.empty() && (isDevice || name.front() == '.' || name.front() == '-' || name.front() == ' '))
        name.insert(name.begin(), '_');
    return name;
}

// Names of the files of diagrams in one folder, no two of which differ in case only.
class FileNames {
public:
    std::string nameFor(const Diagram& diagram, const std::string& ending)
    {
        const std::string kind(reader::diagramKindName(diagram.kind));
        std::string name = safeName(diagram.name);
        if (name.empty())
            name = kind + " diagram";
        std::string unique = name;
        if (isTaken(unique, ending))
            unique = name + " (" + kind + ")";
        if (isTaken(unique, ending) && diagram.owner)
            unique = name + " (" + safeName(reader::shownName(*diagram.owner)) + ")";
        const std::string numbered = unique;
        std::size_t& number = numbers[text::lowerCase(numbered)];
        while (isTaken(unique, ending))
            unique = numbered + " " + std::to_string(++number + 1);
        taken.insert(text::lowerCase(unique + ending));
        return unique + ending;
    }

private:
    [[nodiscard]] bool isTaken(const std::string& name, const std::string& ending) const
    {
        return taken.contains(text::lowerCase(name + ending));
    }

    std::set<std::string> taken;
    std::map<std::string, std::size_t> numbers; ///< the last behind each name
};

class Drawing {
public:
    Drawing(const DrawRequest& request, const reader::Document& document, const text::ReadRecord& read)
        : request(request), document(document), read(read), index(document)
    {
    }

    int run()
    {
        if (request.listsDiagrams)
            return list();
        const int exitCode = select();
        if (exitCode != done)
            return exitCode;
        const bool isFile = request.output == "-" || !formatOfEnding(request.output).empty();
        return isFile && !fs::is_directory(request.output) ? drawInto(request.output) : drawAll();
    }

private:
    [[nodiscard]] std::string fullName(const Diagram& diagram) const
    {
        const std::string path = diagram.owner ? index.path(*diagram.owner) : std::string();
        return path.empty() ? diagram.name : path + "::" + diagram.name;
    }

    [[nodiscard]] int list() const
    {
        refuseClashes({{"-", "the list"}}, read);
        for (const Diagram& diagram : index.diagrams())
            std::cout << reader::diagramKindName(diagram.kind) << '\t' << text::onOneLine(fullName(diagram)) << '\n';
        return endOfOutput(done, exportFailed);
    }

    // Takes those that are asked for, or all.
    int select()
    {
        std::set<std::string> unknown(request.diagrams.begin(), request.diagrams.end());
        const std::set<std::string> wanted = unknown;
        for (const Diagram& diagram : index.diagrams()) {
            const std::string names[] = {diagram.name, fullName(diagram), diagram.object->text("quid")};
            const bool isWanted = std::any_of(std::begin(names), std::end(names),
                                              [&](const std::string& name) { return wanted.contains(name); });
            for (const std::string& name : names)
                unknown.erase(name);
            if (wanted.empty() || isWanted)
                selected.push_back(&diagram);
        }
        for (const std::string& name : unknown)
            report(whyNotADiagram(name));
        return unknown.empty() ? done : wrongUsage;
    }

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
        if (selected.size() != 1) {
            report((file == "-" ? "standard output" : file) + " takes one diagram, not " +
                   std::to_string(selected.size()) + "; name it with --diagram");
            return wrongUsage;
        }
        const std::string format = request.format.empty() ? formatOfEnding(file) : request.format;
        refuseClashes({{file, role}}, read);
        return write(made(*selected.front(), file, formatCalled(format)), *selected.front(), file);
    }

    int drawAll()
    {
        const fs::path folder = request.output;
        const std::string format = request.format.empty() ? "svg" : request.format;
        FileNames names;
        std::vector<FileRole> pictures;
        for (const Diagram* const diagram : selected)
            pictures.push_back({(folder / names.nameFor(*diagram, std::string(".").append(format))).string(), role});
        refuseClashes(pictures, read);
        makeFolder(folder);
        if (selected.empty())
            report(request.file + ": there are no diagrams in it");
        int exitCode = done;
        MadeAhead<Picture> ahead(
            selected.size(), [&](std::size_t i) { return made(*selected[i], pictures[i].path, formatCalled(format)); });
        for (std::size_t i = 0; i < selected.size(); ++i)
            exitCode = std::max(exitCode, write(ahead.next(), *selected[i], pictures[i].path));
        return exitCode;
    }

    // The one that stands for the current folder is empty.
    static void makeFolder(const fs::path& folder)
    {
        std::error_code error;
        if (!folder.empty())
            fs::create_directories(folder, error);
        if (error)
            throw std::system_error(error, folder.string());
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

    [[nodiscard]] int write(const Picture& picture, const Diagram& diagram, const std::string& file) const
    {
        return reportFailures(request.file, file, [&] {
            for (const std::string& warning : picture.warnings)
                if (!request.isQuiet)
                    report(text::onOneLine(fullName(diagram)) + ": " + warning);
            if (picture.failure)
                std::rethrow_exception(picture.failure);
            OutputFile output(file);
            output.write(picture.bytes);
            output.commit();
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
            throw render::ImageError(file + ": " + fullName(diagram) + ": " + error.what());
        }
    }

    static constexpr const char* role = "the picture";

    const DrawRequest& request;
    const reader::Document& document;
    const text::ReadRecord& read;
    reader::Index index;
    std::vector<const Diagram*> selected;
};

} // namespace

std::string whyNotAnImageFormat(const std::string& name)
{
    return isFormat(name) ? "" : "svg, png or pdf expected, found '" + text::onOneLine(name) + "'";
}

int runDraw(const DrawRequest& request)
{
    return reportFailures(request.file, request.output, [&] {
        const text::ReadRecord read;
        const reader::Document document(request.file, readOptions(request.reading));
        if (!request.isQuiet)
            reportFindings(document);
        return Drawing(request, document, read).run();
    });
}
