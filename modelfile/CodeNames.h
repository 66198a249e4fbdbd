#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

/// Names of the codes of a model: a model file may have them in place of the numbers.

namespace modelfile {

struct CodeName {
    std::string_view name;
    int code;
};

inline constexpr std::array<CodeName, 8> classTypeNames = {{{"class", 1},
                                                            {"parameterizedClass", 2},
                                                            {"instantiatedClass", 3},
                                                            {"classUtility", 4},
                                                            {"parameterizedClassUtility", 5},
                                                            {"instantiatedClassUtility", 6},
                                                            {"metaclass", 8},
                                                            {"interface", 9}}};
inline constexpr std::array<CodeName, 2> classVisibilityNames = {{{"public", 0}, {"implementation", 1}}};
inline constexpr std::array<CodeName, 4> visibilityNames = {
    {{"public", 0}, {"protected", 1}, {"private", 2}, {"implementation", 3}}};
inline constexpr std::array<CodeName, 4> concurrencyNames = {
    {{"sequential", 0}, {"guarded", 1}, {"active", 2}, {"synchronous", 3}}};
inline constexpr std::array<CodeName, 3> containmentNames = {{{"byValue", 0}, {"byReference", 1}, {"unspecified", 2}}};
inline constexpr std::array<CodeName, 2> boundNames = {{{"*", -1}, {"n", -1}}};

[[nodiscard]] std::optional<int> codeNamed(std::span<const CodeName> names, std::string_view name);
/// The first name of a code, or the empty text.
[[nodiscard]] std::string_view nameOfCode(std::span<const CodeName> names, int code);

} // namespace modelfile
