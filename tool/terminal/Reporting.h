#pragma once

#include <string>
#include <string_view>

// What the commands say.

/// The process's exit code.
enum ExitCode : int {
    done = 0,
    exportFailed = 1,
    foundFaults = 1,
    wrongUsage = 2,
    invalidModel = 3,
};

/// Why a file is not read that takes more memory than there is.
inline constexpr const char* notEnoughMemory = "there is not enough memory for this file";

/// A message on standard error: `petal: ` and the text, as one line that steers no terminal whatever names are in it.
void report(std::string_view message);

/// A message whose line ends are meant, such as a list of what can be chosen.
void reportLines(std::string_view message);

/// The line that says what a command has made: `FILE: TEXT`.
void tellMade(const std::string& file, std::string_view text);
