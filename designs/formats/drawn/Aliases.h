#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace design {

/// Words by which the text of a diagram calls its elements. They are made of the names, so that they stay the same when
/// other elements come or go: letters of ASCII, digits and underscores, and none of the words that the notation has.
class Aliases {
public:
    /// `theReserved` in small letters; must stay.
    explicit Aliases(std::span<const std::string_view> theReserved) : reserved(theReserved) {}

    /// The word for what has that key; a new one, made of `name`, when it is asked for the first time.
    const std::string& of(const std::string& key, std::string_view name);
    /// Null when nothing with that key was asked for.
    [[nodiscard]] const std::string* find(const std::string& key) const;
    /// A word for something that nothing refers to by a key.
    [[nodiscard]] std::string make(std::string_view name);

private:
    std::span<const std::string_view> reserved;
    std::unordered_map<std::string, std::string> byKey;
    std::unordered_set<std::string> taken; // in small letters
    std::unordered_map<std::string, std::size_t> numbers;
};

} // namespace design
