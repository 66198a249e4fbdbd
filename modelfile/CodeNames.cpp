#include "modelfile/CodeNames.h"

#include <algorithm>

namespace modelfile {

std::optional<int> codeNamed(std::span<const CodeName> names, std::string_view name)
{
    const auto found = std::find_if(names.begin(), names.end(), [&](const CodeName& row) { return row.name == name; });
    return found == names.end() ? std::nullopt : std::optional(found->code);
}

std::string_view nameOfCode(std::span<const CodeName> names, int code)
{
    const auto found = std::find_if(names.begin(), names.end(), [&](const CodeName& row) { return row.code == code; });
    return found == names.end() ? std::string_view() : found->name;
}

} // namespace modelfile
