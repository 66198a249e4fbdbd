#pragma once

#include "designs/model/Catalogue.h"
#include "designs/model/Design.h"
#include "designs/model/Report.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace design {

/// How many of a kind were taken, e.g. {"classes", 25}.
struct Taken {
    std::string_view kind;
    std::size_t count = 0;
};

struct ModelText {
    std::string text; ///< of a model file
    std::vector<Taken> taken;
};

/// Writes a design whose references all lead somewhere as the text of a model file.
[[nodiscard]] ModelText writeModel(const Design& design, const Catalogue& catalogue, Report& report);

} // namespace design
