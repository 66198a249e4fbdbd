#include "tool/results/OutputNames.h"

#include "tool/output/FileRoles.h"
#include "tool/results/Failures.h"
#include "tool/terminal/Progress.h"

#include "text/Files.h"
#include "text/Words.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <set>
#include <system_error>
#include <utility>

namespace {

namespace fs = std::filesystem;

// What is settled for one input by the command that makes its output is settled for several before the first is made.
void refuseClashesOf(const std::vector<Making>& makings)
{
    text::ReadRecord read;
    std::deque<std::string> roles; // which stay where they are
    std::vector<FileRole> outputs;
    for (const Making& making : makings) {
        read.expect(making.input);
        roles.push_back("the output of " + text::fileName(making.input));
        outputs.push_back({making.output, roles.back().c_str()});
    }
    refuseClashes(outputs, read);
}

} // namespace

OutputFolder::OutputFolder(const std::string& path)
{
    std::vector<fs::path> missing;
    std::error_code unknown; // then making it says why
    for (fs::path folder = path; !folder.empty() && !fs::exists(folder, unknown); folder = folder.parent_path())
        if (folder.has_filename())
            missing.push_back(folder);
    std::error_code error;
    if (!path.empty())
        fs::create_directories(path, error);
    if (error)
        throw std::system_error(error, path);
    made.assign(missing.rbegin(), missing.rend());
}

OutputFolder::~OutputFolder()
{
    for (auto folder = made.rbegin(); folder != made.rend(); ++folder) {
        std::error_code isInUse;
        fs::remove(*folder, isInUse);
    }
}

bool meansFolder(const std::string& output)
{
    std::error_code unknown; // then it is none
    return output.ends_with('/') || fs::is_directory(output, unknown);
}

Outputs outputsFor(const std::vector<std::string>& inputs, const std::string& output,
                   const std::function<std::string(const std::string&)>& defaultName)
{
    const bool isFolder = !output.empty() && meansFolder(output);
    if (inputs.size() > 1 && !output.empty() && !isFolder)
        throw WrongUsage((output == "-" ? "standard output" : output) + " is one file for what is made of " +
                         std::to_string(inputs.size()) + "; a folder takes them, whose name ends in a slash");
    std::vector<Making> makings;
    for (const std::string& input : inputs) {
        if (input == "-" && (isFolder || inputs.size() > 1))
            throw WrongUsage("standard input has no name for its output to be called by; give that with -o");
        const std::string name = output.empty() || isFolder ? defaultName(input) : output;
        makings.push_back({input, isFolder ? (fs::path(output) / name).string() : name});
    }
    OutputFolder folder(isFolder ? output : std::string());
    if (makings.size() > 1)
        refuseClashesOf(makings);
    return {std::move(makings), std::move(folder)};
}

std::vector<Making> foldersFor(const std::vector<std::string>& inputs, const std::string& output)
{
    std::vector<Making> makings;
    std::set<std::string> taken;
    for (const std::string& input : inputs) {
        const std::string name = stemOf(text::fileName(input));
        if (!taken.insert(text::lowerCase(name)).second)
            throw WrongUsage(std::string(input)
                                 .append(": what is made of another file goes into the folder '")
                                 .append(name)
                                 .append("' already"));
        makings.push_back({input, (fs::path(output) / name / "").string()}); // the slash says what it is
    }
    return makings;
}

void refuseForSeveral(const char* option, const std::string& file, std::size_t inputs)
{
    if (inputs > 1 && !file.empty())
        throw WrongUsage(std::string(option) + " is about one model, not " + std::to_string(inputs));
}

int makeAll(const std::vector<Making>& makings, const std::function<int(const Making&)>& make)
{
    int exitCode = done;
    for (std::size_t i = 0; i < makings.size(); ++i) {
        if (makings.size() > 1)
            showProgress("file " + std::to_string(i + 1) + " of " + std::to_string(makings.size()) + ": " +
                         makings[i].input);
        exitCode = std::max(exitCode, make(makings[i]));
    }
    clearProgress();
    return exitCode;
}

std::string stemOf(const std::string& path)
{
    const fs::path name = fs::path(path).filename();
    const fs::path stem = name.stem();
    return (name.extension() == ".json" && stem.extension() == ".model" ? stem.stem() : stem).string();
}
