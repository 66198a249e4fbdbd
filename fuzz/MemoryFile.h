#pragma once

#include <cerrno>
#include <string>
#include <sys/mman.h>
#include <system_error>
#include <unistd.h>

/// A file that has a path but lies in memory only.
class MemoryFile {
public:
    MemoryFile() : descriptor(memfd_create("fuzzed.mdl", MFD_CLOEXEC))
    {
        if (descriptor < 0)
            throw std::system_error(errno, std::generic_category(), "memfd_create");
    }
    ~MemoryFile() { close(descriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    [[nodiscard]] std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor); }
    [[nodiscard]] std::string content() const
    {
        const off_t size = lseek(descriptor, 0, SEEK_END);
        std::string text(static_cast<std::size_t>(size), '\0');
        std::size_t done = 0;
        while (done < text.size()) {
            const ssize_t count = pread(descriptor, text.data() + done, text.size() - done, static_cast<off_t>(done));
            if (count <= 0)
                throw std::system_error(errno, std::generic_category(), "pread");
            done += static_cast<std::size_t>(count);
        }
        return text;
    }

private:
    int descriptor;
};
