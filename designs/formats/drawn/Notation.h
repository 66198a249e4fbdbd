#pragma once

#include "designs/model/Catalogue.h"
#include "designs/model/Design.h"

#include <string>
#include <string_view>

/// Texts that diagrams of classes have, in the notation of UML, as every format writes them before it escapes them.

namespace design {

/// "number : Integer [0..1] = 0 {readOnly}", without visibility and stereotype.
[[nodiscard]] std::string notationOf(const Attribute& attribute, const Catalogue& catalogue);
/// "cancel(reason : String = none) : Boolean", the same.
[[nodiscard]] std::string notationOf(const Operation& operation, const Catalogue& catalogue);
/// "RED = 0"
[[nodiscard]] std::string notationOf(const Literal& literal);
/// "Item, size : int = 3"
[[nodiscard]] std::string notationOfParameters(const std::vector<Parameter>& parameters, const Catalogue& catalogue);

/// What stands at an end of an association, the most important first: qualifiers, role, multiplicity, constraints.
[[nodiscard]] std::vector<std::string> textsAt(const AssociationEnd& end, const Catalogue& catalogue);
/// "/holds {ordered}"
[[nodiscard]] std::string labelOf(const Association& association);
/// The name of a relationship, and its constraints.
[[nodiscard]] std::string labelOf(const Relationship& relationship);

/// `+`, `#`, `-` or `~`.
[[nodiscard]] char signOf(Visibility visibility);

/// The stereotype of a classifier without the words that its kind says already, with those that its form has.
[[nodiscard]] std::string stereotypeOf(const Classifier& classifier);

/// Name and text of each note at a feature, "total: the sum".
[[nodiscard]] std::vector<std::string> notesOfFeatures(const Classifier& classifier);

/// Whether the box shows a feature.
[[nodiscard]] bool shows(const Box& box, const Attribute& attribute);
[[nodiscard]] bool shows(const Box& box, const Operation& operation);
[[nodiscard]] bool shows(const Box& box, const Literal& literal);

} // namespace design
