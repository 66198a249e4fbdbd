#pragma once

#include <string>
#include <vector>

/// Git as another program, which is looked for as shells do.

struct GitResult {
    int exitCode = 0;
    std::string output; ///< what it wrote to standard output, without the last line end
};

/// Runs `git` with these arguments in the current folder; its standard error is that of this process. Throws
/// `std::system_error` when it cannot be started.
[[nodiscard]] GitResult runGit(const std::vector<std::string>& arguments);
