#pragma once

#include <functional>
#include <string>
#include <vector>

// What the outputs of a command are called, whose inputs may be several.

/// An input, `-` for standard input, and what is made of it: a file, or a folder for many; `-` is standard output.
struct Making {
    std::string input;
    std::string output;
};

/// Whether the user means a folder by it: one that is there, or a name that ends in a slash.
[[nodiscard]] bool meansFolder(const std::string& output);

/// The file that is made of each input: `output` itself, or in the folder that it means, or by default in the current
/// folder, one called as `defaultName` calls what is made of an input. The folder is made if it is not there. Of
/// several inputs none may be overwritten, nor may two of the outputs be one. Throws `WrongUsage` and `FileClash` when
/// they do not go together, before anything is made, and `std::system_error`.
[[nodiscard]] std::vector<Making> outputsFor(const std::vector<std::string>& inputs, const std::string& output,
                                             const std::function<std::string(const std::string&)>& defaultName);

/// Makes a folder and those around it; the empty path is the current folder. Throws `std::system_error`.
void makeFolder(const std::string& path);

/// Calls `make` for each, which gives an exit code, and gives the greatest.
[[nodiscard]] int makeAll(const std::vector<Making>& makings, const std::function<int(const Making&)>& make);

/// The name of a file without its folder and ending.
[[nodiscard]] std::string stemOf(const std::string& path);
