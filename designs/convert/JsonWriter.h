#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace design {

/// Writes JSON, one value after the other, with commas, line ends and indentation where they belong. Texts must be
/// UTF-8.
class JsonWriter {
public:
    /// Values down to that depth stand on lines of their own, deeper ones one behind the other.
    explicit JsonWriter(int theDeepestLine) : deepestLine(theDeepestLine) {}

    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginList() { open('['); }
    void endList() { close(']'); }
    void beginObject(std::string_view name);
    void beginList(std::string_view name);

    void key(std::string_view name);
    void value(std::string_view text);
    void value(const char* text) { value(std::string_view(text)); }
    void value(std::int64_t number);
    void value(std::uint64_t number) { value(static_cast<std::int64_t>(number)); }
    void value(int number) { value(static_cast<std::int64_t>(number)); }
    void value(bool flag);

    template <class Value>
    void member(std::string_view name, Value theValue)
    {
        key(name);
        value(theValue);
    }

    /// Everything written, with a line end behind it.
    [[nodiscard]] std::string take() &&;

private:
    void open(char bracket);
    void close(char bracket);
    void beforeValue();
    void appendQuoted(std::string_view text);

    std::string out;
    int deepestLine;
    int depth = 0;
    bool isFirst = true; // in the object or list that is open
    bool followsKey = false;
};

} // namespace design
