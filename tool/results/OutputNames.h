#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

// What the outputs of a command are called, whose inputs may be several.

/// An input, `-` for standard input, and what is made of it: a file, or a folder for many; `-` is standard output.
struct Making {
    std::string input;
    std::string output;
};

/// A folder for what a command makes, made with those around it where they are missing. What of them is empty at the
/// end, because nothing came of it, is taken away again.
class OutputFolder {
public:
    /// The empty path is the current folder. Throws `std::system_error`.
    explicit OutputFolder(const std::string& path);
    ~OutputFolder();
    OutputFolder(OutputFolder&& other) noexcept = default;
    OutputFolder& operator=(OutputFolder&& other) = delete;

private:
    std::vector<std::filesystem::path> made; // from the outermost
};

struct Outputs {
    std::vector<Making> makings;
    OutputFolder folder;
};

/// Whether the user means a folder by it: one that is there, or a name that ends in a slash.
[[nodiscard]] bool meansFolder(const std::string& output);

/// The file that is made of each input: `output` itself, or in the folder that it means, or by default in the current
/// folder, one called as `defaultName` calls what is made of an input. The folder is made if it is not there. Of
/// several inputs none may be overwritten, nor may two of the outputs be one. Throws `WrongUsage` and `FileClash` when
/// they do not go together, before anything is made, and `std::system_error`.
[[nodiscard]] Outputs outputsFor(const std::vector<std::string>& inputs, const std::string& output,
                                 const std::function<std::string(const std::string&)>& defaultName);

/// A folder for what is made of each of several inputs, in the folder `output` and called as the input is without its
/// ending. None of them is made. Throws `WrongUsage` when two would be one.
[[nodiscard]] std::vector<Making> foldersFor(const std::vector<std::string>& inputs, const std::string& output);

/// Throws `WrongUsage` when what the option `option` names, `file`, is to tell of more than one of the `inputs`.
void refuseForSeveral(const char* option, const std::string& file, std::size_t inputs);

/// Calls `make` for each, which gives an exit code, and gives the greatest.
[[nodiscard]] int makeAll(const std::vector<Making>& makings, const std::function<int(const Making&)>& make);

/// The name of a file without its folder and ending, of a model file without the whole `.model.json`.
[[nodiscard]] std::string stemOf(const std::string& path);
