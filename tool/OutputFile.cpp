#include "OutputFile.h"

#include <array>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int mostLinks = 40;

[[noreturn]] void fail(const std::string& name)
{
    throw std::system_error(errno, std::generic_category(), name);
}

bool isOpenFile(const fs::path& path)
{
    const fs::path folder = path.parent_path();
    std::error_code none;
    const fs::path real = fs::canonical(folder.empty() ? "." : folder, none);
    return real.string().starts_with("/proc/") && real.filename() == "fd";
}

// The path behind a chain of symbolic links, whether or not anything exists there. Links of the system to open files
// are not followed: what they name is the open file, whatever path it once had.
std::string followLinks(const std::string& name)
{
    fs::path path = name;
    std::error_code none;
    for (int links = 0; fs::is_symlink(path, none) && !isOpenFile(path); ++links) {
        if (links == mostLinks) {
            errno = ELOOP;
            fail(name);
        }
        const fs::path link = fs::read_symlink(path, none);
        path = link.is_absolute() ? link : path.parent_path() / link;
    }
    return path.string();
}

std::string folderOf(const std::string& path)
{
    const std::string folder = fs::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

void writeAll(int descriptor, std::string_view text, const std::string& name)
{
    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            fail(name);
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

} // namespace

OutputFile::OutputFile(const std::string& theTarget) : name(theTarget)
{
    if (name == "-") {
        name = "standard output";
        isReplaceable = false;
    } else {
        target = followLinks(name);
        struct stat status = {};
        const bool exists = stat(target.c_str(), &status) == 0;
        if (exists && S_ISDIR(status.st_mode)) {
            errno = EISDIR;
            fail(name);
        }
        if (exists && access(target.c_str(), W_OK) != 0)
            fail(name);
        isReplaceable = (!exists || S_ISREG(status.st_mode)) && !isOpenFile(target);
    }
    try {
        temporary =
            std::make_unique<TemporaryFile>(isReplaceable ? folderOf(target) : fs::temp_directory_path().string());
    } catch (const std::system_error& error) {
        throw std::system_error(error.code(), name);
    }
}

std::string OutputFile::temporaryPath() const
{
    const std::string path = "/proc/self/fd/" + std::to_string(temporary->descriptor());
    return access(path.c_str(), W_OK) == 0 ? path : temporary->path();
}

void OutputFile::write(std::string_view text)
{
    writeAll(temporary->descriptor(), text, name);
}

std::size_t OutputFile::size() const
{
    struct stat status = {};
    fstat(temporary->descriptor(), &status);
    return static_cast<std::size_t>(status.st_size);
}

bool OutputFile::endsWith(std::string_view ending) const
{
    const std::size_t length = size();
    if (length < ending.size())
        return false;
    std::string tail(ending.size(), '\0');
    const auto offset = static_cast<off_t>(length - ending.size());
    return pread(temporary->descriptor(), tail.data(), tail.size(), offset) == static_cast<ssize_t>(tail.size()) &&
           tail == ending;
}

void OutputFile::provokeWriteError()
{
    // More than a block, so that room left over in the last one does not hide a full disk.
    const std::vector<char> block(std::size_t{1} << 20U);
    if (lseek(temporary->descriptor(), 0, SEEK_END) < 0)
        fail(name);
    writeAll(temporary->descriptor(), {block.data(), block.size()}, name);
    if (fsync(temporary->descriptor()) != 0)
        fail(name);
}

void OutputFile::commit()
{
    if (!isReplaceable)
        return copyToTarget();
    takeOverModeAndOwner();
    if (fsync(temporary->descriptor()) != 0)
        fail(name);
    try {
        temporary->renameTo(target);
    } catch (const std::system_error& error) {
        throw std::system_error(error.code(), name);
    }
    // The new name lasts only when the folder does; a file system that cannot say so is not a failure of the export.
    const int folder = open(folderOf(target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        fsync(folder);
        close(folder);
    }
}

void OutputFile::takeOverModeAndOwner()
{
    const int descriptor = temporary->descriptor();
    struct stat status = {};
    if (stat(target.c_str(), &status) != 0) {
        const mode_t mask = umask(0);
        umask(mask);
        if (fchmod(descriptor, 0666U & ~mask) != 0)
            fail(name);
        return;
    }
    struct stat own = {};
    if (fstat(descriptor, &own) != 0)
        fail(name);
    if ((own.st_uid != status.st_uid || own.st_gid != status.st_gid) &&
        fchown(descriptor, status.st_uid, status.st_gid) != 0)
        fail(name + ": the owner of the file cannot be kept");
    if (fchmod(descriptor, status.st_mode & 07777U) != 0)
        fail(name);
}

void OutputFile::copyToTarget()
{
    const int descriptor = target.empty() ? dup(STDOUT_FILENO) : open(target.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor < 0)
        fail(name);
    try {
        std::vector<char> piece(std::size_t{256} * 1024);
        off_t offset = 0;
        for (;;) {
            const ssize_t count = pread(temporary->descriptor(), piece.data(), piece.size(), offset);
            if (count < 0)
                fail(name);
            if (count == 0)
                break;
            writeAll(descriptor, {piece.data(), static_cast<std::size_t>(count)}, name);
            offset += count;
        }
    } catch (...) {
        close(descriptor);
        throw;
    }
    if (close(descriptor) != 0)
        fail(name);
}
