#include "text/JsonWriter.h"

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

void appendEscaped(std::string& out, char byte)
{
    constexpr const char* digits = "0123456789abcdef";
    const auto code = static_cast<unsigned char>(byte);
    if (byte == '"' || byte == '\\')
        out.append(1, '\\').append(1, byte);
    else if (byte == '\n')
        out += "\\n";
    else
        out.append("\\u00").append(1, digits[code >> 4U]).append(1, digits[code & 0xFU]);
}

// What needs no escape is copied in stretches.
void appendEscaped(std::string& out, std::string_view text, bool isInPage)
{
    std::size_t plain = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (isPlain(text[at], isInPage))
            continue;
        out.append(text, plain, at - plain);
        appendEscaped(out, text[at]);
        plain = at + 1;
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
    const bool beginsLine = depth > 0 && depth <= layout.deepestLine;
    if (!std::exchange(isFirst, false))
        out += beginsLine || layout.isDense ? "," : ", ";
    if (beginsLine)
        beginLine();
}

void JsonWriter::beginLine()
{
    out.append(1, '\n').append(static_cast<std::size_t>(depth * layout.indentation), ' ');
}

void JsonWriter::appendQuoted(std::string_view text)
{
    out += '"';
    appendEscaped(out, text, layout.isInPage);
    out += '"';
}

std::string jsonQuoted(std::string_view text)
{
    std::string result;
    JsonWriter(result).value(text);
    return result;
}

} // namespace text
