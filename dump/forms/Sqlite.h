#pragma once

#include "dump/facts/Source.h"

#include <string>

namespace dump {

/// Writes the tables as an SQLite database into the file at `path`, which is there and empty. `name` is what messages
/// call it. U+FFFD stands for U+0000. Throws `std::system_error` and `std::runtime_error`.
void writeSqlite(const Source& source, const std::string& path, const std::string& name);

/// The version of SQLite that is used.
[[nodiscard]] std::string sqliteVersion();

} // namespace dump
