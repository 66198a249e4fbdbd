#include "tool/output/OutputTarget.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <system_error>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr int mostLinks = 40;

[[noreturn]] void fail(const std::string& name, int error)
{
    throw std::system_error(error, std::generic_category(), name);
}

// The folder of a link of the system to an open file, "/proc/12/fd"; else empty.
std::string folderOfOpenFiles(const fs::path& path)
{
    const fs::path folder = path.parent_path();
    std::error_code none;
    const std::string real = fs::canonical(folder.empty() ? "." : folder, none).string();
    return real.starts_with("/proc/") && real.ends_with("/fd") ? real : std::string();
}

// The path behind a chain of symbolic links, whether or not anything exists there. Links of the system to open files
// are not followed: what they name is the open file, whatever path it once had.
std::string followLinks(const std::string& name)
{
    fs::path path = name;
    std::error_code none;
    for (int links = 0; fs::is_symlink(path, none) && folderOfOpenFiles(path).empty(); ++links) {
        if (links == mostLinks)
            fail(name, ELOOP);
        std::error_code error;
        const fs::path link = fs::read_symlink(path, error);
        if (error)
            fail(name, error.value());
        path = link.is_absolute() ? link : path.parent_path() / link;
    }
    return path.string();
}

// A descriptor that this process was given; those that it opened itself are closed in other programs.
int givenDescriptor(int number, const std::string& name)
{
    const int flags = fcntl(number, F_GETFD);
    const int mode = fcntl(number, F_GETFL);
    if (flags < 0 || mode < 0 || (flags & FD_CLOEXEC) != 0 || (mode & O_ACCMODE) == O_RDONLY)
        fail(name, EBADF);
    return number;
}

// The descriptor that a path stands for, as /dev/stdout and /dev/fd/3 do. To open such a path would begin the file
// behind it anew.
std::optional<int> descriptorBehind(const std::string& path, const std::string& name)
{
    const std::string folder = folderOfOpenFiles(path);
    if (folder.empty())
        return std::nullopt;
    const std::string own = std::string("/proc/").append(std::to_string(getpid())).append("/");
    const std::string number = fs::path(path).filename().string();
    if (folder.starts_with(own) && number.find_first_not_of("0123456789") == std::string::npos)
        return givenDescriptor(static_cast<int>(std::strtol(number.c_str(), nullptr, 10)), name);
    if (fs::is_regular_file(path))
        throw std::system_error(EBADF, std::generic_category(),
                                name + ": this is a file that another process has open");
    return std::nullopt;
}

} // namespace

std::string identityOf(dev_t device, ino_t inode)
{
    return std::to_string(device) + ":" + std::to_string(inode);
}

OutputTarget::OutputTarget(const std::string& name) : shownName(name)
{
    if (name == "-") {
        shownName = "standard output";
        openDescriptor = givenDescriptor(STDOUT_FILENO, shownName);
        return;
    }
    realPath = followLinks(name);
    if (const auto descriptor = descriptorBehind(realPath, name)) {
        realPath.clear();
        openDescriptor = *descriptor;
        return;
    }
    struct stat status = {};
    const bool exists = stat(realPath.c_str(), &status) == 0;
    if (!exists && errno != ENOENT)
        fail(name, errno);
    if (exists && S_ISDIR(status.st_mode))
        fail(name, EISDIR);
    if (exists && access(realPath.c_str(), W_OK) != 0)
        fail(name, errno);
    replaceable = !exists || S_ISREG(status.st_mode);
}

std::vector<std::string> OutputTarget::identities() const
{
    std::vector<std::string> all;
    struct stat status = {};
    const bool exists = (openDescriptor >= 0 ? fstat(openDescriptor, &status) : stat(realPath.c_str(), &status)) == 0;
    if (openDescriptor >= 0)
        all.push_back("descriptor " + std::to_string(openDescriptor));
    if (exists && !S_ISCHR(status.st_mode))
        all.push_back(identityOf(status.st_dev, status.st_ino));
    std::error_code none;
    if (!exists)
        all.push_back(fs::weakly_canonical(fs::absolute(realPath, none), none).string());
    return all;
}
