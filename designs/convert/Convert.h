#pragma once

#include "designs/model/Catalogue.h"
#include "designs/model/Counts.h"
#include "designs/model/Design.h"
#include "designs/model/Report.h"

#include "kiv/KivPackage.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace design {

/// How many of a kind were taken, e.g. {"classes", 25}.
struct Taken {
    std::string_view kind;
    std::size_t count = 0;
};

/// A design as a host's model.
struct Converted {
    std::unique_ptr<KivModel> model =
        std::make_unique<KivModel>(); ///< complete: the collections that mirror references are filled
    std::size_t objects = 1;          ///< model objects in it, the model itself included
    std::unordered_map<const KivObject*, std::string> ids; ///< of what has one in the design
    std::vector<Taken> taken;
    std::vector<ElementCount> read; ///< what the file held

    /// The identifier that an object has in the design; empty when it has none.
    [[nodiscard]] std::string idOf(const KivObject& object) const;
};

/// Makes a model of a design whose references all lead somewhere.
[[nodiscard]] Converted convert(const Design& design, const Catalogue& catalogue, Report& report);

} // namespace design
