#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace text {

/// How JSON looks.
struct JsonLayout {
    int deepestLine = 0;   ///< values down to that depth stand on lines of their own, deeper ones one behind the other
    int indentation = 1;   ///< blanks a level, in front of a line
    bool isDense = false;  ///< no blanks behind commas and colons
    bool isInPage = false; ///< no `<` comes out as itself, so that no text can end the element of a page it stands in
    bool isForTerminal = false; ///< no character comes out as itself that steers a terminal or turns what is written
};

/// Appends JSON to a text, one value after the other, with commas, line ends and indentation where they belong. Texts
/// must be UTF-8; control characters come out as escapes. The members of an object are a key and a value each.
class JsonWriter {
public:
    /// `target` must stay; it may be emptied between two values.
    explicit JsonWriter(std::string& target, const JsonLayout& theLayout = {}) : out(target), layout(theLayout) {}
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;
    ~JsonWriter() = default;

    JsonWriter& beginObject() { return open('{'); }
    JsonWriter& endObject() { return close('}'); }
    JsonWriter& beginList() { return open('['); }
    JsonWriter& endList() { return close(']'); }
    JsonWriter& beginObject(std::string_view name);
    JsonWriter& beginList(std::string_view name);

    JsonWriter& key(std::string_view name);
    JsonWriter& value(std::string_view text);
    JsonWriter& value(const char* text) { return value(std::string_view(text)); }
    JsonWriter& value(const std::string& text) { return value(std::string_view(text)); }
    JsonWriter& value(std::int64_t number);
    JsonWriter& value(std::uint64_t number);
    JsonWriter& value(int number) { return value(static_cast<std::int64_t>(number)); }
    /// With six decimals.
    JsonWriter& value(double number);
    JsonWriter& value(bool flag);
    /// The next key, or value of a list, begins a line, however deep it is.
    JsonWriter& onNewLine();
    /// A value that is JSON already.
    JsonWriter& written(std::string_view json);

    template <class Value>
    JsonWriter& member(std::string_view name, const Value& theValue)
    {
        return key(name).value(theValue);
    }

private:
    JsonWriter& open(char bracket);
    JsonWriter& close(char bracket);
    void beforeValue();
    void beginLine();
    void appendQuoted(std::string_view text);

    std::string& out;
    JsonLayout layout;
    int depth = 0;
    bool isFirst = true; // in the object or list that is open
    bool followsKey = false;
    bool isLineDue = false;
};

/// A text in JSON notation, with its double quotes.
[[nodiscard]] std::string jsonQuoted(std::string_view text);

} // namespace text
