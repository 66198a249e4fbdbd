#include "petal/Pieces.h"

namespace {

// The digits of a byte.
constexpr auto hexadecimal = [] {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::array<std::array<char, 2>, 256> pairs = {};
    for (std::size_t byte = 0; byte < pairs.size(); ++byte)
        pairs[byte] = {digits[byte / 16], digits[byte % 16]};
    return pairs;
}();

constexpr int leastDigits = 6;
constexpr int digitBits = 4;

// The last digits of a number, an even count of them.
inline char* copyPairs(char* to, unsigned long number, int digits)
{
    for (int shift = digits * digitBits - 8; shift >= 0; shift -= 8, to += 2)
        std::memcpy(to, hexadecimal[(number >> shift) & 0xFFU].data(), 2);
    return to;
}

// All digits of a number that is not zero.
char* copyHexadecimal(char* to, unsigned long number)
{
    int digits = 0;
    for (unsigned long rest = number; rest != 0; rest >>= digitBits)
        ++digits;
    if (digits % 2 != 0)
        *to++ = hexadecimal[number >> (--digits * digitBits)][1];
    return copyPairs(to, number, digits);
}

} // namespace

char* copy(char* to, const Quid& quid)
{
    std::memcpy(to, quid.form.prefix.data(), quid.form.prefix.size());
    to += QuidForm::length;
    const unsigned long high = quid.number >> (leastDigits * digitBits);
    return copyPairs(high == 0 ? to : copyHexadecimal(to, high), quid.number, leastDigits);
}
