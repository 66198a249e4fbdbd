#include "tool/output/TemporaryFile.h"

#include "tool/output/Ending.h"
#include "tool/output/Writing.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <random>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr int mostTries = 100;
constexpr mode_t ofOwner = S_IRUSR | S_IWUSR;

std::string randomName(const std::string& folder)
{
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789";
    constexpr int length = 8;
    static std::random_device random;
    std::uniform_int_distribution<std::size_t> letter(0, letters.size() - 1);
    std::string name = folder + "/.petal-";
    for (int i = 0; i < length; ++i)
        name += letters[letter(random)];
    return name;
}

// Calls `make` with names until it makes something of one: that name, or none and `errno`.
template <class Make>
std::string makeUnused(const std::string& folder, const Make& make)
{
    for (int tries = 0; tries < mostTries; ++tries) {
        std::string name = randomName(folder);
        if (make(name))
            return name;
        if (errno != EEXIST)
            break;
    }
    return {};
}

std::string linkOf(int descriptor)
{
    return "/proc/self/fd/" + std::to_string(descriptor);
}

bool linkTo(int descriptor, const std::string& path)
{
    return linkat(AT_FDCWD, linkOf(descriptor).c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

// File systems that cannot rename without replacing cannot be asked to: then nothing was there a moment ago.
bool renameToUnused(const std::string& from, const std::string& to)
{
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;
    struct stat status = {};
    if (lstat(to.c_str(), &status) == 0) {
        errno = EEXIST;
        return false;
    }
    return std::rename(from.c_str(), to.c_str()) == 0;
}

} // namespace

TemporaryFile::TemporaryFile(const std::string& theFolder, mode_t mode) : folder(theFolder)
{
    openUnnamed(mode);
    if (fd < 0)
        openNamed(mode);
}

void TemporaryFile::openUnnamed(mode_t mode)
{
    fd = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, mode);
    const bool isUsable = fd >= 0 && letOwnerWrite() && access(linkOf(fd).c_str(), W_OK) == 0;
    if (fd >= 0 && !isUsable) // nothing could give the file a name
        close(std::exchange(fd, -1));
}

void TemporaryFile::openNamed(mode_t mode)
{
    const SignalBlock block;
    name = makeUnused(folder, [&](const std::string& unused) {
        fd = open(unused.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, mode);
        return fd >= 0;
    });
    if (fd < 0)
        failWith(folder);
    removeAtEnd(name.c_str());
    if (letOwnerWrite())
        return;
    const int error = errno;
    unlink(name.c_str());
    keepAtEnd(name.c_str());
    close(fd);
    errno = error;
    failWith(folder);
}

// The one who makes a file may take from himself the right to open it once more.
bool TemporaryFile::letOwnerWrite()
{
    struct stat status = {};
    if (fstat(fd, &status) != 0)
        return false;
    usualMode = status.st_mode & 07777U;
    return (usualMode & ofOwner) == ofOwner || fchmod(fd, usualMode | ofOwner) == 0;
}

void TemporaryFile::takeUsualMode()
{
    if ((usualMode & ofOwner) != ofOwner && fchmod(fd, usualMode) != 0)
        failWith(folder);
}

TemporaryFile::~TemporaryFile()
{
    const SignalBlock block;
    if (!name.empty()) {
        unlink(name.c_str());
        keepAtEnd(name.c_str());
    }
    close(fd);
}

std::string TemporaryFile::openablePath() const
{
    std::string path = linkOf(fd);
    return name.empty() || access(path.c_str(), W_OK) == 0 ? path : name;
}

bool TemporaryFile::placeAt(const std::string& target)
{
    const SignalBlock block;
    if (name.empty() ? linkTo(fd, target) : renameToUnused(name, target)) {
        keepAtEnd(name.c_str());
        name.clear();
        return true;
    }
    if (errno != EEXIST)
        failWith(target);
    return false;
}

bool TemporaryFile::replace(const std::string& target)
{
    const SignalBlock block;
    if (name.empty()) {
        name = makeUnused(folder, [&](const std::string& unused) { return linkTo(fd, unused); });
        if (name.empty())
            failWith(target);
        removeAtEnd(name.c_str());
    }
    if (std::rename(name.c_str(), target.c_str()) != 0)
        failWith(target);
    keepAtEnd(name.c_str());
    name.clear();
    return true;
}
