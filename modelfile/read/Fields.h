#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

// The keys of an object, as a table: what stands under a key is taken over by the function beside it.

namespace modelfile {

class Builder;

/// A key of an object as it is written, with the closing quote: a search compares words, since keys are short. The text
/// may be read beyond its end as far as its padding goes.
class Key {
public:
    constexpr Key() = default; // stands everywhere; to be overwritten
    constexpr Key(std::string_view theText) : text(theText)
    {
        for (std::size_t at = 0; at < std::min(text.size() + 1, sizeof words); ++at) {
            const std::size_t shift = 8 * (std::endian::native == std::endian::little ? at % 8 : 7 - at % 8);
            const auto byte = static_cast<unsigned char>(at < text.size() ? text[at] : '"');
            words[at / 8] |= std::uint64_t{byte} << shift;
            masks[at / 8] |= std::uint64_t{0xFF} << shift;
        }
    }
    constexpr Key(const char* theText) : Key(std::string_view(theText)) {}

    [[nodiscard]] constexpr std::string_view view() const { return text; }
    /// Whether it stands behind the opening quote at `at`.
    [[nodiscard]] bool isAt(const char* at) const
    {
        std::array<std::uint64_t, wordCount> found;
        std::memcpy(found.data(), at + 1, sizeof found);
        std::uint64_t difference = 0;
        for (std::size_t i = 0; i < wordCount; ++i)
            difference |= (found[i] ^ words[i]) & masks[i];
        return difference == 0 && (text.size() < sizeof words || isRestAt(at + 1));
    }

private:
    static constexpr std::size_t wordCount = 2;

    [[nodiscard]] bool isRestAt(const char* start) const
    {
        return std::memcmp(start, text.data(), text.size()) == 0 && start[text.size()] == '"';
    }

    std::string_view text;
    std::array<std::uint64_t, wordCount> words = {};
    std::array<std::uint64_t, wordCount> masks = {};
};

/// A key of an object and how its value is taken over.
template <class Target, class Value>
struct FieldOf {
    Key key;
    void (*read)(Builder&, Target&, Value&);
};

template <class First, class... Rest>
constexpr auto fieldTable(const First& first, const Rest&... rest)
{
    return std::array<First, 1 + sizeof...(Rest)>{first, rest...};
}

} // namespace modelfile
