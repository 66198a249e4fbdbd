#include "text/Files.h"

#include "text/ReadRecord.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace text {

namespace {

// A file descriptor that closes itself; standard input stays open.
class Descriptor {
public:
    explicit Descriptor(int theNumber) : number(theNumber) {}
    ~Descriptor()
    {
        if (number > STDIN_FILENO)
            close(number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    [[nodiscard]] int get() const { return number; }

private:
    int number;
};

[[noreturn]] void fail(const std::string& path, int error)
{
    throw FileUnreadable(error, std::generic_category(), path);
}

// What the system has no number for.
class OwnReasons : public std::error_category {
public:
    [[nodiscard]] const char* name() const noexcept override { return "text::Files"; }
    [[nodiscard]] std::string message(int number) const override
    {
        return number == irregular ? "it is no regular file" : "parts of it were never written";
    }

    static constexpr int irregular = 1;
    static constexpr int hasHole = 2;
};

[[noreturn]] void failBecause(int ownReason, const std::string& path)
{
    static const OwnReasons reasons;
    throw FileUnreadable(ownReason, reasons, path);
}

// A signal may come while the system waits for what lies behind a name.
int openForReading(const std::string& path, int flags)
{
    for (;;) {
        const int number = open(path.c_str(), O_RDONLY | O_CLOEXEC | flags);
        if (number >= 0)
            return number;
        if (errno != EINTR)
            fail(path, errno);
    }
}

std::size_t sizeOfRegular(const struct stat& status, const std::string& path, std::size_t mostBytes)
{
    if (S_ISDIR(status.st_mode))
        fail(path, EISDIR);
    if (!S_ISREG(status.st_mode))
        failBecause(OwnReasons::irregular, path);
    const std::size_t size = status.st_size > 0 ? static_cast<std::size_t>(status.st_size) : 0;
    if (size > mostBytes)
        fail(path, EFBIG);
    return size;
}

// No text has holes. A file that is little else takes no room on the disk, and much memory.
void refuseHoles(int descriptor, std::size_t size, const std::string& path)
{
    constexpr std::size_t littleMemory = std::size_t{16} * 1024 * 1024;
    if (size <= littleMemory)
        return;
    const off_t hole = lseek(descriptor, 0, SEEK_HOLE); // the end of the file where there is none
    if (hole >= 0 && static_cast<std::size_t>(hole) < size)
        failBecause(OwnReasons::hasHole, path);
    if (lseek(descriptor, 0, SEEK_SET) != 0)
        fail(path, errno);
}

std::size_t readSome(int descriptor, char* to, std::size_t room, const std::string& path)
{
    for (;;) {
        const ssize_t count = read(descriptor, to, room);
        if (count >= 0)
            return static_cast<std::size_t>(count);
        if (errno != EINTR)
            fail(path, errno);
    }
}

} // namespace

std::string readFile(const std::string& path, std::size_t mostBytes)
{
    constexpr std::size_t leastRoom = std::size_t{64} * 1024;
    const Descriptor file(path == "-" ? STDIN_FILENO : openForReading(path, 0));
    struct stat status = {};
    if (fstat(file.get(), &status) != 0)
        fail(path, errno);
    ReadRecord::note(path, status);
    const bool hasSize = S_ISREG(status.st_mode) && status.st_size > 0;
    const std::size_t size = hasSize ? static_cast<std::size_t>(status.st_size) : 0;
    if (size > mostBytes)
        fail(path, EFBIG);
    std::string bytes;
    std::size_t used = 0;
    for (;;) {
        if (used == bytes.size()) { // room for one byte more than there should be, so that the end shows
            bytes.reserve(std::max({size + 1, leastRoom, used * 2}) + roomBehind);
            bytes.resize(bytes.capacity() - roomBehind);
        }
        const std::size_t count = readSome(file.get(), bytes.data() + used, bytes.size() - used, path);
        used += count;
        if (used > mostBytes)
            fail(path, EFBIG);
        if (count == 0)
            break;
    }
    bytes.resize(used);
    return bytes;
}

std::string readNamedFile(const std::string& path, std::size_t mostBytes)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0)
        fail(path, errno);
    if (sizeOfRegular(status, path, mostBytes) == 0) {
        ReadRecord::note(path, status);
        return {};
    }
    // Something else may have that name by now.
    const Descriptor file(openForReading(path, O_NONBLOCK | O_NOCTTY));
    if (fstat(file.get(), &status) != 0)
        fail(path, errno);
    ReadRecord::note(path, status);
    const std::size_t size = sizeOfRegular(status, path, mostBytes);
    refuseHoles(file.get(), size, path);
    std::string bytes;
    bytes.reserve(size + roomBehind);
    bytes.resize(size);
    std::size_t used = 0;
    while (used < size) {
        const std::size_t count = readSome(file.get(), bytes.data() + used, size - used, path);
        if (count == 0)
            break;
        used += count;
    }
    bytes.resize(used);
    return bytes;
}

std::string fileName(const std::string& path)
{
    return path == "-" ? "standard input" : path;
}

} // namespace text
