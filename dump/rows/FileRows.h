#pragma once

#include "dump/facts/Source.h"
#include "dump/rows/Schema.h"

namespace dump {

/// Gives the rows that say what was read: the dump itself, files, missing units, findings.
void giveFileRows(const Source& source, const RowSink& sink);

} // namespace dump
