#include "designs/formats/shared/Files.h"

#include <fstream>
#include <iterator>
#include <system_error>

namespace design {

std::optional<std::string> readBeside(const std::filesystem::path& path, const std::string& name)
{
    const std::filesystem::path file = path.parent_path() / name;
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error) || error)
        return std::nullopt;
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

} // namespace design
