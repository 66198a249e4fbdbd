#include "text/JsonFault.h"

#include "text/Places.h"
#include "text/Utf8.h"
#include "text/Words.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace text {

namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view wordEnds = " \t\r\n,:[]{}\"";
constexpr std::size_t longestShownWord = 40;

bool isWordByte(char byte)
{
    return wordEnds.find(byte) == std::string_view::npos;
}

std::string numberOf(char byte)
{
    constexpr const char* digits = "0123456789ABCDEF";
    const auto code = static_cast<unsigned char>(byte);
    return {'0', 'x', digits[code >> 4U], digits[code & 0xFU]};
}

std::string wordAt(std::string_view rest)
{
    return onOneLine(shortened(rest.substr(0, std::min(rest.find_first_of(wordEnds), rest.size())), longestShownWord));
}

// What stands at the beginning of `rest`, and why JSON does not know it.
std::string describe(std::string_view rest)
{
    constexpr std::array<std::string_view, 4> conflictMarks = {"<<<<<<<", "=======", ">>>>>>>", "|||||||"};
    if (rest.empty())
        return "the end of the text";
    if (std::any_of(conflictMarks.begin(), conflictMarks.end(), [&](auto mark) { return rest.starts_with(mark); }))
        return "a mark of a merge conflict that was not resolved";
    if (rest.starts_with("//") || rest.starts_with("/*") || rest.starts_with('#'))
        return "a comment, which JSON does not have";
    if (rest.starts_with('\''))
        return "a single quote; texts stand in double quotes";
    const auto byte = static_cast<unsigned char>(rest.front());
    const std::size_t length = characterLength(rest);
    if (length == 0)
        return "the byte " + numberOf(rest.front()) + ", which is not UTF-8";
    if (byte < 0x20U || byte == 0x7FU)
        return "the control character " + numberOf(rest.front());
    if (!isWordByte(rest.front()))
        return {rest.front()};
    std::string word = wordAt(rest);
    const std::string lower = lowerCase(word);
    if (lower == "true" || lower == "false" || lower == "null")
        return word + (word == lower ? "" : "; JSON has it in small letters");
    if ((byte >= '0' && byte <= '9') || byte == '-' || byte == '+' || byte == '.')
        return isJsonNumber(word) ? "the number " + word : word + ", which is no number in JSON";
    return word;
}

class Scanner {
public:
    Scanner(std::string_view theText, std::size_t theDeepestLevel) : json(theText), deepestLevel(theDeepestLevel) {}

    std::optional<JsonFault> run()
    {
        while (!fault && state != State::Done)
            step();
        return std::move(fault);
    }

private:
    enum class State : std::uint8_t {
        Value,
        FirstOfList,
        FirstKey,
        Key,
        Colon,
        Behind, // a value
        Done,
    };
    struct Level {
        char closing;
        std::size_t opened;
    };

    void step()
    {
        at = std::min(json.find_first_not_of(blanks, at), json.size());
        switch (state) {
        case State::FirstOfList:
            return take(']') ? closeLevel() : takeValue("a value or ]");
        case State::Value:
            return isBehindComma() ? refuse("a value", "] behind a comma") : takeValue("a value");
        case State::FirstKey:
            return take('}') ? closeLevel() : takeKey("a key in double quotes or }");
        case State::Key:
            return isBehindComma() ? refuse("a key in double quotes", "} behind a comma")
                                   : takeKey("a key in double quotes");
        case State::Colon:
            if (!take(':'))
                return refuse("a colon");
            state = State::Value;
            isComma = false;
            return;
        case State::Behind:
            return takeBehind();
        case State::Done:
            return;
        }
    }

    [[nodiscard]] bool isBehindComma() const
    {
        return isComma && at < json.size() && json[at] == levels.back().closing;
    }

    bool take(char byte)
    {
        if (at == json.size() || json[at] != byte)
            return false;
        ++at;
        return true;
    }

    void takeValue(const char* expected)
    {
        if (at == json.size())
            return refuse(expected);
        const char first = json[at];
        if (first == '{' || first == '[')
            return openLevel(first == '{');
        state = State::Behind;
        if (first == '"')
            return takeText();
        const std::size_t end = std::min(json.find_first_of(wordEnds, at), json.size());
        const std::string_view word = json.substr(at, end - at);
        if (word != "true" && word != "false" && word != "null" && !isJsonNumber(word))
            return refuse(expected);
        at = end;
    }

    void takeKey(const char* expected)
    {
        if (at == json.size() || json[at] != '"')
            return refuse(expected);
        takeText();
        state = State::Colon;
    }

