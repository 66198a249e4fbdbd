#pragma once

#include "dump/facts/Source.h"
#include "dump/rows/Schema.h"

namespace dump {

/// Gives all rows of all tables, those of each in their order.
void giveRows(const Source& source, const RowSink& sink);

} // namespace dump
