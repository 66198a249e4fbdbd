#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

/// What every fuzz target offers: one input goes through the code under test. Any input may come. A fault ends the
/// process.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

[[nodiscard]] inline std::string_view asText(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

/// Ends the process as a fault when `holds` is false.
inline void require(bool holds, std::string_view expectation)
{
    if (holds)
        return;
    std::fprintf(stderr, "fault: expected %.*s\n", static_cast<int>(expectation.size()), expectation.data());
    std::abort();
}
