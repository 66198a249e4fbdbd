#pragma once

#include "designs/convert/ModelBuilder.h"
#include "designs/model/Catalogue.h"
#include "designs/model/Selection.h"

#include <string>
#include <unordered_map>

namespace design {

/// The types of the model, in the order in which they are met: one for each that an attribute, parameter or result has,
/// and one for each type of the design that is no class.
class TypeTable {
public:
    TypeTable(ModelBuilder& theBuilder, const Catalogue& theCatalogue, const Selection& theSelection, Report& theReport)
        : builder(theBuilder), catalogue(theCatalogue), selection(theSelection), report(theReport)
    {
    }

    /// The type that a reference means; null for a reference to nothing.
    [[nodiscard]] KivType* typeOf(const Reference& reference);
    /// Enters a classifier that is no class.
    void add(const Classifier& classifier) { static_cast<void>(typeOf(classifier)); }

private:
    KivType* typeOf(const Classifier& classifier);
    KivType* typeNamed(const Reference& reference);
    KivType* create(const KivString& name);
    void fillEnumeration(KivType& type, const Classifier& enumeration);
    static void fillDataType(KivType& type);

    ModelBuilder& builder;
    const Catalogue& catalogue;
    const Selection& selection;
    Report& report;
    std::unordered_map<const Classifier*, KivType*> ofClassifiers;
    std::unordered_map<std::string, KivType*> byName; // types that are no element of the design
};

} // namespace design
