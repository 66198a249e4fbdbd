#include "petal/Pieces.h"

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

} // namespace

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
