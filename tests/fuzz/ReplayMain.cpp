#include "Target.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

// Feeds every file in the given folders to a fuzz target. A folder that is not there has no files.
namespace {

std::vector<std::filesystem::path> filesIn(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> files;
    if (std::filesystem::exists(folder))
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            if (entry.is_regular_file())
                files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<std::uint8_t> contentOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    file.exceptions(std::ios::failbit | std::ios::badbit);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const std::vector<std::filesystem::path> folders(arguments + 1, arguments + argumentCount);
    std::size_t count = 0;
    for (const std::filesystem::path& folder : folders) {
        for (const std::filesystem::path& path : filesIn(folder)) {
            std::cout << path.string() << std::endl; // names the input when the next line ends the program
            const std::vector<std::uint8_t> content = contentOf(path);
            LLVMFuzzerTestOneInput(content.data(), content.size());
            ++count;
        }
    }
    std::cout << count << " inputs\n";
    return count > 0 ? 0 : 1;
}
