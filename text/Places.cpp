#include "text/Places.h"

#include "text/Utf8.h"

#include <algorithm>

namespace text {

namespace {

constexpr std::size_t pageSize = 65536;

// The place behind a text that begins at `start`.
LineAndColumn behind(std::string_view text, LineAndColumn start)
{
    const std::size_t lastLineEnd = text.rfind('\n');
    if (lastLineEnd != std::string_view::npos) {
        start.line += static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
        start.column = 1;
        text.remove_prefix(lastLineEnd + 1);
    }
    start.column += countCharacters(text);
    return start;
}

} // namespace

std::string LineAndColumn::asText() const
{
    return std::to_string(line) + ":" + std::to_string(column);
}

LineAndColumn lineAndColumnAt(std::string_view text, std::size_t offset)
{
    return behind(text.substr(0, offset), {});
}

PlaceIndex::PlaceIndex(std::string_view theText) : text(theText)
{
    LineAndColumn start;
    for (std::size_t page = 0; page <= text.size(); page += pageSize) {
        pages.push_back(start);
        start = behind(text.substr(page, pageSize), start);
    }
}

LineAndColumn PlaceIndex::at(std::size_t offset) const
{
    const std::size_t page = offset / pageSize;
    return behind(text.substr(page * pageSize, offset % pageSize), pages[page]);
}

LineAndColumn PlaceCursor::at(std::size_t offset)
{
    place = behind(text.substr(last, offset - last), place);
    last = offset;
    return place;
}

} // namespace text
