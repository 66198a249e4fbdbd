#pragma once

#include "petal/Indentation.h"
#include "petal/PetalFile.h"
#include "petal/Quid.h"
#include "petal/RoseDesc.h"

#include <concepts>
#include <exception>
#include <tuple>

/// How lines come into the file. A line is its start (`indent`) and pieces one after the other: keywords, numbers,
/// `quoted(...)`, `guarded(...)`, `makeRoseDesc(...)`. Nothing is built up front; every piece goes straight into the
/// stream's buffer.

/// A name between quotes that other pieces write; guarded so that it cannot end them.
struct Guarded {
    std::string_view name;
};
[[nodiscard]] inline Guarded guarded(const KivString& name)
{
    return {name.view()};
}

/// Text between double quotes; names are guarded, literals and quids stand as they are.
template <class... Pieces>
struct Quoted {
    std::tuple<Pieces...> pieces;
};

void putEscaped(std::string_view text);
void putNumber(long long number);
void put(RoseDesc text);
/// A text of the model needs one of the wrappers above.
void put(const KivString&) = delete;

inline void put(std::string_view text)
{
    theFile.append(text);
}
inline void put(const char* literal)
{
    theFile.append(literal);
}
inline void put(const Quid& quid)
{
    theFile.append(quid.view());
}
inline void put(Guarded name)
{
    if (isSafeBetweenQuotes(name.name))
        theFile.append(name.name);
    else
        putEscaped(name.name);
}
template <std::integral Number>
void put(Number number)
{
    putNumber(static_cast<long long>(number));
}
template <class... Pieces>
void put(const Quoted<Pieces...>& quotedText)
{
    put("\"");
    std::apply([](const auto&... piece) { (put(piece), ...); }, quotedText.pieces);
    put("\"");
}

inline const char* quotedPiece(const char* literal)
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
template <class... Pieces>
[[nodiscard]] auto quoted(const Pieces&... pieces)
{
    return Quoted<decltype(quotedPiece(pieces))...>{{quotedPiece(pieces)...}};
}

/// Continues the current line.
template <class... Pieces>
void append(const Pieces&... pieces)
{
    (put(pieces), ...);
}

/// Ends the line before and writes a new one.
template <class... Pieces>
void line(const Pieces&... pieces)
{
    theFile.append(indent.text.view());
    append(pieces...);
}

/// A list: opens on a line of its own, raises the level for its entries, and closes on the last line written when the
/// scope ends. An exception on its way out closes nothing: the file ends where writing ended.
class List {
public:
    explicit List(const char* opening) : exceptions(std::uncaught_exceptions())
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
