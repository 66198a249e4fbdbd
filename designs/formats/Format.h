#pragma once

#include "designs/model/Catalogue.h"
#include "designs/model/Design.h"
#include "designs/model/Report.h"
#include "text/Sink.h"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace reader {
struct ReadOptions;
}

namespace design {

/// The file as it was read, and where it lay (for files that belong to it, such as the diagrams beside a model).
struct Source {
    std::string_view text;                        ///< all bytes, undecoded
    std::filesystem::path path;                   ///< "-" for standard input
    const reader::ReadOptions* reading = nullptr; ///< how Rose files are read; null: as they say themselves
};

/// The file cannot be read. `what()` names the reason, with line and column ("12:5: ...") where there is one, not the
/// file.
class UnreadableDesign : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The design does not fit into what is to be written. `what()` says why, without the file.
class UnwritableDesign : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What is to be written: a settled design, whose relations join classifiers and packages, and where it goes.
struct Writing {
    const Design& design;
    const Catalogue& catalogue; ///< of the design
    std::string stem;           ///< name of the output without folder and ending
    bool isFolder = false;      ///< the output is a folder, which takes a file for each diagram
    std::string ending = {};    ///< of the output; may be empty
};

/// What a file that comes out is called. One without a name is the output itself; others lie beside it. In a folder
/// with a file for each diagram the name is that of the diagram, of which the command makes one that every file system
/// takes.
struct FileName {
    std::string name = {};
    std::string kind = {};  ///< of the diagram, e.g. "class"
    std::string owner = {}; ///< name of what the diagram belongs to
};

/// Takes the files that come out.
class Files {
public:
    Files() = default;
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;
    virtual ~Files() = default;

    /// Begins one; the one before it is finished then.
    virtual text::Sink& begin(const FileName& name) = 0;
};

/// One format that designs come in, go out in, or both. Formats are rows of a table (`formats()`), one module each.
struct Format {
    std::string_view name;                 ///< as given to --from and --to, e.g. "staruml"
    std::string_view description;          ///< one line for --list-formats
    std::vector<std::string_view> endings; ///< of the names of files, e.g. ".mdj"; the first is that of what comes out
    std::string_view lookedFor; ///< what a file must hold to be worth importing, for the message when nothing is found
    /// Whether `source` is of this format, told by its content and without parsing all of it. Where several say yes,
    /// the first in the table is taken.
    bool (*recognizes)(const Source& source) = nullptr;
    /// Reads it, and fills the design as `docs/formats.md` says. Throws UnreadableDesign; what the design cannot hold
    /// goes into `report`.
    /// Null in a format that only goes out.
    Design (*read)(const Source& source, Report& report) = nullptr;
    /// Writes the whole design, or throws UnwritableDesign before it begins a file. What the format cannot hold goes
    /// into `report`, by the words of `countElements`. Null in a format that only comes in.
    void (*write)(const Writing& writing, Files& files, Report& report) = nullptr;
    bool isWrittenByDiagram = false; ///< what comes out is a file for each diagram, or all of them in one
    bool hasDiagrams = true;         ///< of one that goes out
    bool hasPlaces = true;           ///< what comes out says where boxes are, so that they must have places
    bool drawsDocument = false;      ///< what comes out has diagrams that are taken from the Rose file itself
};

} // namespace design
