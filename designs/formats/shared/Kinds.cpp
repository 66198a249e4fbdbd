#include "designs/formats/shared/Kinds.h"

#include <cctype>

namespace design {

Visibility visibilityNamed(std::string_view word)
{
    if (word == "private" || word == "Private")
        return Visibility::Private;
    if (word == "protected" || word == "Protected")
        return Visibility::Protected;
    return word == "package" || word == "Package" || word == "implementation" ? Visibility::Package
                                                                              : Visibility::Public;
}

Aggregation aggregationNamed(std::string_view word)
{
    if (word == "composite")
        return Aggregation::Composite;
    return word == "shared" || word == "aggregate" ? Aggregation::Shared : Aggregation::None;
}

Direction directionNamed(std::string_view word)
{
    if (word == "out")
        return Direction::Out;
    return word == "inout" ? Direction::InOut : Direction::In;
}

std::string plainWords(std::string_view type)
{
    std::string words;
    for (const char letter : type) {
        const auto code = static_cast<unsigned char>(letter);
        if (std::isupper(code) != 0 && !words.empty() && words.back() != ' ')
            words += ' ';
        words += static_cast<char>(std::tolower(code));
    }
    return words;
}

} // namespace design
