#pragma once

#include "designs/model/Design.h"

#include <string>

namespace design {

/// The documentation of an element, with a line for each thing that the host model has no place for: multiplicity of an
/// attribute or result, constraints of what is no association, direction of a parameter.
[[nodiscard]] std::string documentationOf(const Element& element);
[[nodiscard]] std::string documentationOf(const Attribute& attribute);
[[nodiscard]] std::string documentationOf(const Operation& operation);
[[nodiscard]] std::string documentationOf(const AssociationEnd& end);

/// The constraints of an association or end as one text.
[[nodiscard]] std::string constraintOf(const Association& association);
[[nodiscard]] std::string constraintOf(const AssociationEnd& end);

} // namespace design
