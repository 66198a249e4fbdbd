#pragma once

#include <cstdint>
#include <string_view>

namespace reader {

enum class TokenKind : std::uint8_t {
    open,  ///< `(`
    close, ///< `)`
    comma,
    text,      ///< between quotes, which do not belong to the token's text
    block,     ///< lines that start with `|`, with their bars
    number,    ///< a decimal number of any length
    word,      ///< whatever else has no blank, quote, parenthesis or comma in it
    reference, ///< `@17`, of any length; the token's text has no `@`
    stray,     ///< a byte that nothing starts with
    end,       ///< of the file
};

struct Token {
    TokenKind kind = TokenKind::end;
    std::string_view text;
    const char* position = nullptr; ///< where it starts, quote or `@` included
    bool isFirstOnLine = false;
    bool isUnclosed = false; ///< a text whose line ends before its second quote
};

/// Splits the text of a file into tokens.
class Scanner {
public:
    explicit Scanner(std::string_view text) : at(text.data()), end(text.data() + text.size()) {}

    /// The next token; at the end of the text again and again the one that says so.
    Token next();

private:
    void skipBlanks();
    Token oneByte(TokenKind kind);
    Token quoted();
    Token block();
    Token reference();
    Token wordOrNumber();
    [[nodiscard]] const char* endOfLine(const char* from) const;

    const char* at;
    const char* end;
    bool isNewLine = true;
};

/// Whether `text` is a decimal number: `100`, `-0.25`, `1.5e3`.
[[nodiscard]] bool isNumber(std::string_view text);

} // namespace reader
