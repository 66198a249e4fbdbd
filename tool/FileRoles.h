#pragma once

#include <string>
#include <vector>

/// A file that a command was given, `-` for a standard stream, and what for. An empty path: none.
struct FileRole {
    std::string path;
    const char* role;
};

/// Two roles for one file would cost the user one of its contents: a message that says which, or the empty text. The
/// first file is the one that is read, the others are written.
[[nodiscard]] std::string clashOf(const std::vector<FileRole>& files);
