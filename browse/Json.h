#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace browse {

/// Appends JSON to a text. No `<` comes out as itself, so that nothing in it can end the element of a page that it
/// stands in. Commas are put where they belong.
class Json {
public:
    explicit Json(std::string& target) : out(&target) {}

    Json& openList() { return open('['); }
    Json& closeList() { return close(']'); }
    Json& openObject() { return open('{'); }
    Json& closeObject() { return close('}'); }
    Json& key(std::string_view name);
    Json& text(std::string_view value);
    Json& number(std::size_t value);
    /// A value that is JSON already.
    Json& written(std::string_view value);
    /// The place of something in a list that the reader of the JSON has; -1 when it is in none.
    Json& place(std::size_t value);

    static constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

private:
    Json& open(char bracket);
    Json& close(char bracket);
    void separate();

    std::string* out;
    bool isFirst = true;
};

} // namespace browse
