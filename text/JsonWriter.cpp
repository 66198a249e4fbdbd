#include "text/JsonWriter.h"

#include "text/Utf8.h"

#include <array>
#include <charconv>
#include <utility>

namespace text {

namespace {

bool isPlain(char byte, bool isInPage)
{
    const auto code = static_cast<unsigned char>(byte);
    return code >= 0x20U && byte != '"' && byte != '\\' && code != 0x7FU && (byte != '<' || !isInPage);
}

void appendHexadecimal(std::string& out, unsigned unit)
{
    constexpr const char* digits = "0123456789abcdef";
    out += "\\u";
    for (const unsigned shift : {12U, 8U, 4U, 0U})
        out += digits[unit >> shift & 0xFU];
}

void appendEscaped(std::string& out, char32_t character)
{
    constexpr char32_t firstBeyond = 0x10000; // from here on it takes two units
    if (character == '"' || character == '\\')
        out.append(1, '\\').append(1, static_cast<char>(character));
    else if (character == '\n')
        out += "\\n";
    else if (character < firstBeyond)
        appendHexadecimal(out, character);
    else {
        appendHexadecimal(out, 0xD800U + ((character - firstBeyond) >> 10U));
        appendHexadecimal(out, 0xDC00U + ((character - firstBeyond) & 0x3FFU));
    }
}

// The length of the character at the start of `text` if it needs an escape, else 0.
std::size_t escapedLength(std::string_view text, const JsonLayout& layout)
{
    const char byte = text.front();
    if (!isPlain(byte, layout.isInPage))
        return 1;
    if (!layout.isForTerminal || static_cast<unsigned char>(byte) < 0x80U || isContinuation(byte))
        return 0;
    const std::size_t length = characterLength(text);
    return length > 0 && kindOf(codePoint(text.substr(0, length))) != CharacterKind::Shown ? length : 0;
}

// What needs no escape is copied in stretches.
void appendEscaped(std::string& out, std::string_view text, const JsonLayout& layout)
{
    std::size_t plain = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::size_t length = escapedLength(text.substr(at), layout);
        if (length == 0)
            continue;
        out.append(text, plain, at - plain);
        appendEscaped(out, codePoint(text.substr(at, length)));
        plain = at + length;
        at = plain - 1;
    }
    out.append(text, plain);
}

} // namespace

JsonWriter& JsonWriter::beginObject(std::string_view name)
{
    return key(name).beginObject();
}

JsonWriter& JsonWriter::beginList(std::string_view name)
{
    return key(name).beginList();
}

JsonWriter& JsonWriter::key(std::string_view name)
{
    beforeValue();
    appendQuoted(name);
    out += layout.isDense ? ":" : ": ";
    followsKey = true;
    return *this;
}

JsonWriter& JsonWriter::value(std::string_view text)
{
    beforeValue();
    appendQuoted(text);
    return *this;
}

JsonWriter& JsonWriter::value(std::int64_t number)
{
    beforeValue();
    std::array<char, 24> digits;
    out.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
    return *this;
}

JsonWriter& JsonWriter::value(std::uint64_t number)
{
    beforeValue();
    std::array<char, 24> digits;
    out.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
    return *this;
}

JsonWriter& JsonWriter::value(double number)
{
    constexpr int decimals = 6;
    beforeValue();
    std::array<char, 400> digits; // the largest double has 309 before the point
    out.append(
        digits.data(),
        std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed, decimals).ptr);
    return *this;
}

JsonWriter& JsonWriter::value(bool flag)
{
    return written(flag ? "true" : "false");
}

JsonWriter& JsonWriter::written(std::string_view json)
{
    beforeValue();
    out += json;
    return *this;
}

JsonWriter& JsonWriter::onNewLine()
{
    isLineDue = true;
    return *this;
}

JsonWriter& JsonWriter::open(char bracket)
{
    beforeValue();
    out += bracket;
    ++depth;
    isFirst = true;
    return *this;
}

JsonWriter& JsonWriter::close(char bracket)
{
    --depth;
    if (!isFirst && depth < layout.deepestLine)
        beginLine();
    out += bracket;
    isFirst = false;
    if (depth == 0 && layout.deepestLine > 0)
        out += '\n';
    return *this;
}

void JsonWriter::beforeValue()
{
    if (std::exchange(followsKey, false))
        return;
    const bool beginsLine = std::exchange(isLineDue, false) || (depth > 0 && depth <= layout.deepestLine);
    if (!std::exchange(isFirst, false))
        out += beginsLine || layout.isDense ? "," : ", ";
    if (beginsLine)
        beginLine();
}

void JsonWriter::beginLine()
{
    out.append(1, '\n').append(static_cast<std::size_t>(depth) * static_cast<std::size_t>(layout.indentation), ' ');
}

void JsonWriter::appendQuoted(std::string_view text)
{
    out += '"';
    appendEscaped(out, text, layout);
    out += '"';
}

std::string jsonQuoted(std::string_view text)
{
    std::string result;
    JsonWriter(result).value(text);
    return result;
}

} // namespace text
