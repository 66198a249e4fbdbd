#pragma once

#include "designs/model/Catalogue.h"
#include "designs/model/Design.h"

#include <unordered_set>

namespace design {

/// Which classifiers become classes of the host model and which types. Classes and interfaces are classes. Primitive
/// types, and data types that only bear the name of one, are types; so are enumerations that attributes have, since the
/// host writes a class for each of those by itself. What a diagram shows, or a relationship joins, is a class in any
/// case: the host can draw and join nothing else.
class Selection {
public:
    Selection(const Package& root, const Catalogue& catalogue);

    [[nodiscard]] bool isClass(const Classifier& classifier) const;

private:
    void addTypesOf(const Classifier& classifier, const Catalogue& catalogue);
    [[nodiscard]] bool isNeededAsClass(const Classifier& classifier) const;

    std::unordered_set<std::string_view> shownOrJoined; // by identifier
    std::unordered_set<const Classifier*> usedAsTypes;
};

} // namespace design
