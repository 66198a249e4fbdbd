#include "petal/RoseDesc.h"

#include "petal/Pieces.h"

#include <algorithm>

namespace {

constexpr std::size_t quotes = 2;
constexpr std::size_t blockLineStart = 2; // LF and bar
constexpr std::size_t blockEnd = 1;       // LF

bool isBlock(RoseDesc desc)
{
    return desc.text.find('\n') != std::string_view::npos || desc.text.find('"') != std::string_view::npos;
}

// Calls `visit` for each line of the text, without its LF.
template <class Visit>
void forEachLine(std::string_view text, Visit visit)
{
    for (;;) {
        const std::size_t lineFeed = text.find('\n');
        visit(text.substr(0, lineFeed));
        if (lineFeed == std::string_view::npos)
            return;
        text.remove_prefix(lineFeed + 1);
    }
}

std::size_t escapedLength(std::string_view text)
{
    const auto escaped = std::count_if(text.begin(), text.end(), [](char byte) { return escapeSequence(byte); });
    return text.size() + static_cast<std::size_t>(escaped);
}

// Calls `visit` for each run of bytes of a text block, in order.
template <class Visit>
void forEachBlockRun(RoseDesc desc, Visit visit)
{
    std::string_view before = desc.before;
    forEachLine(desc.text, [&](std::string_view line) {
        visit(std::string_view("\n|"));
        visit(before);
        visit(line);
        before = {};
    });
    visit(desc.after);
    visit(std::string_view("\n"));
}

} // namespace

char* copy(char* to, RoseDesc desc)
{
    char* const text = copy(copy(to, "\""), desc.before);
    if (copyAndFindEscaped(text, desc.text)) { // rarely
        if (isBlock(desc)) {
            forEachBlockRun(desc, [&](std::string_view run) { to = copy(to, run); });
            return to;
        }
        to = copyEscaped(text, desc.text);
    } else {
        to = text + desc.text.size();
    }
    return copy(copy(to, desc.after), "\"");
}

void put(RoseDesc desc)
{
    if (isBlock(desc)) {
        forEachBlockRun(desc, [](std::string_view run) { put(run); });
        return;
    }
    put(std::string_view("\""));
    put(desc.before);
    putEscaped(desc.text);
    put(desc.after);
    put(std::string_view("\""));
}

std::size_t writtenLength(RoseDesc desc)
{
    const std::size_t around = desc.before.size() + desc.after.size();
    if (!isBlock(desc))
        return quotes + around + escapedLength(desc.text);
    const auto lineFeeds = static_cast<std::size_t>(std::count(desc.text.begin(), desc.text.end(), '\n'));
    return around + desc.text.size() - lineFeeds + (lineFeeds + 1) * blockLineStart + blockEnd;
}

LineMeasure measureLines(std::string_view text)
{
    LineMeasure measure = {0, 0};
    forEachLine(text, [&](std::string_view line) {
        const std::size_t lineFeed = measure.lines == 0 ? 0 : 1;
        measure.longest = std::max(measure.longest, line.size() + lineFeed);
        ++measure.lines;
    });
    return measure;
}

LineMeasure measureLines(RoseDesc desc)
{
    if (!isBlock(desc))
        return {1, writtenLength(desc)};
    // The block has an empty line before its text and one behind it.
    LineMeasure measure = {2, 1};
    std::size_t before = desc.before.size();
    const char* const end = desc.text.data() + desc.text.size();
    forEachLine(desc.text, [&](std::string_view line) {
        const std::size_t after = line.data() + line.size() == end ? desc.after.size() : 0;
        measure.longest = std::max(measure.longest, blockLineStart + before + line.size() + after);
        ++measure.lines;
        before = 0;
    });
    return measure;
}
