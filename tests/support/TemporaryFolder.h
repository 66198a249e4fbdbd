#pragma once

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

/// An empty folder that disappears with everything in it.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "petal-test-XXXXXX").string();
        if (!mkdtemp(name.data()))
            throw std::system_error(errno, std::generic_category(), name);
        folder = name;
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return folder; }
    [[nodiscard]] std::string operator/(const std::string& name) const { return (folder / name).string(); }

    void write(const std::string& name, std::string_view content) const
    {
        std::ofstream file(folder / name, std::ios::binary);
        file.exceptions(std::ios::failbit | std::ios::badbit);
        file.write(content.data(), static_cast<std::streamsize>(content.size()));
        file.flush();
    }
    /// The content of a file; empty when there is none.
    [[nodiscard]] std::string read(const std::string& name) const
    {
        std::ifstream file(folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    /// The names in the folder, sorted.
    [[nodiscard]] std::vector<std::string> names() const
    {
        std::vector<std::string> result;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            result.push_back(entry.path().filename().string());
        std::sort(result.begin(), result.end());
        return result;
    }

private:
    std::filesystem::path folder;
};
