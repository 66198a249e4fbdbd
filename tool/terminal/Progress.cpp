#include "tool/terminal/Progress.h"

#include "text/Utf8.h"
#include "tool/terminal/Terminal.h"

#include <chrono>
#include <cstdio>
#include <string>

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto patience = std::chrono::seconds(1);
constexpr auto interval = std::chrono::milliseconds(40);

const Clock::time_point start = Clock::now();
Clock::time_point lastShown = start;
bool isShown = false;
bool isForbidden = false;

// As much of a text as fits into `width` columns of a terminal.
std::string displayable(std::string_view text, std::size_t width)
{
    const std::string line = text::onOneLine(text);
    std::size_t end = 0;
    while (end < line.size() && width > 0) {
        end += text::characterLength(std::string_view(line).substr(end));
        --width;
    }
    return line.substr(0, end);
}

} // namespace

void forbidProgress()
{
    isForbidden = true;
}

bool isProgressDue()
{
    if (isForbidden)
        return false;
    const Clock::time_point now = Clock::now();
    return now - start >= patience && now - lastShown >= interval && isErrorTerminal();
}

void showProgress(std::string_view text)
{
    if (!isProgressDue())
        return;
    lastShown = Clock::now();
    isShown = true;
    std::fprintf(stderr, "\r\033[K%s", displayable(text, terminalWidth() - 1).c_str());
    std::fflush(stderr);
}

void clearProgress()
{
    if (isShown)
        std::fputs("\r\033[K", stderr);
    isShown = false;
}
