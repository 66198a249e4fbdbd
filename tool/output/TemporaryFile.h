#pragma once

#include <string>
#include <sys/types.h>

/// A file in a folder that has no name yet, open for reading and writing. It disappears with the object, and with the
/// process however that ends. Where the file system has no files without names, or nothing would open one, it has an
/// unused name, which only an end without notice leaves behind.
class TemporaryFile {
public:
    /// `mode` is what programs ask for a new file; the system takes off what it must, and adds what the folder hands
    /// on. Throws `std::system_error` that names `folder`.
    TemporaryFile(const std::string& folder, mode_t mode);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    [[nodiscard]] int descriptor() const { return fd; }
    /// A path under which the file can be opened; plain ASCII wherever the system offers one.
    [[nodiscard]] std::string openablePath() const;
    /// The file has the mode that a new one has here; until then its owner may write it, whatever that is.
    void takeUsualMode();
    /// Gives the file its final name, when nothing has that; returns whether it did. Throws `std::system_error`.
    [[nodiscard]] bool placeAt(const std::string& target);
    /// Gives the file its final name in the place of what has it, in one step, which is true then. Throws
    /// `std::system_error`, and then all is as it was.
    bool replace(const std::string& target);

private:
    void openUnnamed(mode_t mode);
    void openNamed(mode_t mode);
    bool letOwnerWrite();

    std::string folder;
    std::string name; ///< empty while it has none
    int fd = -1;
    mode_t usualMode = 0;
};
