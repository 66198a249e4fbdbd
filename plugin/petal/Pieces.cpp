#include "petal/Pieces.h"

#include <bit>

namespace {

// Calls `plain` for each run of bytes that stay, and `escaped` with what stands for a byte between two runs.
template <class Plain, class Escaped>
void forEachRun(std::string_view text, Plain plain, Escaped escaped)
{
    for (;;) {
        const std::size_t length = plainLength(text);
        plain(text.substr(0, length));
        if (length == text.size())
            return;
        escaped(escapeSequence(text[length]));
        text.remove_prefix(length + 1);
    }
}

// The digits of the numbers below 100, with the zero in front.
constexpr auto digitPairs = [] {
    std::array<std::array<char, 2>, 100> pairs = {};
    for (std::size_t number = 0; number < pairs.size(); ++number)
        pairs[number] = {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
    return pairs;
}();

constexpr std::uint64_t tenThousand = 10000;
constexpr bool isLittleEndian = std::endian::native == std::endian::little;

// The four digits of a number below ten thousand, zeros in front, as they stand in memory.
std::uint32_t fourDigits(std::uint32_t number)
{
    std::uint16_t high = 0;
    std::uint16_t low = 0;
    std::memcpy(&high, digitPairs[number / 100].data(), sizeof high);
    std::memcpy(&low, digitPairs[number % 100].data(), sizeof low);
    return isLittleEndian ? high | std::uint32_t{low} << 16 : std::uint32_t{high} << 16 | low;
}

// Takes bytes away from the front of what stands in memory.
std::uint32_t withoutFront(std::uint32_t bytes, int count)
{
    return isLittleEndian ? bytes >> (8 * count) : bytes << (8 * count);
}

} // namespace

char* copyDigits(char* to, std::uint64_t number)
{
    if (number >= tenThousand) {
        to = copyDigits(to, number / tenThousand);
        const std::uint32_t digits = fourDigits(static_cast<std::uint32_t>(number % tenThousand));
        std::memcpy(to, &digits, sizeof digits);
        return to + sizeof digits;
    }
    const int zeros = (number < 1000) + (number < 100) + (number < 10);
    const std::uint32_t digits = withoutFront(fourDigits(static_cast<std::uint32_t>(number)), zeros);
    std::memcpy(to, &digits, sizeof digits);
    return to + sizeof digits - zeros;
}

char* copyTabs(char* to, std::size_t count)
{
    return std::fill_n(to, count, '\t');
}

char* copyEscaped(char* to, std::string_view text)
{
    const auto plain = [&](std::string_view run) { to = copy(to, run); };
    const auto escaped = [&](const char* sequence) {
        *to++ = sequence[0];
        *to++ = sequence[1];
    };
    forEachRun(text, plain, escaped);
    return to;
}

void putEscaped(std::string_view text)
{
    forEachRun(
        text, [](std::string_view run) { put(run); }, [](const char* sequence) { put(sequence); });
}
