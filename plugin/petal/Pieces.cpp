#include "petal/Pieces.h"

namespace {

// Calls `visit` for each run of bytes that stay, and for each sequence that stands for an escaped byte.
template <class Visit>
void forEachRun(std::string_view text, Visit visit)
{
    for (;;) {
        const std::size_t plain = plainLength(text);
        visit(text.substr(0, plain));
        if (plain == text.size())
            return;
        visit(std::string_view(escapeSequence(text[plain])));
        text.remove_prefix(plain + 1);
    }
}

} // namespace

char* copyEscaped(char* to, std::string_view text)
{
    forEachRun(text, [&](std::string_view run) { to = copy(to, run); });
    return to;
}

void putEscaped(std::string_view text)
{
    forEachRun(text, [](std::string_view run) { put(run); });
}
