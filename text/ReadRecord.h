#pragma once

#include <string>
#include <sys/stat.h>
#include <vector>

namespace text {

/// A regular file that was read: what it is to the system, and what it was called.
struct FileRead {
    dev_t device = 0;
    ino_t inode = 0;
    std::string name;
};

/// Keeps, while it lives, which files its thread reads: what comes of them must not take their place.
class ReadRecord {
public:
    ReadRecord();
    ~ReadRecord();
    ReadRecord(const ReadRecord&) = delete;
    ReadRecord& operator=(const ReadRecord&) = delete;

    [[nodiscard]] const std::vector<FileRead>& files() const { return read; }
    /// A file that will be read, `-` for standard input. One that is not there is none.
    void expect(const std::string& path);
    /// Adds a file to the record that the thread keeps, if it keeps one. Pipes and devices are left out.
    static void note(const std::string& path, const struct stat& status);

private:
    std::vector<FileRead> read;
    ReadRecord* const outer;
};

} // namespace text
