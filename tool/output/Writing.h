#pragma once

#include <string>
#include <string_view>
#include <system_error>

/// Nobody reads a pipe any more, as when `head` has seen enough. That is no failure to speak of.
class PipeClosed : public std::system_error {
public:
    using std::system_error::system_error;
};

/// Throws what `errno` says about the file `name`.
[[noreturn]] void failWith(const std::string& name);

/// Writes all of `text`, in as many pieces as the system takes it. Throws `std::system_error` that names the file, and
/// `PipeClosed` when it is a pipe that nobody reads.
void writeAll(int descriptor, std::string_view text, const std::string& name);
