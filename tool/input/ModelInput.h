#pragma once

#include "kiv/KivFaults.h"
#include "kiv/KivModelFile.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/// Models as the commands take them: what is wrong with one is told on standard error, a place a line.

/// The model in the text of a model file, or none after its mistakes were told. `name` stands for the file in messages.
/// Gives the ids of its objects as well unless `ids` is null.
[[nodiscard]] std::optional<LoadedModel> takeModelFile(const std::string& text, const std::string& name,
                                                       KivIds* ids = nullptr);

/// `10 classes, 2 diagrams`: what of a model is written.
[[nodiscard]] std::string contentsOf(const KivModel& model);

/// Whether a package of the model is the Logical View of its Rose file; otherwise the export makes one around them all.
[[nodiscard]] bool hasLogicalView(const KivModel& model);

/// Something in a model that is taken as it stands and surely not meant.
struct ModelWarning {
    KivFaultKind kind = KivFaultKind::NotWritten;
    std::string text;
    ModelFilePlace place = {0, 0, ""}; ///< in the model file; line 0 in a design that was imported

    [[nodiscard]] bool hasPlace() const { return place.line > 0; }
};

/// In the order of the file whose text is given; null when the model is of no model file. Missing places are a matter
/// only where `needsPlaces`.
[[nodiscard]] std::vector<ModelWarning> findWarnings(KivModel& model, const std::string* text, bool needsPlaces);

void tellWarnings(const std::vector<ModelWarning>& warnings, const std::string& name, const std::string& text);
