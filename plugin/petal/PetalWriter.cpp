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

namespace {

void putTextBlock(std::string_view text)
{
    for (;;) {
        const std::size_t lineFeed = text.find('\n');
        put("\n|");
        put(text.substr(0, lineFeed));
        if (lineFeed == std::string_view::npos)
            break;
        text.remove_prefix(lineFeed + 1);
    }
    put("\n");
}

} // namespace

void put(RoseDesc desc)
{
    if (desc.text.find('\n') != std::string_view::npos || desc.text.find('"') != std::string_view::npos) {
        putTextBlock(desc.text);
        return;
    }
    put("\"");
    putEscaped(desc.text);
    put("\"");
}
