#include "reader/document/UnitFinder.h"

#include "reader/document/Document.h"
#include "text/Words.h"

#include <algorithm>
#include <utility>

namespace reader {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t longestName = 4096; // bytes; no system takes longer paths
constexpr std::size_t mostQuestions = 100000;
constexpr std::size_t mostEntries = 1000000;
constexpr std::size_t pathOfOneQuestion = 256; // bytes; the system takes longer for longer ones

bool isAbsolute(std::string_view path)
{
    return path.starts_with('/') || (path.size() > 1 && path[1] == ':');
}

// The parts of a path. A folder and the `..` behind it cancel each other, as on the system that the names are from.
std::vector<std::string> partsOf(std::string_view path)
{
    std::vector<std::string> parts;
    while (!path.empty()) {
        const std::size_t slash = std::min(path.find('/'), path.size());
        const std::string_view part = path.substr(0, slash);
        path.remove_prefix(std::min(slash + 1, path.size()));
        if (part.empty() || part == ".")
            continue;
        if (part == ".." && !parts.empty() && parts.back() != "..")
            parts.pop_back();
        else
            parts.emplace_back(part);
    }
    return parts;
}

bool isAbsence(const std::error_code& error)
{
    return error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
}

bool isWithin(const fs::path& path, const fs::path& folder)
{
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first == folder.end();
}

} // namespace

UnitFinder::UnitFinder(const ReadOptions& options, fs::path modelFolder)
    : options(options), modelFolder(std::move(modelFolder))
{
    for (const fs::path& folder : options.unitsWithin)
        if (fs::path real = withoutLinks(folder); !real.empty())
            allowed.push_back(std::move(real));
}

const FoundUnit& UnitFinder::find(const std::string& fileName, const fs::path& folder)
{
    static const FoundUnit tooLong = {{}, {}, "the name is longer than " + std::to_string(longestName) + " bytes"};
    static const FoundUnit tooMany = {{}, {}, "there are too many names of units to look all of them up"};
    if (fileName.size() > longestName)
        return tooLong;
    std::string name = fileName.substr(0, fileName.find('\0'));
    std::string key = name;
    key.append(1, '\0').append(folder.native());
    const auto known = found.find(key);
    if (known != found.end())
        return known->second;
    if (questions >= mostQuestions)
        return tooMany;
    return found.emplace(std::move(key), search(std::move(name), folder)).first->second;
}

FoundUnit UnitFinder::search(std::string path, const fs::path& folder)
{
    trouble.clear();
    std::replace(path.begin(), path.end(), '\\', '/');
    const std::string_view name = std::string_view(path).substr(path.find_last_of('/') + 1);
    std::optional<fs::path> file = byPath(path, folder);
    for (const fs::path* const other : {&folder, &std::as_const(modelFolder)})
        if (!file && trouble.empty() && name != "..")
            file = fileIn(*other, name);
    std::error_code none;
    if (file)
        return {*file, fs::weakly_canonical(fs::absolute(*file, none), none), {}};
    if (!options.unitsWithin.empty())
        return {{}, {}, "there is no such file in a folder that units may be read from"};
    return {{}, {}, trouble.empty() ? "there is no such file" : trouble};
}

std::optional<fs::path> UnitFinder::byPath(const std::string& path, const fs::path& folder)
{
    if (path.starts_with('$')) {
        const std::size_t slash = std::min(path.find('/'), path.size());
        const auto target = folderOfSymbol(std::string_view(path).substr(1, slash - 1), folder);
        return target ? fileIn(*target, std::string_view(path).substr(slash)) : std::nullopt;
    }
    if (isAbsolute(path)) // on the machine that the file was written on
        return std::nullopt;
    return fileIn(folder, path);
}

std::optional<fs::path> UnitFinder::folderOfSymbol(std::string_view symbol, const fs::path& folder) const
{
    const std::string wanted = text::lowerCase(symbol);
    for (const auto& [name, target] : options.paths)
        if (text::lowerCase(name) == wanted)
            return target;
    return wanted == "curdir" ? std::optional(folder) : std::nullopt;
}

// What lies outside is not even looked at on the way, so that no time is spent by which it could be told.
std::optional<fs::path> UnitFinder::fileIn(fs::path folder, std::string_view relative)
{
    const bool isConfined = !options.unitsWithin.empty();
    fs::path real = isConfined ? withoutLinks(folder.empty() ? "." : folder) : fs::path();
    for (const std::string& part : partsOf(relative)) {
        if (isConfined && !isAllowed(real))
            return std::nullopt;
        const auto entry = part == ".." ? std::optional(folder / part) : entryIn(folder, part);
        if (!entry)
            return std::nullopt;
        folder = *entry;
        if (isConfined)
            real = part == ".." ? real.parent_path() : withoutLinks(real / folder.filename());
    }
    if (isConfined && !isAllowed(real))
        return std::nullopt;
    switch (typeOf(folder)) {
    case fs::file_type::regular:
        return folder;
    case fs::file_type::directory:
    case fs::file_type::not_found:
    case fs::file_type::none:
        return std::nullopt;
    default:
        trouble = folder.string() + ": it is no regular file";
        return std::nullopt;
    }
}

// The entry of `folder` that is called `name`, whatever the case of its letters.
std::optional<fs::path> UnitFinder::entryIn(const fs::path& folder, const std::string& name)
{
    if (typeOf(folder / name) != fs::file_type::not_found)
        return folder / name;
    if (!trouble.empty())
        return std::nullopt;
    const Listing& names = listing(folder);
    const auto entry = names.find(text::lowerCase(name));
    return entry == names.end() ? std::nullopt : std::optional(folder / entry->second);
}

const UnitFinder::Listing& UnitFinder::listing(const fs::path& folder)
{
    const auto [entry, isNew] = listings.try_emplace(folder.native());
    Listing& names = entry->second;
    if (!isNew)
        return names;
    std::error_code error;
    for (fs::directory_iterator at(folder.empty() ? "." : folder, error), end; !error && at != end;
         at.increment(error)) {
        if (++entries > mostEntries)
            break;
        std::string name = at->path().filename().string();
        auto [first, isFirst] = names.try_emplace(text::lowerCase(name), name);
        if (!isFirst && name < first->second) // by name, so that it does not depend on the order of the folder
            first->second = std::move(name);
    }
    if (error)
        stumble(folder, error);
    return names;
}

bool UnitFinder::isAllowed(const fs::path& real) const
{
    return std::any_of(allowed.begin(), allowed.end(), [&](const fs::path& folder) { return isWithin(real, folder); });
}

// Empty when it leads nowhere.
fs::path UnitFinder::withoutLinks(const fs::path& path)
{
    ask(path);
    std::error_code error;
    fs::path real = fs::canonical(path, error);
    return error ? fs::path() : real;
}

void UnitFinder::ask(const fs::path& path)
{
    questions += 1 + path.native().size() / pathOfOneQuestion;
}

fs::file_type UnitFinder::typeOf(const fs::path& path)
{
    ask(path);
    std::error_code error;
    const fs::file_type type = fs::status(path, error).type();
    if (error)
        stumble(path, error);
    return type == fs::file_type::none ? fs::file_type::not_found : type;
}

// That a file cannot be seen is not the same as that it is not there.
void UnitFinder::stumble(const fs::path& path, const std::error_code& error)
{
    if (!isAbsence(error))
        trouble = path.string() + ": " + error.message();
}

} // namespace reader
