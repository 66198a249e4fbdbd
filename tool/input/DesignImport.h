#pragma once

#include "tool/input/ModelInput.h"

#include "designs/Import.h"
#include "text/JsonWriter.h"

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

/// Designs of other tools, as the commands take them.

/// A design cannot be imported. The message names the file, the place where there is one, and the reason.
class DesignError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct ImportedDesign {
    std::string file; ///< as messages call it
    std::string_view format;
    design::Converted converted;
    design::Report report;
};

[[nodiscard]] bool isModelFile(std::string_view text);
[[nodiscard]] bool isRoseFile(std::string_view text);

/// What a file is that was taken for a Rose file and is none, and which command takes it; empty when it is of nothing
/// known. The file is read for that.
[[nodiscard]] std::string whyNotARoseFile(const std::string& path);

/// The format named, or the one that the content is of. Throws `DesignError` when it is of none.
[[nodiscard]] const design::Format& formatOfImport(std::string_view text, const std::string& path,
                                                   const std::string& name);

/// The same for what may be a model file, for which null stands.
[[nodiscard]] const design::Format* formatOfExport(std::string_view text, const std::string& path,
                                                   const std::string& name);

/// Throws `DesignError`.
[[nodiscard]] ImportedDesign importDesign(const design::Format& format, const design::Source& source,
                                          std::optional<bool> layout);

/// Reads a design to write it in another format. Throws `DesignError`.
[[nodiscard]] design::Design readSource(const design::Format& format, const design::Source& source,
                                        design::Report& report);

/// Places what has no place in the model of a model file; what could only be done roughly is told on standard error,
/// unless `isQuiet`.
[[nodiscard]] std::unique_ptr<KivModel> placeBoxes(std::unique_ptr<KivModel> model, const std::string& name,
                                                   bool isQuiet);

/// What was taken, left and made up, by kinds, for a terminal.
[[nodiscard]] std::string summaryOf(const ImportedDesign& imported);

/// What was left and made up alone, a line for each kind and reason.
[[nodiscard]] std::string linesOf(const design::Report& report);

/// Adds the members `left` and `made`, with what was left and made up one by one, to the object that is open.
void writeReport(text::JsonWriter& json, const design::Report& report);

/// The same one by one, as JSON, and the warnings; of a model file, which leaves nothing out, without a design.
[[nodiscard]] std::string reportAsJson(const std::optional<ImportedDesign>& imported,
                                       const std::vector<ModelWarning>& warnings = {});

/// Why no format has this name, or the empty text when one has.
[[nodiscard]] std::string whyNotAFormat(const std::string& name);
