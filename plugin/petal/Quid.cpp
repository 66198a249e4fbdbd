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

} // namespace

char* copy(char* to, const Quid& quid)
{
    constexpr int leastDigits = 6;
    constexpr int digitBits = 4;
    std::memcpy(to, quid.form.prefix.data(), quid.form.prefix.size());
    to += QuidForm::length;
    int digits = leastDigits;
    for (unsigned long high = quid.number >> (leastDigits * digitBits); high != 0; high >>= digitBits)
        ++digits;
    if (digits % 2 != 0)
        *to++ = hexadecimal[quid.number >> (--digits * digitBits)][1];
    for (int shift = digits * digitBits - 8; shift >= 0; shift -= 8, to += 2)
        std::memcpy(to, hexadecimal[(quid.number >> shift) & 0xFFU].data(), 2);
    return to;
}
