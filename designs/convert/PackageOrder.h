#pragma once

#include "designs/model/Design.h"

namespace design {

/// Puts packages whose diagrams show classes of a neighbour behind that neighbour, as far as that goes: readers of Rose
/// files look for the classes of a diagram in what they have read so far. Otherwise the order of the file stays.
void orderPackages(Package& root);

} // namespace design
