#pragma once

#include "designs/model/Catalogue.h"
#include "designs/model/Design.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace design::ea {

/// The identifiers of the file: those of the design, with a prefix where they begin otherwise than the tool's do.
class Identifiers {
public:
    explicit Identifiers(const Catalogue& theCatalogue) : catalogue(theCatalogue) {}

    /// Of an element, the same each time; what has none in the design gets one.
    [[nodiscard]] const std::string& of(const Element& element, std::string_view prefix = "EAID_");
    /// Of the element with that identifier.
    [[nodiscard]] const std::string& of(const std::string& id, std::string_view prefix = "EAID_");
    /// One that no element has, e.g. "EAID_LI000001".
    [[nodiscard]] std::string numbered(std::string_view prefix);
    /// One that belongs to another: the prefix and what is behind that of the other.
    [[nodiscard]] std::string beside(std::string_view id, std::string_view prefix);

private:
    [[nodiscard]] std::string take(const std::string& wanted, std::string_view own);

    const Catalogue& catalogue;
    std::unordered_map<std::string, std::string> known; // by prefix and identifier of the design
    std::unordered_map<const Element*, std::string> unnamed;
    std::unordered_set<std::string> taken;
    std::unordered_map<std::string, std::size_t> lastNumbers; // by what is in front of them
};

/// Without the "EAID_" or the like in front.
[[nodiscard]] std::string_view withoutPrefix(std::string_view id);

} // namespace design::ea
