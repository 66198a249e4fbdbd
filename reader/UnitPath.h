#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace reader {

/// The file that `fileName` of a controlled unit means, if it is there: `$curdir` is `folder`, that of the file that
/// names it; other symbols are looked up in `paths`; backslashes and `/` part folders; letters may differ in case.
/// Where that leads to no file, the one of the same name in `folder` or in `modelFolder`.
[[nodiscard]] std::optional<std::filesystem::path> unitFile(std::string_view fileName,
                                                            const std::filesystem::path& folder,
                                                            const std::filesystem::path& modelFolder,
                                                            const std::map<std::string, std::filesystem::path>& paths);

} // namespace reader
