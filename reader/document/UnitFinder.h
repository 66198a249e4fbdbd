#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <unordered_map>
#include <vector>

namespace reader {

struct ReadOptions;

/// The file of a controlled unit, or why there is none: one of both is empty.
struct FoundUnit {
    std::filesystem::path path;     ///< as messages call it
    std::filesystem::path realPath; ///< the same for every name that the file has
    std::string whyNot;
};

/// Finds the files of controlled units. Whoever wrote a model may have written anything as the name of a unit, so a
/// name is looked up once, a folder is listed once, and the file system is asked no more than so many questions.
class UnitFinder {
public:
    /// `options` must stay. `modelFolder` is where units are looked for at last.
    UnitFinder(const ReadOptions& options, std::filesystem::path modelFolder);

    /// The file that `fileName` means: `$curdir` is `folder`, that of the file that names it; other symbols are looked
    /// up in the options; backslashes and `/` part folders; letters may differ in case. Where that leads to no file,
    /// the one of the same name in `folder` or in that of the model. A file outside of the folders that the options
    /// allow is as if it were not there: the answer does not tell whether it is.
    [[nodiscard]] const FoundUnit& find(const std::string& fileName, const std::filesystem::path& folder);

private:
    using Path = std::filesystem::path;
    using Listing = std::map<std::string, std::string>; // names by what they are in small letters

    FoundUnit search(std::string path, const Path& folder);
    [[nodiscard]] std::optional<Path> byPath(const std::string& path, const Path& folder);
    [[nodiscard]] std::optional<Path> fileIn(Path folder, std::string_view relative);
    [[nodiscard]] std::optional<Path> entryIn(const Path& folder, const std::string& name);
    [[nodiscard]] const Listing& listing(const Path& folder);
    [[nodiscard]] std::optional<Path> folderOfSymbol(std::string_view symbol, const Path& folder) const;
    [[nodiscard]] bool isAllowed(const Path& real) const;
    [[nodiscard]] Path withoutLinks(const Path& path);
    void ask(const Path& path);
    [[nodiscard]] std::filesystem::file_type typeOf(const Path& path);
    void stumble(const Path& path, const std::error_code& error);

    const ReadOptions& options;
    Path modelFolder;
    std::vector<Path> allowed; // without links
    std::map<std::string, FoundUnit> found;
    std::unordered_map<std::string, Listing> listings;
    std::string trouble; // that the search under way has met: a file may be there and cannot be seen
    std::size_t questions = 0;
    std::size_t entries = 0; // in all listings
};

} // namespace reader
