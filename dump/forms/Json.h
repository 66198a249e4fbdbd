#pragma once

#include "dump/facts/Source.h"

#include <functional>
#include <string_view>

namespace dump {

/// Writes the document as one tree in JSON, piece by piece: an object or property a line. Its names are those of the
/// columns of the tables.
void writeJson(const Source& source, const std::function<void(std::string_view)>& write);

} // namespace dump
