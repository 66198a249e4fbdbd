#pragma once

#include "reader/notation/Petal.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace reader {

struct ReadOptions {
    /// What iconv calls the encoding of the files, instead of what `charSet` says; or empty.
    std::string charset;
    /// Folders behind the symbols of unit paths: {"FRAMEWORK_PATH", "/designs/shared"} for `$FRAMEWORK_PATH\...`.
    std::map<std::string, std::filesystem::path> paths;
    /// If there are any, the files of controlled units are read from these folders and what is in them alone, whatever
    /// names and links say. They need not be there.
    std::vector<std::filesystem::path> unitsWithin;
    /// Whether the files of controlled units are opened. Otherwise no file but the first is touched.
    bool readsUnits = true;
};

/// Where something stands: line and column as editors count them, from 1; a column is a character.
struct Place {
    std::string file;
    std::size_t line = 1;
    std::size_t column = 1;
};

enum class Severity : std::uint8_t {
    note,    ///< worth knowing; says nothing against the file
    warning, ///< the file is readable, but something in it leads nowhere or a reader stumbles over it
    error,   ///< the file is not well formed
};

/// "note", "warning", "error".
[[nodiscard]] std::string_view nameOf(Severity severity);

struct Finding {
    Severity severity = Severity::error;
    std::string_view kind; ///< a short constant name, e.g. "syntax"
    Place place;
    std::string text;
};

/// One file of a document: the first, or a controlled unit.
struct File {
    std::string name;               ///< as it is called in messages
    std::int64_t version = 0;       ///< `version` of the `Petal` object, 37 to 50; 0 when there is none
    std::int64_t charSet = 0;       ///< its `charSet`
    std::string writtenBy;          ///< its `_written`
    std::string encoding;           ///< what its bytes were decoded from
    const Object* header = nullptr; ///< the `Petal` object; null when the file has none
    const Object* root = nullptr;   ///< `Design`, or the package of a unit; null when the file has none
    const Object* stub = nullptr;   ///< the object that names this unit's file and stood in the place of `root`
};

/// A controlled unit that could not be read.
struct MissingUnit {
    const Object* stub = nullptr; ///< the object that names its file
    std::string fileName;         ///< as it says
    std::string reason;           ///< why it could not
    bool isUnwanted = false;      ///< units were not to be read
};

/// Whether iconv knows an encoding of that name.
[[nodiscard]] bool isCharset(const std::string& name);

/// The file is no petal file, or cannot be opened. `what()` says why, without the file's name.
class NotPetal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A file and the controlled units that it names, as one tree: the root of a unit stands where the object that names
/// its file stood. What is wrong with the text is in `findings`; the tree then holds what could be read.
class Document {
public:
    /// Reads the file at `path` (`-` is standard input) and its units. Throws NotPetal.
    explicit Document(const std::string& path, const ReadOptions& options = {});
    /// Reads `bytes`, which came from a file called `name`; units are looked for beside it. Throws NotPetal.
    Document(std::string bytes, const std::string& name, const ReadOptions& options = {});
    ~Document();
    Document(Document&& other) noexcept;
    Document& operator=(Document&& other) noexcept;

    /// `Design` of a model, or the package of a unit.
    [[nodiscard]] const Object& root() const;
    /// The first is the one that was asked for.
    [[nodiscard]] const std::vector<File>& files() const;
    /// The file that `position` (of an object, list or value of this document) is in.
    [[nodiscard]] const File& fileOf(const char* position) const;
    /// The whole text of one of `files()`, decoded.
    [[nodiscard]] std::string_view text(const File& file) const;
    [[nodiscard]] const std::vector<MissingUnit>& missingUnits() const;
    /// The missing unit whose file `stub` names, or null.
    [[nodiscard]] const MissingUnit* missingUnit(const Object& stub) const;
    /// What was wrong with the text of the files, in their order.
    [[nodiscard]] const std::vector<Finding>& findings() const;

    /// Line and column of something in this document.
    [[nodiscard]] Place place(const char* position) const;
    [[nodiscard]] Place place(const Object& object) const { return place(object.position()); }

    /// Number of objects in all files.
    [[nodiscard]] std::size_t objectCount() const;

private:
    class Units;
    struct Contents;
    std::unique_ptr<Contents> contents;
};

} // namespace reader
