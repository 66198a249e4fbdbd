#include "designs/formats/plantuml/Notation.h"

#include "text/Utf8.h"
#include "text/Words.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace design::plantuml {

namespace {

constexpr std::string_view always = "\"\\%~{}@";
constexpr std::string_view doubled = "*_/-["; // twice they are marks: bold, underlined, italic, struck out, a link
constexpr std::string_view atStart = "*#=|'!:;-_.~+^<>&$/`[(";

// Words behind a `<` that make a tag of it.
constexpr std::array<std::string_view, 17> tags = {
    "b",    "back",  "code", "color", "del", "font", "i", "img", "latex",
    "math", "plain", "s",    "size",  "sub", "sup",  "u", "w",
};

bool isLetter(char byte)
{
    return std::isalpha(static_cast<unsigned char>(byte)) != 0;
}

bool isControl(char byte)
{
    return static_cast<unsigned char>(byte) < 0x20U || byte == 0x7F;
}

// Whether `<` stands in front of what could be a tag, a stereotype or an icon.
bool opensTag(std::string_view behind)
{
    const auto* const end = std::find_if_not(behind.begin(), behind.end(), isLetter);
    const std::string word = text::lowerCase(behind.substr(0, static_cast<std::size_t>(end - behind.begin())));
    return word.empty() || word == "strike" || std::find(tags.begin(), tags.end(), word) != tags.end();
}

// A `>` that closes what is between letters, as in `List<Item>`, is itself; others would be arrows.
bool isArrow(std::string_view text, std::size_t at)
{
    const bool followsWord = at > 0 && std::isalnum(static_cast<unsigned char>(text[at - 1])) != 0;
    return !followsWord || text.substr(at + 1).starts_with('>');
}

bool needsEscape(std::string_view text, std::size_t at)
{
    const char byte = text[at];
    const char next = at + 1 < text.size() ? text[at + 1] : '\0';
    if (always.find(byte) != std::string_view::npos)
        return true;
    if (doubled.find(byte) != std::string_view::npos && (next == byte || (at > 0 && text[at - 1] == byte)))
        return true;
    switch (byte) {
    case '<':
        return opensTag(text.substr(at + 1));
    case '>':
        return isArrow(text, at);
    case '/':
        return next == '\'';
    case '\'':
        return next == '/';
    case '&':
        return next == '#';
    default:
        return false;
    }
}

void addEscaped(std::string& out, char byte)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto code = static_cast<unsigned char>(byte);
    out.append("<U+00").append(1, digits[code >> 4U]).append(1, digits[code & 15U]).append(">");
}

void addText(std::string& out, std::string_view text)
{
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char byte = text[at];
        if (byte == '\n')
            out += "\\n";
        else if (isControl(byte))
            out += ' ';
        else if (needsEscape(text, at))
            addEscaped(out, byte);
        else
            out += byte;
    }
}

// Calls `visit` with each line of a text, whatever its line ends are.
template <class Visit>
void forEachLine(std::string_view text, const Visit& visit)
{
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        visit(text.substr(0, end));
        text.remove_prefix(std::min(text.size(), end + (text.substr(end).starts_with("\r\n") ? 2 : 1)));
    }
}

std::string wellFormed(std::string_view text)
{
    return text::isWellFormed(text) ? std::string(text) : text::mended(text);
}

} // namespace

std::string escaped(std::string_view text)
{
    std::string out;
    addText(out, wellFormed(text));
    return out;
}

std::string inQuotes(std::string_view text)
{
    return std::string("\"").append(escaped(text)).append("\"");
}

std::string escapedStart(std::string_view text)
{
    const std::string whole = wellFormed(text);
    const std::size_t start = std::min(whole.find_first_not_of(' '), whole.size());
    std::string out;
    if (start < whole.size() && atStart.find(whole[start]) != std::string_view::npos) {
        addEscaped(out, whole[start]);
        addText(out, std::string_view(whole).substr(start + 1));
    } else {
        addText(out, std::string_view(whole).substr(start));
    }
    return out;
}

std::string withoutBrackets(std::string_view escapedText)
{
    constexpr std::size_t lengthOfEscape = 8;
    std::string out;
    while (!escapedText.empty()) {
        const char byte = escapedText.front();
        const std::size_t length = escapedText.starts_with("<U+") ? lengthOfEscape : 1;
        if (length == 1 && (byte == '<' || byte == '>'))
            addEscaped(out, byte);
        else
            out.append(escapedText.substr(0, length));
        escapedText.remove_prefix(length);
    }
    return out;
}

std::string stereotyped(std::string_view stereotype)
{
    if (stereotype.find_first_not_of(' ') == std::string_view::npos)
        return "";
    constexpr std::string_view asSpot = "<U+0028>"; // a parenthesis would begin the letter and colour of a spot
    std::string text = " <<";
    if (stereotype.starts_with('('))
        text.append(asSpot).append(withoutBrackets(escaped(stereotype.substr(1))));
    else
        text.append(withoutBrackets(escapedStart(stereotype)));
    return text.append(">>");
}

std::string labelled(std::string_view text)
{
    const std::string label = escapedStart(text);
    return label.empty() ? label : std::string(" : ").append(label);
}

std::string colour(std::uint32_t rgb)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text = "#";
    for (int shift = 20; shift >= 0; shift -= 4)
        text += digits[rgb >> static_cast<unsigned>(shift) & 15U];
    return text;
}

std::string ownColour(std::optional<std::uint32_t> rgb, std::optional<std::uint32_t> usual)
{
    if (!rgb || rgb == usual)
        return "";
    return std::string(" ").append(colour(*rgb));
}

void addComment(std::string& out, std::string_view indentation, std::string_view text)
{
    forEachLine(wellFormed(text), [&](std::string_view line) {
        out.append(indentation).append("' ");
        addText(out, line);
        out += '\n';
    });
}

void addNoteText(std::string& out, std::string_view text)
{
    forEachLine(wellFormed(text), [&](std::string_view line) {
        std::string shown = escapedStart(line);
        // the words that would end the note
        if (isLetter(shown.empty() ? ' ' : shown.front()) && text::lowerCase(shown).starts_with("end")) {
            out += "  ";
            addEscaped(out, shown.front());
            out.append(shown, 1).append("\n");
            return;
        }
        out.append("  ").append(shown.empty() ? " " : shown).append("\n");
    });
}

std::span<const std::string_view> reservedWords()
{
    static constexpr std::array<std::string_view, 88> words = {
        "abstract",   "activate",    "actor",       "agent",     "allow_mixing", "allowmixing", "also",
        "alt",        "annotation",  "artifact",    "as",        "autonumber",   "bottom",      "boundary",
        "box",        "break",       "caption",     "card",      "center",       "circle",      "class",
        "cloud",      "collections", "component",   "control",   "create",       "critical",    "database",
        "deactivate", "destroy",     "diamond",     "down",      "else",         "end",         "endif",
        "endnote",    "entity",      "enum",        "file",      "folder",       "footer",      "fork",
        "frame",      "group",       "header",      "hide",      "hnote",        "if",          "interface",
        "label",      "left",        "legend",      "loop",      "namespace",    "newpage",     "node",
        "note",       "object",      "of",          "on",        "opt",          "over",        "package",
        "page",       "par",         "participant", "partition", "queue",        "rectangle",   "ref",
        "remove",     "return",      "right",       "rnote",     "rotate",       "scale",       "set",
        "show",       "skinparam",   "stack",       "start",     "state",        "static",      "stop",
        "storage",    "title",       "together",    "usecase",
    };
    return words;
}

} // namespace design::plantuml
