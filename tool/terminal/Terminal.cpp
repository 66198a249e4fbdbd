#include "tool/terminal/Terminal.h"

#include "text/Utf8.h"

#include <algorithm>
#include <cstdlib>
#include <cwchar>
#include <iterator>
#include <sys/ioctl.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::size_t usualWidth = 80;
constexpr std::string_view leftOut = "...";

std::string_view lineOf(std::string_view text, std::size_t line)
{
    if (text.starts_with(text::byteOrderMark))
        text.remove_prefix(text::byteOrderMark.size());
    for (; line > 1; --line)
        text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
    text = text.substr(0, text.find('\n'));
    return text.substr(0, text.size() - (text.ends_with('\r') ? 1U : 0U));
}

struct SeverityColour {
    std::string_view word;
    std::string_view code;
};

constexpr SeverityColour severityColours[] = {
    {"error: ", "\033[1;31m"}, {"warning: ", "\033[1;35m"}, {"note: ", "\033[1;36m"}};
constexpr std::string_view plainAgain = "\033[0m";

ColourUse colourUse = ColourUse::automatic;

// A character and how many columns of a terminal it takes.
struct Cell {
    std::string_view bytes;
    std::size_t width;
};

std::vector<Cell> cellsOf(std::string_view line)
{
    std::vector<Cell> cells;
    while (!line.empty()) {
        const std::size_t length = std::max<std::size_t>(text::characterLength(line), 1);
        const int width = wcwidth(static_cast<wchar_t>(text::codePoint(line.substr(0, length))));
        cells.push_back({line.substr(0, length), width < 0 ? 1U : static_cast<std::size_t>(width)});
        line.remove_prefix(length);
    }
    return cells;
}

} // namespace

bool hasColours(int descriptor)
{
    if (colourUse != ColourUse::automatic)
        return colourUse == ColourUse::always;
    const char* const refusal = std::getenv("NO_COLOR");
    const char* const terminal = std::getenv("TERM");
    return isatty(descriptor) == 1 && !(refusal && *refusal) && terminal && *terminal &&
           std::string_view(terminal) != "dumb";
}

bool isErrorTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}

void useColours(ColourUse use)
{
    colourUse = use;
}

std::string inColour(std::string_view message, int descriptor)
{
    const auto* const severity =
        std::find_if(std::begin(severityColours), std::end(severityColours),
                     [&](const SeverityColour& each) { return message.starts_with(each.word); });
    if (severity == std::end(severityColours) || !hasColours(descriptor))
        return std::string(message);
    const std::size_t length = severity->word.size() - 1; // the blank has none
    return std::string(severity->code).append(message, 0, length).append(plainAgain).append(message, length);
}

std::size_t terminalWidth()
{
    struct winsize size = {};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : usualWidth;
}

std::string excerptAt(std::string_view text, std::size_t line, std::size_t column, std::size_t width)
{
    const std::string shown = text::onOneLine(lineOf(text, line)); // a character for a character
    const std::vector<Cell> cells = cellsOf(shown);
    const std::size_t place = std::min(column - 1, cells.size());
    const std::string number = std::to_string(line);
    const std::string margin(number.size() + 1, ' ');
    constexpr std::size_t leastRoom = 20;
    const std::size_t frame = number.size() + std::string_view("  | ").size() + 2 * leftOut.size();
    const std::size_t room = std::max(width, frame + leastRoom) - frame;

    // As much in front of the character as fits into half of the room, and behind it what fits into the rest.
    std::size_t used = 0;
    std::size_t first = place;
    const auto fits = [&](std::size_t cell, std::size_t most) { return used + cells[cell].width <= most; };
    std::size_t behind = 0;
    for (std::size_t i = place; i < cells.size() && behind < room / 2; ++i)
        behind += cells[i].width;
    while (first > 0 && fits(first - 1, room - std::min(behind, room / 2)))
        used += cells[--first].width;
    const std::size_t before = used;
    std::size_t last = place;
    while (last < cells.size() && fits(last, room))
        used += cells[last++].width;

    std::string result = " " + number + " | " + std::string(first > 0 ? leftOut : "");
    for (std::size_t i = first; i < last; ++i)
        result += cells[i].bytes;
    result.append(last < cells.size() ? leftOut : "").append("\n").append(margin).append(" | ");
    return result.append(before + (first > 0 ? leftOut.size() : 0), ' ').append("^\n");
}
