#pragma once

#include <simdjson.h>

#include <string_view>

/// JSON that someone else wrote.
namespace design::json {

using Value = simdjson::dom::element;
using Object = simdjson::dom::object;
using List = simdjson::dom::array;

/// A whole text. Values may lie in each other 1024 deep.
class Document {
public:
    /// Throws UnreadableDesign with line and column where the text is no JSON.
    explicit Document(std::string_view text);

    [[nodiscard]] Value root() const { return tree; }

private:
    simdjson::dom::parser parser;
    Value tree;
};

// What is not there, or is of another type, is empty.

[[nodiscard]] std::string_view text(const Object& object, std::string_view key);
[[nodiscard]] bool flag(const Object& object, std::string_view key);
[[nodiscard]] double number(const Object& object, std::string_view key);

/// Calls `visit(const Object&)` for each object in the list that is there under the key.
template <class Visit>
void forEach(const Object& object, std::string_view key, const Visit& visit)
{
    List list;
    if (object[key].get(list) != simdjson::SUCCESS)
        return;
    for (const Value item : list) {
        Object member;
        if (item.get(member) == simdjson::SUCCESS)
            visit(member);
    }
}

} // namespace design::json
