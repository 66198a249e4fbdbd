#include "FileRoles.h"

#include <filesystem>
#include <system_error>

namespace {

std::filesystem::path realPath(const std::string& path)
{
    std::error_code none;
    return std::filesystem::weakly_canonical(std::filesystem::absolute(path, none), none);
}

bool isSameFile(const std::string& a, const std::string& b)
{
    std::error_code none;
    return !a.empty() && a != "-" && !b.empty() && b != "-" &&
           (std::filesystem::equivalent(a, b, none) || realPath(a) == realPath(b));
}

} // namespace

std::string clashOf(const std::vector<FileRole>& files)
{
    for (auto a = files.begin(); a != files.end(); ++a) {
        for (auto b = a + 1; b != files.end(); ++b) {
            if (isSameFile(a->path, b->path))
                return b->path + ": " + b->role + " would overwrite " + a->role;
            if (a != files.begin() && a->path == "-" && b->path == "-")
                return std::string("standard output cannot take ") + a->role + " and " + b->role + " both";
        }
    }
    return "";
}
