#include "browse/Json.h"

namespace browse {

namespace {

constexpr bool isPlain(char c)
{
    return static_cast<unsigned char>(c) >= 0x20U && c != '"' && c != '\\' && c != '<' && c != '\x7f';
}

void appendEscaped(std::string& out, char c)
{
    constexpr const char* digits = "0123456789abcdef";
    const auto code = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\')
        out.append(1, '\\').append(1, c);
    else if (c == '\n')
        out.append("\\n");
    else
        out.append("\\u00").append(1, digits[code >> 4U]).append(1, digits[code & 0xFU]);
}

void appendQuoted(std::string& out, std::string_view text)
{
    out += '"';
    while (!text.empty()) {
        std::size_t plain = 0;
        while (plain < text.size() && isPlain(text[plain]))
            ++plain;
        out.append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (!text.empty()) {
            appendEscaped(out, text.front());
            text.remove_prefix(1);
        }
    }
    out += '"';
}

} // namespace

void Json::separate()
{
    if (!isFirst)
        *out += ',';
    isFirst = false;
}

Json& Json::open(char bracket)
{
    separate();
    *out += bracket;
    isFirst = true;
    return *this;
}

Json& Json::close(char bracket)
{
    *out += bracket;
    isFirst = false;
    return *this;
}

Json& Json::key(std::string_view name)
{
    separate();
    appendQuoted(*out, name);
    *out += ':';
    isFirst = true;
    return *this;
}

Json& Json::text(std::string_view value)
{
    separate();
    appendQuoted(*out, value);
    return *this;
}

Json& Json::written(std::string_view value)
{
    separate();
    out->append(value);
    return *this;
}

Json& Json::number(std::size_t value)
{
    return written(std::to_string(value));
}

Json& Json::place(std::size_t value)
{
    return value == nowhere ? written("-1") : number(value);
}

} // namespace browse
