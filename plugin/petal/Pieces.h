#pragma once

#include "petal/ByteBlocks.h"
#include "petal/Indentation.h"
#include "petal/PetalFile.h"
#include "petal/Quid.h"
#include "petal/RoseDesc.h"
#include "petal/RoseKeywords.h"

#include <algorithm>
#include <array>
#include <concepts>
#include <cstring>
#include <tuple>

/// What lines are made of. For every kind of piece there are
///
///     std::size_t bound(piece)     the most bytes that `copy` writes
///     char* copy(char* to, piece)  writes it to `to`, which has room for that many, and returns where it ends; bytes
///                                  behind that may have been written, too
///     void put(piece)              writes it to the file, whatever its size
///
/// so that a line goes straight into the stream's buffer in one go, and only what is larger than the buffer takes the
/// way through the stream.

/// A name between quotes that other pieces write; guarded so that it cannot end them.
struct Guarded {
    std::string_view name;
};

/// Pieces between double quotes.
template <class... Pieces>
struct Quoted {
    std::tuple<Pieces...> pieces;
};

// Texts that stand as they are.

template <std::size_t Size>
constexpr std::size_t bound(const char (&/*literal*/)[Size])
{
    return Size - 1;
}
template <std::size_t Size>
char* copy(char* to, const char (&literal)[Size])
{
    std::memcpy(to, literal, Size - 1);
    return to + Size - 1;
}
inline std::size_t bound(std::string_view text)
{
    return text.size();
}
inline char* copy(char* to, std::string_view text)
{
    return copyBytes(to, text);
}
inline void put(std::string_view text)
{
    theFile.append(text);
}
inline void put(const char* literal)
{
    theFile.append(literal);
}

// The start of a line. Nearly every one fits into two blocks, which are copied whole whatever its depth.

inline constexpr std::size_t lineStartBlocks = 2 * sizeof(byteBlocks::Block);
inline constexpr std::array<char, lineStartBlocks> lineStart = [] {
    std::array<char, lineStartBlocks> text = {'\r', '\n'};
    std::fill(text.begin() + 2, text.end(), '\t');
    return text;
}();

inline std::size_t lengthOf(const Indentation& start)
{
    return 2 + static_cast<std::size_t>(start.depth);
}
inline std::size_t bound(const Indentation& start)
{
    return std::max(lengthOf(start), lineStartBlocks);
}
char* copyTabs(char* to, std::size_t count);
inline char* copy(char* to, const Indentation& start)
{
    using namespace byteBlocks;
    move<Block>(to, lineStart.data());
    move<Block>(to + sizeof(Block), lineStart.data() + sizeof(Block));
    const std::size_t length = lengthOf(start);
    if (length > lineStartBlocks) [[unlikely]]
        return copyTabs(to + lineStartBlocks, length - lineStartBlocks);
    return to + length;
}
inline void put(const Indentation& start)
{
    put(start.text().view());
}

// Keywords of the model's codes.

constexpr std::size_t bound(const Keyword& /*keyword*/)
{
    return Keyword::room;
}
inline char* copy(char* to, const Keyword& keyword)
{
    std::memcpy(to, keyword.text.data(), Keyword::room);
    return to + keyword.length;
}

// Texts in which some bytes are escaped.

char* copyEscaped(char* to, std::string_view text);
void putEscaped(std::string_view text);

inline std::size_t bound(Guarded guarded)
{
    return 2 * guarded.name.size();
}
inline char* copy(char* to, Guarded guarded)
{
    if (!copyAndFindEscaped(to, guarded.name) || isSafeBetweenQuotes(guarded.name))
        return to + guarded.name.size();
    return copyEscaped(to, guarded.name);
}
inline void put(Guarded guarded)
{
    if (isSafeBetweenQuotes(guarded.name))
        put(guarded.name);
    else
        putEscaped(guarded.name);
}

inline std::size_t bound(RoseDesc desc)
{
    return 2 * desc.text.size() + desc.before.size() + desc.after.size() + 3;
}
char* copy(char* to, RoseDesc desc);
void put(RoseDesc desc);

// Numbers and quids.

inline constexpr std::size_t mostDigits = 20;

template <std::integral Number>
constexpr std::size_t bound(Number /*number*/)
{
    return mostDigits;
}
char* copyDigits(char* to, std::uint64_t number);
template <std::integral Number>
char* copy(char* to, Number number)
{
    const auto bits = static_cast<std::uint64_t>(number);
    if (std::is_signed_v<Number> && number < 0) {
        *to++ = '-';
        return copyDigits(to, 0 - bits);
    }
    return copyDigits(to, bits);
}
inline constexpr std::size_t longestQuid = QuidForm::length + 16;

constexpr std::size_t bound(const Quid& /*quid*/)
{
    return longestQuid;
}
char* copy(char* to, const Quid& quid);

// Pieces between quotes.

template <class... Pieces>
std::size_t bound(const Quoted<Pieces...>& quoted)
{
    return 2 + std::apply([](const auto&... piece) { return (bound(piece) + ...); }, quoted.pieces);
}
template <class... Pieces>
char* copy(char* to, const Quoted<Pieces...>& quoted)
{
    *to++ = '"';
    std::apply([&](const auto&... piece) { ((to = copy(to, piece)), ...); }, quoted.pieces);
    *to++ = '"';
    return to;
}
template <class... Pieces>
void put(const Quoted<Pieces...>& quoted)
{
    put(std::string_view("\""));
    std::apply([](const auto&... piece) { (put(piece), ...); }, quoted.pieces);
    put(std::string_view("\""));
}

/// Everything else is small.
template <class Piece>
void put(const Piece& piece)
{
    constexpr std::size_t size = 256;
    char text[size];
    put(std::string_view(text, static_cast<std::size_t>(copy(text, piece) - text)));
}
