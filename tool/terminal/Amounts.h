#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Numbers as sentences have them.

/// `1 class`, `3 classes`.
[[nodiscard]] std::string counted(std::size_t count, std::string_view one, std::string_view many);

/// A number of bytes in two digits or more: `812 bytes`, `4.1 kB`, `41 MB`; a kB are 1000 bytes.
[[nodiscard]] std::string sizeText(std::size_t bytes);
