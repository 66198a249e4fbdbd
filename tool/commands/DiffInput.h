#pragma once

#include "tool/commands/Commands.h"

#include "kiv/KivPackage.h"

#include "reader/document/Document.h"

#include <memory>
#include <optional>
#include <string>

/// One of two states that are compared: a Rose file, or the model of a design or model file, which is compared by the
/// Rose file that an export would make of it.
struct DiffInput {
    std::string file;
    std::optional<reader::Document> document;
    std::unique_ptr<KivModel> model;
};

/// Reads a file of any format that is known; none after its mistakes were told. Throws `DesignError`.
[[nodiscard]] std::optional<DiffInput> readDiffInput(const std::string& file, const ReadRequest& reading);

/// Makes documents of models. Where the other state is a Rose file, the names of types are those of the type system
/// with which it differs least: which one its export had is not in a file.
void settleDocuments(DiffInput& before, DiffInput& after);
