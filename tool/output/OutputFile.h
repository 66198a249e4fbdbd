#pragma once

#include "tool/output/OutputTarget.h"
#include "tool/output/TemporaryFile.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A file that is written whole or not at all.
///
/// The text goes into a temporary file first, in the folder of the target; `commit` puts it in place. A target that
/// exists keeps its mode, owner, access control list and attributes of users, and a symbolic link is followed. A target
/// that is no regular file (a pipe, a device, `-` for standard output) gets the finished text written to it.
class OutputFile {
public:
    /// Throws `std::system_error` when the target cannot be written; the message names it.
    explicit OutputFile(const std::string& name);

    /// A path under which the temporary file can be opened; plain ASCII wherever the system offers one.
    [[nodiscard]] std::string temporaryPath() const { return temporary->openablePath(); }
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
    void commit() { commitAll({this}); }
    /// The same for several: the first is put in place when all are as good as there.
    static void commitAll(const std::vector<OutputFile*>& files);

private:
    void prepare();
    void copyToTarget();
    void placeAtTarget();
    /// The file that will be replaced; none for a new one.
    [[nodiscard]] std::optional<struct stat> earlierFile() const;

    OutputTarget target;
    std::optional<TemporaryFile> temporary;
};
