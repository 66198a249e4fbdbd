#include "designs/formats/mermaid/Notation.h"

#include "text/JsonWriter.h"
#include "text/Utf8.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace design::mermaid {

namespace {

// What stands for itself besides letters and digits.
constexpr std::string_view plain = " _.,()+/[]=!?'-:";

bool isPlain(std::string_view text, std::size_t at)
{
    const char byte = text[at];
    const char next = at + 1 < text.size() ? text[at + 1] : '\0';
    if (std::isalnum(static_cast<unsigned char>(byte)) != 0 || (static_cast<unsigned char>(byte) & 0x80U) != 0)
        return true;
    if ((byte == '-' || byte == ':') && next == byte)
        return false; // an arrow, a class of styles
    return plain.find(byte) != std::string_view::npos;
}

} // namespace

std::string escaped(std::string_view text, std::string_view lineEnd)
{
    const std::string whole = text::isWellFormed(text) ? std::string(text) : text::mended(text);
    std::string out;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        const char byte = whole[at];
        if (byte == '\n')
            out += lineEnd;
        else if (static_cast<unsigned char>(byte) < 0x20U || byte == 0x7F)
            out += byte == '\r' ? "" : " ";
        else if (isPlain(whole, at))
            out += byte;
        else
            out.append("#").append(std::to_string(static_cast<unsigned char>(byte))).append(";");
    }
    return out;
}

std::string inQuotes(std::string_view text, std::string_view lineEnd)
{
    const std::string shown = escaped(text, lineEnd);
    return std::string("\"").append(shown.empty() ? " " : shown).append("\"");
}

// A colon of its own would begin another label.
std::string labelled(std::string_view text)
{
    if (text.empty())
        return "";
    std::string label = escaped(text, "<br/>");
    for (std::size_t at = label.find(':'); at != std::string::npos; at = label.find(':', at))
        label.replace(at, 1, "#58;");
    return std::string(" : ").append(label);
}

void addComment(std::string& out, std::string_view indentation, std::string_view text)
{
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        out.append(indentation).append("%% ").append(escaped(text.substr(0, end))).append("\n");
        text.remove_prefix(std::min(text.size(), end + (text.substr(end).starts_with("\r\n") ? 2 : 1)));
    }
}

std::string headOf(std::string_view title, std::string_view owner, std::string_view kind)
{
    std::string out;
    if (title.find_first_not_of(' ') != std::string_view::npos)
        out.append("---\ntitle: ").append(text::jsonQuoted(text::onOneLine(title))).append("\n---\n");
    out.append(kind).append("\n");
    addComment(out, "  ", owner);
    return out;
}

std::span<const std::string_view> reservedWords()
{
    static constexpr std::array<std::string_view, 56> words = {
        "acc_descr",  "accdescr", "acctitle", "activate",  "actor",       "alt",        "and",      "as",
        "autonumber", "box",      "break",    "call",      "callback",    "class",      "classdef", "classdiagram",
        "click",      "create",   "critical", "cssclass",  "deactivate",  "default",    "destroy",  "details",
        "direction",  "else",     "end",      "fork",      "hide",        "href",       "join",     "left",
        "link",       "links",    "loop",     "namespace", "note",        "of",         "off",      "opt",
        "option",     "over",     "par",      "par_over",  "participant", "properties", "rect",     "right",
        "scale",      "state",    "style",    "title",     "to",          "choice",     "for",      "as_",
    };
    return words;
}

} // namespace design::mermaid
