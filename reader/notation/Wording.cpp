#include "reader/notation/Wording.h"

#include "text/Utf8.h"

#include <algorithm>

namespace reader {

namespace {

constexpr std::size_t longestShownText = 40;

} // namespace

std::string shortened(std::string_view text)
{
    return text::shortened(text.substr(0, std::min(text.find_first_of("\r\n"), text.size())), longestShownText);
}

std::string describe(const Token& token)
{
    switch (token.kind) {
    case TokenKind::open:
    case TokenKind::close:
    case TokenKind::comma:
        return std::string(token.text);
    case TokenKind::text:
        return std::string("the text \"").append(shortened(token.text)).append("\"");
    case TokenKind::block:
        return "the text block " + shortened(token.text);
    case TokenKind::number:
        return "the number " + shortened(token.text);
    case TokenKind::word:
        return std::string("'").append(shortened(token.text)).append("'");
    case TokenKind::reference:
        return std::string("@").append(token.text);
    case TokenKind::stray:
        return "the control character " + std::to_string(static_cast<int>(token.text.front()));
    case TokenKind::end:
        break;
    }
    return "the end of the file";
}

std::string describe(const Object& object)
{
    return "(object " + shortened(object.kind()) +
           (object.names().empty() ? std::string() : " \"" + shortened(object.names().front().raw()) + '"');
}

} // namespace reader
