#pragma once

#include "designs/formats/ea/write/Output.h"

namespace design::ea {

/// The UML model: packages and what is in them.
void writeTree(Output& output);

// What classifiers hold. Properties of other elements are written here, too.

void writeFeatures(Output& output, const Classifier& classifier);
/// <lowerValue xmi:type="uml:LiteralInteger" xmi:id="EAID_LI000001" value="0"/> and the upper one
void writeBounds(Output& output, const std::optional<Multiplicity>& multiplicity);
void writeConstraints(Output& output, const Element& element);
void writeProperty(Output& output, const char* role, const Attribute& attribute);
/// A property of the classifier at the other end, or of the association.
void writeEnd(Output& output, const char* role, const Association& association, std::size_t index);

} // namespace design::ea
