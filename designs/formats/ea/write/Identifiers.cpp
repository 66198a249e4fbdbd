#include "designs/formats/ea/write/Identifiers.h"

#include <cctype>

namespace design::ea {

namespace {

// Letters, digits and what else an identifier of XML may hold.
std::string plain(std::string_view id)
{
    std::string text(id);
    for (char& letter : text)
        if (std::isalnum(static_cast<unsigned char>(letter)) == 0 && letter != '-' && letter != '.')
            letter = '_';
    return text;
}

} // namespace

std::string_view withoutPrefix(std::string_view id)
{
    for (const std::string_view prefix : {"EAID_src", "EAID_dst", "EAID_", "EAPK_"})
        if (id.starts_with(prefix))
            return id.substr(prefix.size());
    return id;
}

const std::string& Identifiers::of(const Element& element, std::string_view prefix)
{
    if (!element.id.empty())
        return of(element.id, prefix);
    std::string& id = unnamed[&element];
    if (id.empty())
        id = numbered(std::string(prefix) + (prefix == "EAPK_" ? 'P' : 'F'));
    return id;
}

const std::string& Identifiers::of(const std::string& id, std::string_view prefix)
{
    std::string& found = known[std::string(prefix) + id];
    if (found.empty()) {
        const std::string text = plain(id);
        found = take(text.starts_with(prefix) ? text : std::string(prefix).append(withoutPrefix(text)), id);
    }
    return found;
}

std::string Identifiers::numbered(std::string_view prefix)
{
    std::string number = std::to_string(++lastNumbers[std::string(prefix)]);
    number.insert(0, number.size() < 6 ? 6 - number.size() : 0, '0');
    return take(std::string(prefix) + number, {});
}

std::string Identifiers::beside(std::string_view id, std::string_view prefix)
{
    return take(std::string(prefix).append(plain(withoutPrefix(id))), {});
}

std::string Identifiers::take(const std::string& wanted, std::string_view own)
{
    const auto isFree = [&](const std::string& id) {
        return (id == own || !catalogue.has(id)) && taken.insert(id).second;
    };
    if (isFree(wanted))
        return wanted;
    std::size_t& number = lastNumbers[wanted];
    std::string other;
    do
        other = wanted + "_" + std::to_string(++number + 1);
    while (!isFree(other));
    return other;
}

} // namespace design::ea
