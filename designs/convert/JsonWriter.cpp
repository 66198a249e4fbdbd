#include "designs/convert/JsonWriter.h"

#include <array>
#include <charconv>
#include <utility>

namespace design {

void JsonWriter::beginObject(std::string_view name)
{
    key(name);
    beginObject();
}

void JsonWriter::beginList(std::string_view name)
{
    key(name);
    beginList();
}

void JsonWriter::key(std::string_view name)
{
    beforeValue();
    appendQuoted(name);
    out += ": ";
    followsKey = true;
}

void JsonWriter::value(std::string_view text)
{
    beforeValue();
    appendQuoted(text);
}

void JsonWriter::value(std::int64_t number)
{
    beforeValue();
    std::array<char, 24> digits;
    out.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
}

void JsonWriter::value(bool flag)
{
    beforeValue();
    out += flag ? "true" : "false";
}

std::string JsonWriter::take() &&
{
    out += '\n';
    return std::move(out);
}

void JsonWriter::open(char bracket)
{
    beforeValue();
    out += bracket;
    ++depth;
    isFirst = true;
}

void JsonWriter::close(char bracket)
{
    --depth;
    if (!isFirst && depth < deepestLine)
        out.append(1, '\n').append(static_cast<std::size_t>(depth), ' ');
    out += bracket;
    isFirst = false;
}

void JsonWriter::beforeValue()
{
    if (std::exchange(followsKey, false))
        return;
    if (!std::exchange(isFirst, false))
        out += depth <= deepestLine ? "," : ", ";
    if (depth > 0 && depth <= deepestLine)
        out.append(1, '\n').append(static_cast<std::size_t>(depth), ' ');
}

void JsonWriter::appendQuoted(std::string_view text)
{
    constexpr const char* digits = "0123456789abcdef";
    out += '"';
    std::size_t clean = 0; // start of what needs no escape
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (byte >= 0x20U && byte != '"' && byte != '\\')
            continue;
        out.append(text, clean, at - clean);
        clean = at + 1;
        if (byte == '"' || byte == '\\')
            out.append(1, '\\').append(1, text[at]);
        else if (byte == '\n')
            out += "\\n";
        else
            out.append("\\u00").append(1, digits[byte >> 4U]).append(1, digits[byte & 0xFU]);
    }
    out.append(text, clean);
    out += '"';
}

} // namespace design
