#pragma once

#include <string>

/// A file with an unused name in a folder, open for reading and writing. It disappears with the object, and also when
/// a signal ends the process; only an end without notice leaves it behind.
class TemporaryFile {
public:
    /// Throws `std::system_error` that names `folder`.
    explicit TemporaryFile(const std::string& folder);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    [[nodiscard]] int descriptor() const { return fd; }
    [[nodiscard]] const std::string& path() const { return name; }
    /// Gives the file its final name, in one step; throws `std::system_error` when that fails.
    void renameTo(const std::string& target);

private:
    std::string name;
    int fd = -1;
};

/// Occupies the standard streams that are closed, so that no file of ours becomes one of them. Reading and writing
/// them fails all the same. To be called first of all.
void occupyStandardStreams();

/// Makes signals that end the process remove its temporary files first, and makes writes past a limit or to a closed
/// pipe fail instead of ending the process. To be called once, before the first temporary file.
void handleSignals();
