#pragma once

#include <string>
#include <sys/stat.h>
#include <vector>

/// What a file is to the system, whatever it is called.
[[nodiscard]] std::string identityOf(dev_t device, ino_t inode);

/// Where an output goes: a file that is made or replaced, or something that gets the finished text written to it: a
/// pipe, a device, or a descriptor that is open already. Links are followed.
class OutputTarget {
public:
    /// `-` is standard output. Throws `std::system_error` that names the target when it cannot be written.
    explicit OutputTarget(const std::string& name);

    /// As messages call it.
    [[nodiscard]] const std::string& name() const { return shownName; }
    /// Whether it is a file that can be replaced as a whole.
    [[nodiscard]] bool isReplaceable() const { return replaceable; }
    /// Behind all links; empty for a descriptor.
    [[nodiscard]] const std::string& path() const { return realPath; }
    /// Of what was open when the command started, so that its position is kept; else -1.
    [[nodiscard]] int descriptor() const { return openDescriptor; }
    /// What the target is, by every way in which another can be the same. Terminals and the like, which may be written
    /// for more than one purpose, are told apart by descriptor only.
    [[nodiscard]] std::vector<std::string> identities() const;

private:
    std::string shownName;
    std::string realPath;
    int openDescriptor = -1;
    bool replaceable = false;
};
