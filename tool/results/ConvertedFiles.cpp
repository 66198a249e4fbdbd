#include "tool/results/ConvertedFiles.h"

#include "tool/commands/Commands.h"
#include "tool/output/FileRoles.h"

#include <filesystem>
#include <numeric>
#include <sys/resource.h>
#include <utility>

namespace {

namespace fs = std::filesystem;

// All files are open until all are written, and a large model has more diagrams than a process may open at first.
void allowManyFiles()
{
    rlimit limit = {};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0)
        return;
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit); // otherwise opening fails, and says so
}

} // namespace

ConvertedFiles::ConvertedFiles(const design::Format& theFormat, std::string thePlace, bool isItFolder)
    : format(theFormat), outputPlace(std::move(thePlace)), isFolder(isItFolder)
{
    if (isFolder)
        allowManyFiles();
}

text::Sink& ConvertedFiles::begin(const design::FileName& file)
{
    if (outputPlace == "-" && !files.empty())
        throw WrongUsage(std::string(format.name) + " takes several files; they do not fit on standard output");
    const fs::path folder = isFolder ? fs::path(outputPlace) : fs::path(outputPlace).parent_path();
    const std::string name =
        isFolder ? names.nameFor({file.name, file.kind, file.owner}, std::string(format.endings.front())) : file.name;
    paths.push_back(name.empty() ? outputPlace : (folder / name).lexically_normal().string());
    return files.emplace_back(paths.back());
}

std::size_t ConvertedFiles::bytes() const
{
    return std::accumulate(files.begin(), files.end(), std::size_t{0},
                           [](std::size_t sum, const Text& text) { return sum + text.file.size(); });
}

void ConvertedFiles::commit(const std::string& reportFile, const std::string& report, const text::ReadRecord& read)
{
    std::vector<FileRole> roles = {{reportFile, "the report"}};
    for (const std::string& path : paths)
        roles.push_back({path, "the output"});
    refuseClashes(roles, read);
    std::vector<OutputFile*> all;
    for (Text& text : files)
        all.push_back(&text.file);
    std::optional<OutputFile> told;
    if (!reportFile.empty()) {
        all.push_back(&told.emplace(reportFile));
        told->write(report);
    }
    OutputFile::commitAll(all);
}
