#pragma once

#include "TemporaryFile.h"

#include <memory>
#include <string>
#include <string_view>

/// A file that is written whole or not at all.
///
/// The text goes into a temporary file first, in the folder of the target; `commit` puts it in place. A target that
/// exists keeps its mode and owner, and a symbolic link is followed. A target that is no regular file (a pipe, a
/// device, `-` for standard output) gets the finished text copied.
class OutputFile {
public:
    /// Throws `std::system_error` when the target cannot be written; the message names it.
    explicit OutputFile(const std::string& target);

    /// A path under which the temporary file can be opened; plain ASCII wherever the system offers one.
    [[nodiscard]] std::string temporaryPath() const;
    /// Appends to the temporary file.
    void write(std::string_view text);
    /// Size of the temporary file in bytes.
    [[nodiscard]] std::size_t size() const;
    /// Whether the temporary file ends with `ending`.
    [[nodiscard]] bool endsWith(std::string_view ending) const;
    /// Throws what the system answers to one more write to the temporary file; returns when it takes it.
    void provokeWriteError();
    /// Makes the text durable and puts it in place. Throws `std::system_error` when that fails, and then the target is
    /// as it was.
    void commit();

private:
    void copyToTarget();
    void takeOverModeAndOwner();

    std::string name;   // as the user gave it
    std::string target; // links followed; empty for standard output
    bool isReplaceable = true;
    std::unique_ptr<TemporaryFile> temporary;
};
