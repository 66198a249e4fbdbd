#include "designs/formats/drawn/Aliases.h"

#include "text/Words.h"

#include <algorithm>

namespace design {

namespace {

bool isDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

bool isPlain(char letter)
{
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || isDigit(letter);
}

// "Order item (old)" as "Order_item_old".
std::string plainWord(std::string_view name)
{
    constexpr std::size_t longest = 60;
    std::string word;
    for (const char letter : name.substr(0, longest)) {
        if (isPlain(letter))
            word += letter;
        else if (!word.empty() && word.back() != '_')
            word += '_';
    }
    while (!word.empty() && word.back() == '_')
        word.pop_back();
    if (word.empty())
        return "element";
    return isDigit(word.front()) ? "n" + word : word;
}

} // namespace

std::string Aliases::make(std::string_view name)
{
    std::string word = plainWord(name);
    if (std::find(reserved.begin(), reserved.end(), text::lowerCase(word)) != reserved.end())
        word += '_';
    std::string unique = word;
    if (!taken.insert(text::lowerCase(unique)).second) {
        std::size_t& number = numbers[text::lowerCase(word)];
        do {
            unique = word + '_' + std::to_string(++number + 1);
        } while (!taken.insert(text::lowerCase(unique)).second);
    }
    return unique;
}

const std::string& Aliases::of(const std::string& key, std::string_view name)
{
    const auto [found, isNew] = byKey.try_emplace(key);
    if (isNew)
        found->second = make(name);
    return found->second;
}

const std::string* Aliases::find(const std::string& key) const
{
    const auto found = byKey.find(key);
    return found == byKey.end() ? nullptr : &found->second;
}

} // namespace design
