#pragma once

#include "designs/model/Catalogue.h"
#include "designs/model/Report.h"
#include "designs/model/Selection.h"

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace design {

/// The types of the model: one for each that an attribute, parameter or result has, and one for each type of the design
/// that is no class.
class TypeTable {
public:
    TypeTable(const Catalogue& theCatalogue, const Selection& theSelection, Report& theReport)
        : catalogue(theCatalogue), selection(theSelection), report(theReport)
    {
    }

    /// Identifier of the type that a reference means; empty for a reference to nothing.
    [[nodiscard]] const std::string& idOf(const Reference& reference);
    /// Enters a classifier that is no class.
    void add(const Classifier& classifier) { static_cast<void>(entryOf(classifier)); }

    struct Type {
        std::string id;
        std::string name;
        const Classifier* classifier = nullptr; ///< of the design, when it is one
    };
    /// In the order in which they were met.
    [[nodiscard]] const std::vector<Type>& types() const { return entries; }
    [[nodiscard]] bool isEnumeration(const Type& type) const;

private:
    const std::string& entryOf(const Classifier& classifier);
    const std::string& entryNamed(const Reference& reference);
    [[nodiscard]] std::string unusedId(std::string id);

    const Catalogue& catalogue;
    const Selection& selection;
    Report& report;
    std::vector<Type> entries;
    std::unordered_set<std::string> ownIds;
    std::unordered_map<std::string, std::string> ids; // by what the design calls the type
};

} // namespace design
