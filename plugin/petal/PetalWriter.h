#pragma once

#include "petal/Indentation.h"
#include "petal/Pieces.h"

#include <algorithm>

/// How lines come into the file. A line is its start (`indent`) and pieces one after the other: keywords, numbers,
/// `quoted(...)`, `guarded(...)`, `makeRoseDesc(...)`. A text of the model needs one of these wrappers.

/// A name between quotes that the line's literals hold.
[[nodiscard]] inline Guarded guarded(const KivString& name)
{
    return {name.view()};
}

template <std::size_t Size>
std::string_view quotedPiece(const char (&literal)[Size])
{
    return {literal, Size - 1};
}
inline std::string_view quotedPiece(const char* const& literal)
{
    return literal;
}
inline Guarded quotedPiece(std::string_view name)
{
    return {name};
}
inline Guarded quotedPiece(const KivString& name)
{
    return {name.view()};
}
inline const Quid& quotedPiece(const Quid& quid)
{
    return quid;
}

/// Text between double quotes: names (`KivString`, `std::string_view`) are guarded, literals and quids stand as they
/// are.
template <class... Pieces>
[[nodiscard]] auto quoted(const Pieces&... pieces)
{
    return Quoted<decltype(quotedPiece(pieces))...>{{quotedPiece(pieces)...}};
}

template <class... Pieces>
void writeWithoutRoom(std::size_t size, const Pieces&... pieces);

// The way of nearly every line. It stands in the caller's own code, where the lengths of literals are known; what is
// rare is kept out of it.
template <class... Pieces>
[[gnu::always_inline]] inline void writePieces(const Pieces&... pieces)
{
    const std::size_t size = (bound(pieces) + ...);
    if (!theFile.hasRoom(size)) [[unlikely]] {
        writeWithoutRoom(size, pieces...);
        return;
    }
    char* to = theFile.room();
    ((to = copy(to, pieces)), ...);
    theFile.take(to);
}
template <class... Pieces>
[[gnu::noinline]] void writeWithoutRoom(std::size_t size, const Pieces&... pieces)
{
    if (theFile.makeRoom(size))
        writePieces(pieces...);
    else
        (put(pieces), ...);
}

/// Continues the current line.
template <class... Pieces>
void append(const Pieces&... pieces)
{
    writePieces(pieces...);
}

/// Ends the line before and writes a new one.
template <class... Pieces>
[[gnu::always_inline]] inline void line(const Pieces&... pieces)
{
    writePieces(Indentation(indent), pieces...);
}

// What stands in parentheses. Everything but single values opens and closes through these; what is left early, by an
// exception or because the thread ends, stays open, so that the file ends where writing ended.

/// Writes an object: the first line that `write` writes opens it, and it closes on the last.
template <class Write>
void object(const Write& write)
{
    write();
    append(")");
}

/// Writes what `write` writes one level deeper.
template <class Write>
void deeper(const Write& write)
{
    increaseIndent();
    write();
    decreaseIndent();
}

/// Writes a list that opens on a line of its own; its entries stand at the same level.
template <std::size_t Size, class Write>
void flatList(const char (&opening)[Size], const Write& writeEntries)
{
    line(opening);
    writeEntries();
    append(")");
}

/// Writes a list whose entries stand one level deeper.
template <std::size_t Size, class Write>
void list(const char (&opening)[Size], const Write& writeEntries)
{
    flatList(opening, [&] { deeper(writeEntries); });
}

/// Writes a list of those elements that `isWritten` says; nothing when there are none.
template <std::size_t Size, class Elements, class IsWritten, class Write>
void listOf(const char (&opening)[Size], const Elements& elements, IsWritten isWritten, const Write& writeEntry)
{
    if (std::none_of(elements.begin(), elements.end(), [&](const auto* element) { return isWritten(*element); }))
        return;
    list(opening, [&] {
        for (auto* const element : elements)
            if (isWritten(*element))
                writeEntry(*element);
    });
}
