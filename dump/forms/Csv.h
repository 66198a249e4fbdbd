#pragma once

#include "dump/facts/Source.h"
#include "dump/rows/Schema.h"

#include <functional>
#include <string_view>

namespace dump {

/// Writes the tables as texts of comma-separated values (RFC 4180), each piece by piece. The first line has the names
/// of the columns. A value that there is not is empty, an empty text is `""`; U+FFFD stands for U+0000.
void writeCsv(const Source& source, const std::function<void(TableName, std::string_view)>& write);

} // namespace dump
