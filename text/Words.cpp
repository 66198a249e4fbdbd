#include "text/Words.h"

#include <algorithm>

namespace text {

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n\f\v";
    const std::size_t first = std::min(text.find_first_not_of(blanks), text.size());
    return text.substr(first, text.find_last_not_of(blanks) + 1 - first); // npos + 1 is 0
}

std::string lowerCase(std::string_view text)
{
    std::string lower(text);
    for (char& letter : lower)
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    return lower;
}

} // namespace text
