#pragma once

#include "petal/Indentation.h"
#include "petal/Pieces.h"

#include <exception>

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

/// A list: opens on a line of its own, raises the level for its entries, and closes on the last line written when the
/// scope ends. An exception on its way out closes nothing: the file ends where writing ended.
class List {
public:
    template <std::size_t Size>
    explicit List(const char (&opening)[Size]) : exceptions(std::uncaught_exceptions())
    {
        line(opening);
        increaseIndent();
    }
    ~List()
    {
        decreaseIndent();
        if (std::uncaught_exceptions() == exceptions)
            append(")");
    }
    List(const List&) = delete;
    List& operator=(const List&) = delete;

private:
    int exceptions;
};
