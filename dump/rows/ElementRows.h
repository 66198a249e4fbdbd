#pragma once

#include "dump/facts/Source.h"
#include "dump/facts/Walk.h"
#include "dump/rows/Row.h"

/// What objects are in a model, a row each.

namespace dump {

/// The row of an element, and those of the relations that it is or says.
void addElement(const Source& source, Elements::Number element, const Extent& extent, Row& row, const RowSink& sink);

/// The row of a view on a diagram.
void addView(const Source& source, Elements::Number view, Elements::Number container, const Extent& extent, Row& row,
             const RowSink& sink);

} // namespace dump
