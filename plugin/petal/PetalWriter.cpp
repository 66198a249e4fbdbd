#include "petal/PetalWriter.h"

#include <charconv>

void putEscaped(std::string_view text)
{
    for (;;) {
        const std::size_t plain = plainLength(text);
        put(text.substr(0, plain));
        if (plain == text.size())
            return;
        put(std::string_view(escapeSequence(text[plain])));
        text.remove_prefix(plain + 1);
    }
}

void putNumber(long long number)
{
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    theFile.append({digits, static_cast<std::size_t>(end - digits)});
}
