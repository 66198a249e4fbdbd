#include "text/Encodings.h"

#include "text/Utf8.h"
#include "text/Words.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <iconv.h>

namespace text {

namespace {

constexpr std::size_t pieceSize = 65536;
constexpr std::size_t longestCharacter = 16; // bytes, with the sequences that choose a character set before it

class Converter {
public:
    explicit Converter(const std::string& encoding) : handle(iconv_open("UTF-8", encoding.c_str())) {}
    ~Converter()
    {
        if (isOpen())
            iconv_close(handle);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    [[nodiscard]] bool isOpen() const { return reinterpret_cast<std::intptr_t>(handle) != -1; }
    void reset() { iconv(handle, nullptr, nullptr, nullptr, nullptr); }

    enum class Result : std::uint8_t {
        Whole,
        Incomplete, // what is left at the end of the bytes is the start of a character
        Illegal,
    };

    // Appends what `bytes` mean to `text`, and sets `bytes` to those that are left. Where a sequence is illegal the
    // system has moved past it in some encodings and not in others, so what is left says nothing then. The system takes
    // numbers of characters that Unicode has not (F9 and four bytes more in UTF-8); they are illegal.
    Result convert(std::string_view& bytes, std::string& text)
    {
        char* in = const_cast<char*>(bytes.data()); // iconv only reads it
        std::size_t inLeft = bytes.size();
        const std::size_t before = text.size();
        const Result result = run(&in, &inLeft, text);
        bytes.remove_prefix(bytes.size() - inLeft);
        if (isUtf8(std::string_view(text).substr(before)))
            return result;
        text.resize(before);
        return Result::Illegal;
    }

    // Appends what the converter holds back, since a character could have followed that joins it.
    void finish(std::string& text) { static_cast<void>(run(nullptr, nullptr, text)); }

private:
    Result run(char** in, std::size_t* inLeft, std::string& text)
    {
        for (;;) {
            char* out = buffer.data();
            std::size_t outLeft = buffer.size();
            const std::size_t count = iconv(handle, in, inLeft, &out, &outLeft);
            const int error = errno;
            text.append(buffer.data(), out);
            if (count != static_cast<std::size_t>(-1))
                return Result::Whole;
            if (error != E2BIG)
                return error == EINVAL ? Result::Incomplete : Result::Illegal;
        }
    }

    iconv_t handle;
    std::array<char, pieceSize> buffer;
};

// Bytes that every character has a multiple of.
std::size_t unitOf(std::string_view encoding)
{
    if (encoding.starts_with("utf-16") || encoding.starts_with("ucs-2"))
        return 2;
    return encoding.starts_with("utf-32") || encoding.starts_with("ucs-4") ? 4 : 1;
}

// Bytes to pass over behind an illegal sequence of `length` bytes. A byte of ASCII at its end, a closing quote perhaps,
// is likelier to be meant than to belong to it.
std::size_t illegalLength(std::string_view sequence, std::size_t unit)
{
    if (unit > 1)
        return std::min(unit, sequence.size());
    const auto* const ascii = std::find_if(sequence.begin() + 1, sequence.end(),
                                           [](char byte) { return static_cast<unsigned char>(byte) < 0x80U; });
    return static_cast<std::size_t>(ascii - sequence.begin());
}

// Goes through the bytes character by character, so that it is known where an illegal one begins and ends.
class CarefulDecoder {
public:
    CarefulDecoder(Converter& theConverter, std::string_view theBytes, std::size_t theUnit)
        : converter(theConverter), bytes(theBytes), unit(theUnit)
    {
    }

    Decoded run()
    {
        while (!bytes.empty())
            takeCharacter();
        converter.finish(decoded.text);
        return std::move(decoded);
    }

private:
    void takeCharacter()
    {
        for (std::size_t length = unit; length <= std::min(longestCharacter, bytes.size()); length += unit) {
            const std::string_view sequence = bytes.substr(0, length);
            std::string_view left = sequence;
            switch (converter.convert(left, decoded.text)) {
            case Converter::Result::Whole:
                return bytes.remove_prefix(length);
            case Converter::Result::Illegal:
                return passOver(illegalLength(sequence, unit));
            case Converter::Result::Incomplete:
                bytes.remove_prefix(length - left.size()); // a sequence that chooses a character set
                length = left.size();
                break;
            }
        }
        passOver(std::min(unit, bytes.size())); // cut off by the end
    }

    void passOver(std::size_t length)
    {
        converter.reset(); // no sequence is under way
        if (decoded.undecodable == 0)
            decoded.firstUndecodable = decoded.text.size();
        decoded.undecodable += length;
        decoded.text += replacementCharacter;
        bytes.remove_prefix(length);
    }

    Converter& converter;
    std::string_view bytes;
    std::size_t unit;
    Decoded decoded;
};

using ByteTable = std::array<char32_t, 256>;

ByteTable windowsTable()
{
    ByteTable table;
    Converter converter("CP1252");
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        const char value = static_cast<char>(byte);
        std::string_view bytes(&value, 1);
        std::string character;
        const bool isDefined = converter.isOpen() && converter.convert(bytes, character) == Converter::Result::Whole;
        table[byte] = isDefined && !character.empty() ? codePoint(character) : static_cast<char32_t>(byte);
        if (!isDefined && converter.isOpen())
            converter.reset();
    }
    return table;
}

Decoded decodedByWindows(std::string_view bytes)
{
    Decoded result;
    const auto high = std::count_if(bytes.begin(), bytes.end(), [](char byte) { return (byte & '\x80') != 0; });
    result.text.reserve(bytes.size() + static_cast<std::size_t>(high) * 2);
    for (const char byte : bytes)
        appendCharacter(result.text, windowsCharacter(byte));
    return result;
}

// UTF-16 and UTF-32 without a byte order in their name have it in their first character; the system would look for it
// again after an illegal sequence.
std::string withByteOrder(std::string encoding, std::string_view& bytes)
{
    const std::size_t unit = unitOf(encoding);
    const std::string_view littleMark = unit == 4 ? std::string_view("\xFF\xFE\0\0", 4) : "\xFF\xFE";
    const std::string_view bigMark = unit == 4 ? std::string_view("\0\0\xFE\xFF", 4) : "\xFE\xFF";
    const bool isLittle = unit > 1 && bytes.starts_with(littleMark) && !encoding.ends_with("be");
    const bool isBig = unit > 1 && bytes.starts_with(bigMark) && !encoding.ends_with("le");
    if (isLittle || isBig)
        bytes.remove_prefix(unit);
    if (encoding == "utf-16" || encoding == "utf-32")
        encoding += isBig ? "be" : "le";
    return encoding;
}

} // namespace

bool isEncoding(const std::string& name)
{
    return Converter(name).isOpen();
}

std::optional<Decoded> decoded(std::string_view bytes, const std::string& encoding)
{
    std::string name = lowerCase(encoding);
    if (name == "cp1252" || name == "windows-1252")
        return decodedByWindows(bytes);
    name = withByteOrder(std::move(name), bytes);
    Converter converter(name);
    if (!converter.isOpen())
        return std::nullopt;
    Decoded result;
    std::string_view left = bytes;
    if (converter.convert(left, result.text) == Converter::Result::Whole) {
        converter.finish(result.text);
        return result;
    }
    Converter careful(name);
    return CarefulDecoder(careful, bytes, unitOf(name)).run();
}

char32_t windowsCharacter(char byte)
{
    static const ByteTable table = windowsTable();
    return table[static_cast<unsigned char>(byte)];
}

} // namespace text
