#pragma once

#include "designs/formats/ea/write/Output.h"

namespace design::ea {

// What the tool keeps beside the UML model, in the order of its files.

void writeElements(Output& output);
void writeConnectors(Output& output);
void writePrimitiveTypes(Output& output);
void writeDiagrams(Output& output);

/// Tells the report which properties have no place in the file.
void leaveProperties(const Output& output);

} // namespace design::ea
