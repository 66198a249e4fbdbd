#pragma once

#include <memory>
#include <sqlite3.h>
#include <string>

namespace dump {

/// A way for SQLite into one file that is there already, whatever opens it: it makes no journal beside it, follows no
/// name to elsewhere and locks nothing, since nobody else knows the file.
class SqliteFile {
public:
    /// Throws `std::system_error` with `name`.
    SqliteFile(const std::string& path, const std::string& name);
    ~SqliteFile();
    SqliteFile(const SqliteFile&) = delete;
    SqliteFile& operator=(const SqliteFile&) = delete;

    /// An open database in the file, which ends before this does.
    [[nodiscard]] sqlite3* database() const;
    /// `errno` of the first access that failed; 0 when none did.
    [[nodiscard]] int error() const;

    struct Access;

private:
    std::unique_ptr<Access> access;
};

} // namespace dump
