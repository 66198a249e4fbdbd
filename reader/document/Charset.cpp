#include "reader/document/Charset.h"

#include "reader/document/CharsetHint.h"
#include "reader/document/Document.h"
#include "reader/notation/Scanner.h"

#include "text/Encodings.h"
#include "text/Utf8.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

namespace reader {

namespace {

constexpr std::string_view utf8 = "UTF-8";
constexpr std::string_view usual = "CP1252";

// The charset numbers of Windows fonts.
constexpr std::pair<std::int64_t, std::string_view> charSets[] = {
    {0, usual},      {1, usual},      {128, "CP932"},  {129, "CP949"},  {130, "JOHAB"},  {134, "CP936"},
    {136, "CP950"},  {161, "CP1253"}, {162, "CP1254"}, {163, "CP1258"}, {177, "CP1255"}, {178, "CP1256"},
    {186, "CP1257"}, {204, "CP1251"}, {222, "CP874"},  {238, "CP1250"},
};

constexpr std::pair<std::string_view, std::string_view> byteOrderMarks[] = {
    {text::byteOrderMark, utf8},
    {"\xff\xfe", "UTF-16"},
    {"\xfe\xff", "UTF-16"},
};

bool isAscii(std::string_view bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string encodingOf(std::string_view bytes, const std::string& charset)
{
    if (!charset.empty())
        return charset;
    for (const auto& [mark, encoding] : byteOrderMarks)
        if (bytes.starts_with(mark))
            return std::string(encoding);
    return text::isUtf8(bytes) && !isAscii(bytes) ? std::string(utf8)
                                                  : std::string(encodingOfCharSet(charSetIn(bytes)));
}

// Only a file that would be read better otherwise is told of bytes that are undefined.
void takeHint(DecodedText& decoded, std::string_view bytes)
{
    const CharsetHint hint = hintFor(bytes);
    if (hint.charset.empty())
        return;
    decoded.fitting = hint.charset;
    decoded.undecodable = hint.undefined;
    for (const char byte : bytes.substr(0, hint.firstUndefined)) {
        std::string character;
        text::appendCharacter(character, text::windowsCharacter(byte));
        decoded.firstUndecodable += character.size();
    }
}

} // namespace

bool isCharset(const std::string& name)
{
    return text::isEncoding(name);
}

std::string_view encodingOfCharSet(std::int64_t charSet)
{
    const auto* const found =
        std::find_if(std::begin(charSets), std::end(charSets), [&](const auto& row) { return row.first == charSet; });
    return found == std::end(charSets) ? charSets[0].second : found->second;
}

// The first object is plain ASCII whatever the charset, save the texts in it.
std::int64_t charSetIn(std::string_view bytes)
{
    constexpr std::size_t longestHeader = 4096;
    Scanner scanner(bytes.substr(0, longestHeader));
    for (Token token = scanner.next(); token.kind != TokenKind::end && token.kind != TokenKind::close;
         token = scanner.next()) {
        if (token.kind != TokenKind::word || token.text != "charSet")
            continue;
        const Token number = scanner.next();
        std::int64_t charSet = 0;
        if (number.kind == TokenKind::number)
            std::from_chars(number.text.data(), number.text.data() + number.text.size(), charSet);
        return charSet;
    }
    return 0;
}

DecodedText decode(std::string bytes, const std::string& charset)
{
    DecodedText decoded;
    decoded.encoding = encodingOf(bytes, charset);
    if (decoded.encoding == utf8 && bytes.starts_with(text::byteOrderMark))
        bytes.erase(0, text::byteOrderMark.size());
    if ((charset.empty() && isAscii(bytes)) || (decoded.encoding == utf8 && text::isUtf8(bytes))) {
        decoded.text = std::move(bytes);
        return decoded;
    }
    std::optional<text::Decoded> converted = text::decoded(bytes, decoded.encoding);
    if (!converted)
        throw NotPetal("there is no charset '" + decoded.encoding + "'");
    decoded.text = std::move(converted->text);
    decoded.undecodable = converted->undecodable;
    decoded.firstUndecodable = converted->firstUndecodable;
    if (charset.empty() && decoded.encoding == usual)
        takeHint(decoded, bytes);
    return decoded;
}

} // namespace reader
