#pragma once

#include "reader/document/Document.h"
#include "reader/index/Index.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace reader {

/// What there is to say about a document.
struct CheckResult {
    std::vector<Finding> findings; ///< by file and place, those of the reading among them
    std::size_t found = 0;         ///< references that lead to an element
    std::size_t none = 0;          ///< references that say that they lead nowhere
    std::size_t unloaded = 0;      ///< references into units that are not loaded
    std::size_t missing = 0;       ///< references that lead to nothing
    std::map<std::string, std::size_t>
        unknownKinds; ///< kinds of objects that are not known here, and how many there are
};

/// Whether the document is whole: references, quids, view numbers, and what known readers of the format cannot take.
[[nodiscard]] CheckResult check(const Document& document, const Index& index);

} // namespace reader
