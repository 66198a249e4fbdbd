#include "petal/Quid.h"

#include <algorithm>

Quid::Quid(QuidForm form, long number)
{
    constexpr std::size_t leastDigits = 6;
    auto rest = static_cast<unsigned long>(number);
    std::size_t digits = leastDigits;
    for (unsigned long high = rest >> (4 * leastDigits); high != 0; high >>= 4)
        ++digits;
    std::copy(form.prefix.begin(), form.prefix.end(), text.begin());
    length = form.prefix.size() + digits;
    for (std::size_t place = length; place > form.prefix.size(); rest >>= 4)
        text[--place] = "0123456789ABCDEF"[rest & 0xFU];
}
