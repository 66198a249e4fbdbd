#pragma once

#include <string>
#include <string_view>

/// The last line of every complete petal file.
inline constexpr std::string_view petalLastLine = "\r\n\tquid       \t\"38F75B630146\"))\r\n";

/// Looks at a petal file the way any reader must: quoted texts end on their line, text blocks begin with LF and bar,
/// parentheses are balanced around two objects, everything else is printable ASCII. Returns what is wrong and where;
/// empty when all is right.
[[nodiscard]] std::string findPetalFault(std::string_view file);
