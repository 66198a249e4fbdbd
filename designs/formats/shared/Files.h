#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace design {

/// The bytes of the file `name` in the folder of `path`, none if it cannot be read.
[[nodiscard]] std::optional<std::string> readBeside(const std::filesystem::path& path, const std::string& name);

} // namespace design
