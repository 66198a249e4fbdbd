#pragma once

#include "dump/facts/Source.h"
#include "dump/facts/Walk.h"
#include "dump/rows/Row.h"

namespace dump {

/// A row for each relation that an element is, or that it says of itself, as its type.
void addRelations(const Source& source, Elements::Number element, const Extent& extent, Row& row, const RowSink& sink);

} // namespace dump
