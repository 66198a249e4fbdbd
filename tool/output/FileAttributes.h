#pragma once

#include <string>
#include <sys/stat.h>

/// Gives a new file what belongs to the one that it replaces: attributes of users, group and owner, access control
/// list, mode. Nobody gets more than before: an owner that cannot be kept becomes who writes the file, without
/// privileges; what else cannot be kept is a failure. Throws `std::system_error` that names the file `name`.
void takeOverAttributes(int descriptor, const std::string& path, const struct stat& status, const std::string& name);
