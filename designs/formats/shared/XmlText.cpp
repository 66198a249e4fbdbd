#include "designs/formats/shared/XmlText.h"

namespace design::xml {

namespace {

// How a character stands in the value of an attribute; line ends and tabs would be read as blanks otherwise. Other
// control characters are not allowed, escaped or not.
std::string_view escapeOf(char letter)
{
    switch (letter) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\n':
        return "&#xA;";
    case '\r':
        return "&#xD;";
    case '\t':
        return "&#x9;";
    default:
        return "";
    }
}

} // namespace

Text::Text(text::Sink& sink, std::string_view declaration, std::string_view theIndentation)
    : tail(sink), text(tail.text()), indentation(theIndentation)
{
    text.append(declaration).append("\n");
}

void Text::open(std::string_view element)
{
    endTag();
    indent();
    text.append("<").append(element);
    ++depth;
    isInTag = true;
}

void Text::attribute(std::string_view name, std::string_view value)
{
    text.append(" ").append(name).append("=\"");
    for (const char letter : value) {
        const std::string_view escape = escapeOf(letter);
        if (!escape.empty())
            text += escape;
        else if (static_cast<unsigned char>(letter) >= ' ')
            text += letter;
    }
    text += '"';
}

void Text::close(std::string_view element)
{
    --depth;
    if (isInTag) {
        text += "/>\n";
    } else {
        indent();
        text.append("</").append(element).append(">\n");
    }
    isInTag = false;
    tail.passOnWhenLong();
}

void Text::indent()
{
    for (std::size_t level = 0; level < depth; ++level)
        text += indentation;
}

void Text::endTag()
{
    if (isInTag)
        text += ">\n";
    isInTag = false;
}

} // namespace design::xml
