#include "tool/output/FileAttributes.h"

#include "tool/output/Writing.h"

#include <cerrno>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

constexpr const char* accessList = "system.posix_acl_access";
constexpr std::string_view ofUsers = "user.";

bool hasNoSuchAttribute()
{
    return errno == ENODATA || errno == ENOTSUP;
}

// What `get` gives when it has room for it: it is called without room first, to learn the size. None where file systems
// have nothing of the kind.
template <class Get>
bool fetch(std::string& value, const Get& get)
{
    for (;;) {
        const ssize_t size = get(nullptr, 0);
        value.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
        const ssize_t count = size > 0 ? get(value.data(), value.size()) : size;
        if (count < 0 && errno == ERANGE) // it has grown in between
            continue;
        value.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
        return count >= 0;
    }
}

bool fetchAttribute(std::string& value, const std::string& path, const char* attribute)
{
    return fetch(value, [&](char* to, std::size_t room) { return getxattr(path.c_str(), attribute, to, room); });
}

void takeOverAttributesOfUsers(int descriptor, const std::string& path, const std::string& name)
{
    std::string list;
    if (!fetch(list, [&](char* to, std::size_t room) { return listxattr(path.c_str(), to, room); }) &&
        !hasNoSuchAttribute())
        failWith(name);
    std::string value;
    for (std::size_t start = 0; start < list.size(); start = list.find('\0', start) + 1) {
        const char* const attribute = list.c_str() + start;
        if (!std::string_view(attribute).starts_with(ofUsers))
            continue;
        if (!fetchAttribute(value, path, attribute) ||
            fsetxattr(descriptor, attribute, value.data(), value.size(), 0) != 0)
            failWith(name + ": the attribute " + attribute + " of the file cannot be kept");
    }
}

// Returns the bits of the mode that remain.
mode_t takeOverOwner(int descriptor, const struct stat& status, const std::string& name)
{
    struct stat own = {};
    if (fstat(descriptor, &own) != 0)
        failWith(name);
    const bool isSame = own.st_uid == status.st_uid && own.st_gid == status.st_gid;
    if (isSame || fchown(descriptor, status.st_uid, status.st_gid) == 0)
        return status.st_mode & 07777U;
    if (own.st_gid != status.st_gid && fchown(descriptor, static_cast<uid_t>(-1), status.st_gid) != 0)
        failWith(name + ": the group of the file cannot be kept");
    return status.st_mode & 0777U; // programs do not run as their new owner
}

void takeOverAccessList(int descriptor, const std::string& path, const std::string& name)
{
    const std::string reason = name + ": the access control list of the file cannot be kept";
    std::string value;
    if (fetchAttribute(value, path, accessList)) {
        if (fsetxattr(descriptor, accessList, value.data(), value.size(), 0) != 0)
            failWith(reason);
    } else if (!hasNoSuchAttribute() ||
               (fremovexattr(descriptor, accessList) != 0 && !hasNoSuchAttribute())) // of what the folder hands on
        failWith(reason);
}

} // namespace

void takeOverAttributes(int descriptor, const std::string& path, const struct stat& status, const std::string& name)
{
    takeOverAttributesOfUsers(descriptor, path, name);
    const mode_t mode = takeOverOwner(descriptor, status, name);
    takeOverAccessList(descriptor, path, name);
    if (fchmod(descriptor, mode) != 0)
        failWith(name);
}
