#include "reader/Charset.h"

#include "reader/Document.h"
#include "reader/Scanner.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <iconv.h>
#include <utility>

namespace reader {

namespace {

constexpr std::string_view utf8 = "UTF-8";
constexpr std::string_view utf8Mark = "\xef\xbb\xbf";
constexpr std::string_view replacement = "\xef\xbf\xbd"; // U+FFFD

// The charset numbers of Windows fonts.
constexpr std::pair<std::int64_t, std::string_view> charSets[] = {
    {0, "CP1252"},   {1, "CP1252"},   {128, "CP932"},  {129, "CP949"},  {130, "JOHAB"},  {134, "CP936"},
    {136, "CP950"},  {161, "CP1253"}, {162, "CP1254"}, {163, "CP1258"}, {177, "CP1255"}, {178, "CP1256"},
    {186, "CP1257"}, {204, "CP1251"}, {222, "CP874"},  {238, "CP1250"},
};

constexpr std::pair<std::string_view, std::string_view> byteOrderMarks[] = {
    {utf8Mark, utf8},
    {"\xff\xfe", "UTF-16"},
    {"\xfe\xff", "UTF-16"},
};

bool isAscii(std::string_view bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// Length of the UTF-8 sequence at `at`; 0 if there is none. Overlong forms, surrogates and what is beyond Unicode are
// none.
std::size_t sequenceLength(const unsigned char* at, const unsigned char* end)
{
    struct Range {
        unsigned char firstLead, lastLead, firstSecond, lastSecond;
        std::size_t length;
    };
    constexpr Range ranges[] = {{0xc2, 0xdf, 0x80, 0xbf, 2}, {0xe0, 0xe0, 0xa0, 0xbf, 3}, {0xe1, 0xec, 0x80, 0xbf, 3},
                                {0xed, 0xed, 0x80, 0x9f, 3}, {0xee, 0xef, 0x80, 0xbf, 3}, {0xf0, 0xf0, 0x90, 0xbf, 4},
                                {0xf1, 0xf3, 0x80, 0xbf, 4}, {0xf4, 0xf4, 0x80, 0x8f, 4}};
    if (*at < 0x80)
        return 1;
    for (const Range& range : ranges) {
        if (*at < range.firstLead || *at > range.lastLead)
            continue;
        if (static_cast<std::size_t>(end - at) < range.length || at[1] < range.firstSecond || at[1] > range.lastSecond)
            return 0;
        const auto isTrail = [](unsigned char c) { return (c & 0xc0U) == 0x80; };
        return std::all_of(at + 2, at + range.length, isTrail) ? range.length : 0;
    }
    return 0;
}

bool isUtf8(std::string_view bytes)
{
    const auto* at = reinterpret_cast<const unsigned char*>(bytes.data());
    const unsigned char* const end = at + bytes.size();
    while (at != end) {
        const std::size_t length = sequenceLength(at, end);
        if (length == 0)
            return false;
        at += length;
    }
    return true;
}

class Converter {
public:
    explicit Converter(const std::string& encoding) : handle(iconv_open(utf8.data(), encoding.c_str())) {}
    ~Converter()
    {
        if (isOpen())
            iconv_close(handle);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    [[nodiscard]] bool isOpen() const { return reinterpret_cast<std::intptr_t>(handle) != -1; }

    // Appends what `bytes` mean to `decoded`.
    void convert(std::string& bytes, DecodedText& decoded)
    {
        char* in = bytes.data();
        std::size_t inLeft = bytes.size();
        while (inLeft > 0) {
            const bool isFine = convertSome(in, inLeft, decoded.text);
            if (isFine || errno == E2BIG)
                continue;
            if (decoded.undecodable++ == 0)
                decoded.firstUndecodable = decoded.text.size();
            decoded.text += replacement;
            ++in;
            --inLeft;
            iconv(handle, nullptr, nullptr, nullptr, nullptr); // no sequence is under way
        }
        convertSome(in, inLeft, decoded.text);
    }

private:
    bool convertSome(char*& in, std::size_t& inLeft, std::string& text)
    {
        std::array<char, 65536> buffer;
        char* out = buffer.data();
        std::size_t outLeft = buffer.size();
        const bool isEnd = inLeft == 0; // what the converter holds back comes out
        const std::size_t result = iconv(handle, isEnd ? nullptr : &in, isEnd ? nullptr : &inLeft, &out, &outLeft);
        const int error = errno;
        text.append(buffer.data(), out);
        errno = error;
        return result != static_cast<std::size_t>(-1);
    }

    iconv_t handle;
};

std::string encodingOf(std::string_view bytes, const std::string& charset)
{
    if (!charset.empty())
        return charset;
    for (const auto& [mark, encoding] : byteOrderMarks)
        if (bytes.starts_with(mark))
            return std::string(encoding);
    return isUtf8(bytes) && !isAscii(bytes) ? std::string(utf8) : std::string(encodingOfCharSet(charSetIn(bytes)));
}

} // namespace

bool isCharset(const std::string& name)
{
    return Converter(name).isOpen();
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
    if (decoded.encoding == utf8 && bytes.starts_with(utf8Mark))
        bytes.erase(0, utf8Mark.size());
    if ((charset.empty() && isAscii(bytes)) || (decoded.encoding == utf8 && isUtf8(bytes))) {
        decoded.text = std::move(bytes);
        return decoded;
    }
    const auto high = std::count_if(bytes.begin(), bytes.end(), [](char c) { return (c & '\x80') != 0; });
    decoded.text.reserve(bytes.size() + static_cast<std::size_t>(high));
    Converter converter(decoded.encoding);
    if (!converter.isOpen())
        throw NotPetal("there is no charset '" + decoded.encoding + "'");
    converter.convert(bytes, decoded);
    return decoded;
}

} // namespace reader
