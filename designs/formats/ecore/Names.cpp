#include "designs/formats/ecore/Names.h"

#include <algorithm>
#include <array>

namespace design::ecore {

namespace {

bool isDigit(unsigned char byte)
{
    return byte >= '0' && byte <= '9';
}

// Letters beyond ASCII are taken for letters.
bool mayStand(unsigned char byte)
{
    const unsigned char lower = byte | 0x20U;
    return (lower >= 'a' && lower <= 'z') || isDigit(byte) || byte == '_' || byte >= 0x80U;
}

} // namespace

std::string identifierOf(std::string_view name)
{
    std::string identifier(name);
    std::replace_if(
        identifier.begin(), identifier.end(), [](char byte) { return !mayStand(static_cast<unsigned char>(byte)); },
        '_');
    if (!identifier.empty() && isDigit(static_cast<unsigned char>(identifier.front())))
        identifier.insert(identifier.begin(), '_');
    return identifier;
}

std::string Scope::take(std::string_view name, std::string_view otherwise)
{
    std::string identifier = identifierOf(name.empty() ? otherwise : name);
    if (taken.insert(identifier).second)
        return identifier;
    std::size_t& number = numbers[identifier];
    std::string numbered;
    do {
        numbered = identifier + std::to_string(++number + 1);
    } while (!taken.insert(numbered).second);
    return numbered;
}

} // namespace design::ecore
