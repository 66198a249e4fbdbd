#pragma once

#include "designs/model/Design.h"
#include "designs/model/Report.h"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace design {

/// The file as it was read, and where it lay (for files that belong to it, such as the diagrams beside a model).
struct Source {
    std::string_view text;      ///< all bytes, undecoded
    std::filesystem::path path; ///< "-" for standard input
};

/// The file cannot be read. `what()` names the reason, with line and column ("12:5: ...") where there is one, not the
/// file.
class UnreadableDesign : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// One format that designs come in. Formats are rows of a table (`formats()`), one module each.
struct Format {
    std::string_view name;                 ///< as given to --from, e.g. "staruml"
    std::string_view description;          ///< one line for --list-formats
    std::vector<std::string_view> endings; ///< of the names of files, e.g. ".mdj"
    std::string_view lookedFor; ///< what a file must hold to be worth importing, for the message when nothing is found
    /// Whether `source` is of this format, told by its content and without parsing all of it. Where several say yes,
    /// the first in the table is taken.
    bool (*recognizes)(const Source& source);
    /// Reads it, and fills the design as `docs/formats.md` says. Throws UnreadableDesign; what the design cannot hold
    /// goes into `report`.
    Design (*read)(const Source& source, Report& report);
};

} // namespace design