    void takeBehind()
    {
        if (levels.empty()) {
            state = State::Done;
            if (at < json.size())
                refuse("the end of the text");
            return;
        }
        if (take(levels.back().closing))
            return closeLevel();
        if (!take(','))
            return refuse(std::string("a comma or ") + levels.back().closing);
        isComma = true;
        state = levels.back().closing == '}' ? State::Key : State::Value;
    }

    void takeText()
    {
        const std::size_t end = endOfJsonString(json, at);
        const std::string_view inside = json.substr(at + 1, std::min(end, json.size()) - at - 1);
        for (std::size_t i = 0; i < inside.size(); ++i) {
            const auto byte = static_cast<unsigned char>(inside[i]);
            const std::size_t place = at + 1 + i;
            if (byte < 0x20U)
                return refuseAt(place,
                                byte == '\n' || byte == '\r' ? "a closing double quote in the same line"
                                                             : "a text without control characters",
                                byte == '\n' || byte == '\r' ? "the end of the line" : describe(json.substr(place)));
            if (byte >= 0x80U) {
                const std::size_t length = characterLength(inside.substr(i));
                if (length == 0)
                    return refuseAt(place, "UTF-8", "the byte " + numberOf(inside[i]));
                i += length - 1;
            } else if (byte == '\\' && !takeEscape(inside, i)) {
                return;
            }
        }
        if (end == json.size())
            return refuseAt(at, "a closing double quote", "none up to the end of the text");
        at = end + 1;
    }

    // `i` is at the backslash and goes to the escape's last byte.
    bool takeEscape(std::string_view inside, std::size_t& i)
    {
        const std::size_t place = at + 1 + i;
        const char letter = i + 1 < inside.size() ? inside[i + 1] : '"';
        const std::string_view digits = letter == 'u' ? inside.substr(i + 2, 4) : std::string_view();
        const bool hasDigits =
            digits.size() == 4 && digits.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
        if (letter == 'u' ? !hasDigits : std::string_view("\"\\/bfnrt").find(letter) == std::string_view::npos) {
            refuseAt(place, R"(one of the escapes \" \\ \/ \b \f \n \r \t and \u with four hexadecimal digits)",
                     onOneLine(beginningOf(inside.substr(i), letter == 'u' ? 6 : 2)));
            return false;
        }
        i += letter == 'u' ? 5 : 1;
        return true;
    }

    void openLevel(bool isObject)
    {
        if (levels.size() == deepestLevel)
            return refuse("values that lie in each other at most " + std::to_string(deepestLevel) + " deep",
                          "one more");
        levels.push_back({isObject ? '}' : ']', at});
        ++at;
        isComma = false;
        state = isObject ? State::FirstKey : State::FirstOfList;
    }

    void closeLevel()
    {
        levels.pop_back();
        state = State::Behind;
    }

    void refuse(std::string expected) { refuse(std::move(expected), describe(json.substr(at))); }
    void refuse(std::string expected, std::string found) { refuseAt(at, std::move(expected), std::move(found)); }
    void refuseAt(std::size_t place, std::string expected, std::string found)
    {
        fault = JsonFault{place, std::move(expected), std::move(found), std::nullopt};
        if (place == json.size() && !levels.empty())
            fault->opened = levels.back().opened;
    }

    std::string_view json;
    std::size_t deepestLevel;
    std::size_t at = 0;
    State state = State::Value;
    bool isComma = false; // the last sign in the open bracket
    std::vector<Level> levels;
    std::optional<JsonFault> fault;
};

} // namespace

std::string JsonFault::message(std::string_view json) const
{
    std::string result = "expected " + expected + ", found " + found;
    if (opened)
        result.append(" (the ")
            .append(1, json[*opened])
            .append(" of ")
            .append(lineAndColumnAt(json, *opened).asText() + " is open)");
    return result;
}

std::optional<JsonFault> findJsonFault(std::string_view json, std::size_t deepestLevel)
{
    return Scanner(json, deepestLevel).run();
}

bool isJsonNumber(std::string_view token)
{
    std::size_t at = 0;
    const auto digits = [&] {
        const std::size_t start = at;
        while (at < token.size() && token[at] >= '0' && token[at] <= '9')
            ++at;
        return at > start;
    };
    const auto take = [&](std::string_view any) {
        const bool found = at < token.size() && any.find(token[at]) != std::string_view::npos;
        at += found ? 1U : 0U;
        return found;
    };
    take("-");
    if (!take("0") && !digits())
        return false;
    if (take(".") && !digits())
        return false;
    if (take("eE")) {
        take("+-");
        if (!digits())
            return false;
    }
    return at == token.size();
}

std::size_t endOfJsonString(std::string_view json, std::size_t quote)
{
    std::size_t end = quote + 1;
    while (end < json.size() && json[end] != '"')
        end += json[end] == '\\' ? 2 : 1;
    return std::min(end, json.size());
}

} // namespace text
