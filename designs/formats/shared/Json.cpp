#include "designs/formats/shared/Json.h"

#include "designs/formats/Format.h"
#include "JsonText.h"

#include <algorithm>
#include <array>

namespace design {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

// Goes through a text that is known not to be JSON until it cannot go on. The text's depth is limited.
class FaultFinder {
public:
    explicit FaultFinder(std::string_view theText) : text(theText) {}

    /// Offset of the first byte that cannot stand where it stands.
    std::size_t find()
    {
        if (takeValue())
            skipBlanks();
        return std::min(at, text.size());
    }
    /// Whether it could not go on because it came too deep.
    [[nodiscard]] bool isTooDeep() const { return depth == simdjson::DEFAULT_MAX_DEPTH; }

private:
    void skipBlanks() { at = std::min(text.find_first_not_of(" \t\r\n", at), text.size()); }

    bool take(char byte)
    {
        skipBlanks();
        if (at == text.size() || text[at] != byte)
            return false;
        ++at;
        return true;
    }

    bool takeString()
    {
        const std::size_t start = at;
        if (!take('"'))
            return false;
        while (at < text.size() && text[at] != '"' && static_cast<unsigned char>(text[at]) >= 0x20U)
            at += text[at] == '\\' ? 2 : 1;
        if (at < text.size() && text[at] == '"') {
            ++at;
            return true;
        }
        at = at < text.size() ? at : start; // the end of a text that never ends says nothing
        return false;
    }

    bool takeWord()
    {
        const std::size_t end = std::min(text.find_first_of(" \t\r\n,:]}", at), text.size());
        const std::string_view word = text.substr(at, end - at);
        if (word != "true" && word != "false" && word != "null" && !isJsonNumber(word))
            return false;
        at = end;
        return true;
    }

    bool takeMembers(char closing)
    {
        if (take(closing))
            return true;
        do {
            skipBlanks();
            if (closing == '}' && !(takeString() && take(':')))
                return false;
            if (!takeValue())
                return false;
        } while (take(','));
        return take(closing);
    }

    bool takeValue()
    {
        skipBlanks();
        if (at == text.size())
            return false;
        if (text[at] == '"')
            return takeString();
        if (text[at] != '{' && text[at] != '[')
            return takeWord();
        if (isTooDeep())
            return false;
        ++depth;
        const bool isObject = text[at++] == '{';
        if (!takeMembers(isObject ? '}' : ']'))
            return false;
        --depth;
        return true;
    }

    std::string_view text;
    std::size_t at = 0;
    std::size_t depth = 0;
};

std::string describe(std::string_view rest)
{
    constexpr std::array conflictMarks = {"<<<<<<<", "=======", ">>>>>>>", "|||||||"};
    if (rest.empty())
        return "the end of the file";
    if (std::any_of(conflictMarks.begin(), conflictMarks.end(),
                    [&](std::string_view mark) { return rest.starts_with(mark); }))
        return "a mark of a merge conflict that was not resolved";
    const auto byte = static_cast<unsigned char>(rest.front());
    if (byte < 0x20U || byte >= 0x7FU)
        return "the byte " + std::to_string(byte);
    return jsonQuoted(rest.substr(0, 1));
}

[[noreturn]] void throwFault(std::string_view text, simdjson::error_code error)
{
    FaultFinder finder(text);
    std::size_t offset = finder.find();
    if (error == simdjson::UTF8_ERROR)
        offset = std::min(offset, firstStrayByte(text));
    const auto [line, column] = lineAndColumnAt(text, offset);
    const std::string place = std::to_string(line) + ":" + std::to_string(column) + ": ";
    if (error == simdjson::DEPTH_ERROR || finder.isTooDeep())
        throw UnreadableDesign(place + "values lie in each other more than " +
                               std::to_string(simdjson::DEFAULT_MAX_DEPTH) + " deep");
    throw UnreadableDesign(place + "expected well-formed JSON, found " + describe(text.substr(offset)));
}

} // namespace

JsonDocument::JsonDocument(std::string_view text)
{
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(byteOrderMark.size());
    const simdjson::error_code error = parser.parse(text.data(), text.size()).get(document);
    if (error == simdjson::MEMALLOC || error == simdjson::CAPACITY)
        throw UnreadableDesign("there is not enough memory for a file of this size");
    if (error != simdjson::SUCCESS)
        throwFault(text, error);
}

} // namespace design
