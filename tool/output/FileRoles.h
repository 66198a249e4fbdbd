#pragma once

#include "text/ReadRecord.h"

#include <stdexcept>
#include <string>
#include <vector>

/// A file that a command will write, `-` for standard output, and what for. An empty path: none.
struct FileRole {
    std::string path;
    const char* role;
};

/// Two roles of one file would cost the user one of its contents. The message says which.
class FileClash : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Throws `FileClash` when an output is a file that was read, or when two outputs are one file; `std::system_error`
/// when an output cannot be written. To be called when all is read, and before anything is written.
void refuseClashes(const std::vector<FileRole>& outputs, const text::ReadRecord& read);
