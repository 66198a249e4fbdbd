#include "reader/UnitPath.h"

#include <algorithm>
#include <system_error>

namespace reader {

namespace fs = std::filesystem;

namespace {

std::string lowered(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return result;
}

bool isThere(const fs::path& path)
{
    std::error_code none;
    return fs::exists(path, none);
}

// The entry of `folder` that is called `name`, whatever the case of its letters.
std::optional<fs::path> entryIn(const fs::path& folder, const std::string& name)
{
    if (isThere(folder / name))
        return folder / name;
    const std::string wanted = lowered(name);
    std::error_code error;
    std::optional<fs::path> first; // by name, so that it does not depend on the order of the folder
    for (fs::directory_iterator at(folder.empty() ? "." : folder, error), end; !error && at != end;
         at.increment(error)) {
        const fs::path entry = folder / at->path().filename();
        if (lowered(entry.filename().string()) == wanted && (!first || entry < *first))
            first = entry;
    }
    return first;
}

std::optional<fs::path> fileIn(fs::path folder, std::string_view relative)
{
    while (!relative.empty()) {
        const std::size_t slash = std::min(relative.find('/'), relative.size());
        const std::string part(relative.substr(0, slash));
        relative.remove_prefix(std::min(slash + 1, relative.size()));
        if (part.empty() || part == ".")
            continue;
        const auto entry = part == ".." ? std::optional(folder / part) : entryIn(folder, part);
        if (!entry)
            return std::nullopt;
        folder = *entry;
    }
    std::error_code none;
    return fs::is_regular_file(folder, none) ? std::optional(folder) : std::nullopt;
}

std::optional<fs::path> folderOfSymbol(std::string_view symbol, const fs::path& folder,
                                       const std::map<std::string, fs::path>& paths)
{
    const std::string wanted = lowered(symbol);
    for (const auto& [name, target] : paths)
        if (lowered(name) == wanted)
            return target;
    return wanted == "curdir" ? std::optional(folder) : std::nullopt;
}

bool isAbsolute(std::string_view path)
{
    return path.starts_with('/') || (path.size() > 1 && path[1] == ':');
}

} // namespace

std::optional<fs::path> unitFile(std::string_view fileName, const fs::path& folder, const fs::path& modelFolder,
                                 const std::map<std::string, fs::path>& paths)
{
    std::string path(fileName.substr(0, fileName.find('\0')));
    std::replace(path.begin(), path.end(), '\\', '/');
    std::optional<fs::path> found;
    if (path.starts_with('$')) {
        const std::size_t slash = std::min(path.find('/'), path.size());
        if (const auto target = folderOfSymbol(std::string_view(path).substr(1, slash - 1), folder, paths))
            found = fileIn(*target, std::string_view(path).substr(slash));
    } else if (!isAbsolute(path)) { // an absolute path is one of the machine that the file was written on
        found = fileIn(folder, path);
    }
    const std::string_view name = std::string_view(path).substr(path.find_last_of('/') + 1);
    if (!found && name != "..")
        found = fileIn(folder, name);
    if (!found && name != "..")
        found = fileIn(modelFolder, name);
    return found;
}

} // namespace reader
