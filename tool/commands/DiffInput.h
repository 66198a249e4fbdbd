#pragma once

#include "tool/commands/Commands.h"

#include "kiv/KivPackage.h"

#include "compare/changes/Changes.h"
#include "reader/document/Document.h"

#include <memory>
#include <optional>
#include <string>

/// One of two states that are compared.
struct DiffInput {
    std::string file;
    std::optional<reader::Document> document;
    std::unique_ptr<KivModel> model; ///< of a design, or of what is compared with one
};

struct DiffInputs {
    DiffInput before;
    DiffInput after;

    /// Whether an export gave what is different: with the type system goes a language, of which designs know nothing.
    [[nodiscard]] bool isOfExport(const compare::Change& change) const;
    /// How far places may differ that are the same: most designs have pixels.
    [[nodiscard]] std::int64_t nearness() const;
};

/// Reads two files of any formats that are known; none after their mistakes were told. A design or model file is
/// compared by the Rose file that an export would make of it, and so is a Rose file beside it, of which an export holds
/// not all either; but one that an export has made stays, and the names of types are those of the type system with
/// which the other differs least, since which one it had is not in the file. Throws `DesignError`.
[[nodiscard]] std::optional<DiffInputs> readDiffInputs(const std::string& oldFile, const std::string& newFile,
                                                       const ReadRequest& reading);
