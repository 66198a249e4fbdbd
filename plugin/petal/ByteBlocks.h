#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

// Texts are copied in blocks, and looked through on the way: most are short, and for them a call, or a step for each
// byte, costs more than everything else.

namespace byteBlocks {

using Block = std::uint8_t __attribute__((vector_size(16)));
using Halves = std::uint64_t __attribute__((vector_size(16)));

/// Copies `Part` bytes by way of a register.
template <class Part>
Part move(char* to, const char* from) noexcept
{
    Part part;
    std::memcpy(&part, from, sizeof part);
    std::memcpy(to, &part, sizeof part);
    return part;
}

/// Copies `size` bytes, at least as many as a `Part` has and at most twice as many: two moves that overlap do. Gives
/// both.
template <class Part>
Halves moveBoth(char* to, const char* from, std::size_t size) noexcept
{
    const std::size_t second = size - sizeof(Part);
    return Halves{move<Part>(to, from), move<Part>(to + second, from + second)};
}

[[nodiscard]] inline bool isAny(Halves mask) noexcept
{
    return (mask[0] | mask[1]) != 0;
}

/// Marks the bytes for which `escapeSequence` has something.
[[nodiscard]] inline Halves marksOfEscaped(Block block) noexcept
{
    return reinterpret_cast<Halves>((block == '"') | (block == '\\') | (block == '\n') | (block == '\r'));
}

/// Copies fewer than 16 bytes; gives all of them, some twice, and zeros.
inline Halves moveFew(char* to, const char* from, std::size_t size) noexcept
{
    if (size >= 8)
        return moveBoth<std::uint64_t>(to, from, size);
    if (size >= 4)
        return moveBoth<std::uint32_t>(to, from, size);
    if (size >= 2)
        return moveBoth<std::uint16_t>(to, from, size);
    return size == 1 ? Halves{move<std::uint8_t>(to, from), 0} : Halves{0, 0};
}

} // namespace byteBlocks

/// Copies `text` to `to`, which does not overlap it.
inline char* copyBytes(char* to, std::string_view text) noexcept
{
    using namespace byteBlocks;
    constexpr std::size_t many = 64;
    const std::size_t size = text.size();
    if (size < sizeof(Block)) {
        moveFew(to, text.data(), size);
    } else if (size <= many) {
        for (std::size_t at = 0; at + sizeof(Block) < size; at += sizeof(Block))
            move<Block>(to + at, text.data() + at);
        move<Block>(to + size - sizeof(Block), text.data() + size - sizeof(Block));
    } else {
        std::memcpy(to, text.data(), size);
    }
    return to + size;
}

/// The same; tells whether a byte is among them that `escapeSequence` has something for.
[[nodiscard]] inline bool copyAndFindEscaped(char* to, std::string_view text) noexcept
{
    using namespace byteBlocks;
    const std::size_t size = text.size();
    if (size < sizeof(Block))
        return isAny(marksOfEscaped(reinterpret_cast<Block>(moveFew(to, text.data(), size))));
    const std::size_t last = size - sizeof(Block);
    Halves marks = {0, 0};
    for (std::size_t at = 0; at < last; at += sizeof(Block))
        marks |= marksOfEscaped(move<Block>(to + at, text.data() + at));
    return isAny(marks | marksOfEscaped(move<Block>(to + last, text.data() + last)));
}
