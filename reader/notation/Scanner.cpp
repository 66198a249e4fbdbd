#include "reader/notation/Scanner.h"

#include <algorithm>
#include <cstring>

namespace reader {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v';
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool endsWord(char c)
{
    return isBlank(c) || c == '(' || c == ')' || c == '"' || c == ',';
}

// Control characters start nothing; bytes of other letters start words.
bool isStray(char c)
{
    return (c >= 0 && c < ' ') || c == '\x7f';
}

const char* skipDigits(const char* from, const char* end)
{
    return std::find_if_not(from, end, isDigit);
}

} // namespace

bool isNumber(std::string_view text)
{
    const char* at = text.data();
    const char* const end = at + text.size();
    if (at != end && (*at == '-' || *at == '+'))
        ++at;
    const char* const whole = at;
    at = skipDigits(at, end);
    bool hasDigits = at != whole;
    if (at != end && *at == '.') {
        const char* const fraction = ++at;
        at = skipDigits(at, end);
        hasDigits = hasDigits || at != fraction;
    }
    if (!hasDigits)
        return false;
    if (at != end && (*at == 'e' || *at == 'E')) {
        ++at;
        if (at != end && (*at == '-' || *at == '+'))
            ++at;
        const char* const exponent = at;
        at = skipDigits(at, end);
        if (at == exponent)
            return false;
    }
    return at == end;
}

void Scanner::skipBlanks()
{
    for (; at != end && isBlank(*at); ++at)
        isNewLine = isNewLine || *at == '\n';
}

Token Scanner::next()
{
    skipBlanks();
    Token token;
    if (at == end)
        token = {TokenKind::end, {}, at};
    else if (*at == '(')
        token = oneByte(TokenKind::open);
    else if (*at == ')')
        token = oneByte(TokenKind::close);
    else if (*at == ',')
        token = oneByte(TokenKind::comma);
    else if (*at == '"')
        token = quoted();
    else if (*at == '|')
        token = block();
    else if (*at == '@')
        token = reference();
    else if (isStray(*at))
        token = oneByte(TokenKind::stray);
    else
        token = wordOrNumber();
    token.isFirstOnLine = isNewLine;
    isNewLine = false;
    return token;
}

Token Scanner::oneByte(TokenKind kind)
{
    ++at;
    return {kind, {at - 1, 1}, at - 1};
}

const char* Scanner::endOfLine(const char* from) const
{
    const void* const found = std::memchr(from, '\n', static_cast<std::size_t>(end - from));
    return found ? static_cast<const char*>(found) : end;
}

// A text that is not closed on its line ends before the parentheses that close the objects around it.
Token Scanner::quoted()
{
    const char* const start = ++at;
    while (at != end && *at != '"' && *at != '\n')
        at += *at == '\\' && end - at > 1 && at[1] != '\n' ? 2 : 1;
    if (at != end && *at == '"')
        return {TokenKind::text, {start, at++}, start - 1};
    while (at != start && (isBlank(at[-1]) || at[-1] == ')'))
        --at;
    return {TokenKind::text, {start, at}, start - 1, false, true};
}

Token Scanner::block()
{
    const char* const start = at;
    const char* last = at;
    while (at != end && *at == '|') {
        last = endOfLine(at);
        at = last == end ? end : last + 1;
        while (at != end && (*at == ' ' || *at == '\t'))
            ++at;
    }
    at = last;
    if (last != start && last[-1] == '\r')
        --last;
    return {TokenKind::block, {start, last}, start};
}

Token Scanner::reference()
{
    const char* const start = at;
    at = std::find_if(at, end, endsWord);
    const std::string_view number(start + 1, at);
    const char* const digits = number.data() + (number.starts_with('-') ? 1 : 0);
    if (digits != at && std::all_of(digits, at, isDigit))
        return {TokenKind::reference, number, start};
    return {TokenKind::word, {start, at}, start};
}

Token Scanner::wordOrNumber()
{
    const char* const start = at;
    at = std::find_if(at, end, endsWord);
    const std::string_view text(start, at);
    return {isNumber(text) ? TokenKind::number : TokenKind::word, text, start};
}

} // namespace reader
