#pragma once

#include "designs/model/Design.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace design {

/// How many elements of a kind there are, e.g. {"class", 25}. The words are those that the report has for elements that
/// are left.
struct ElementCount {
    std::string_view kind;
    std::size_t count = 0;
};

/// The elements of a design by kinds, in the order of the table of kinds; those that there are none of do not appear.
[[nodiscard]] std::vector<ElementCount> countElements(const Design& design);

/// The word for a classifier of that kind.
[[nodiscard]] std::string_view nameOf(ClassifierKind kind);

} // namespace design
