#pragma once

#include "dump/Schema.h"
#include "dump/Source.h"

namespace dump {

/// Gives all rows of all tables, those of each in their order.
void giveRows(const Source& source, const RowSink& sink);

} // namespace dump
