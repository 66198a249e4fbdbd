#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <system_error>

namespace text {

/// A file cannot be read; the message names it and the reason.
class FileUnreadable : public std::system_error {
public:
    using std::system_error::system_error;
};

/// Bytes that a parser may read behind the end of a text.
inline constexpr std::size_t roomBehind = 64;

/// All bytes of a file, or of standard input when `path` is `-`. The string has room for `roomBehind` bytes more.
/// Throws FileUnreadable, with EFBIG for a file of more than `mostBytes`.
[[nodiscard]] std::string readFile(const std::string& path,
                                   std::size_t mostBytes = std::numeric_limits<std::size_t>::max());

/// The same for a file that another file names, whose writer is not trusted: `-` is a name as any other, and what is no
/// regular file is refused before it is opened, for to open a device or a pipe may already do something or wait. No
/// more is read than the size that the file system tells, which is nothing of what the system makes up on the way; and
/// nothing of a large file with holes, which take no room on the disk.
[[nodiscard]] std::string readNamedFile(const std::string& path,
                                        std::size_t mostBytes = std::numeric_limits<std::size_t>::max());

/// What messages call the file: "standard input" for `-`.
[[nodiscard]] std::string fileName(const std::string& path);

} // namespace text
