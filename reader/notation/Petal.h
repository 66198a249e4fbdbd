#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The tree of a petal file (`.mdl`, `.cat`, `.sub`, `.prc`): objects, lists and values as they stand, whatever their
/// kinds and keys. Everything here belongs to the `Document` that it was read into and lives as long as that; texts
/// are UTF-8 and point into the document's copy of the file.

namespace reader {

class List;
class Object;
struct TypedValue;

enum class ValueKind : std::uint8_t {
    none,      ///< there is no such value
    text,      ///< `"Order"`
    block,     ///< lines that start with `|`
    number,    ///< `100`, `0.250000`, of any length
    word,      ///< `TRUE`, and every other bare word
    reference, ///< `@17`, the number of a view
    point,     ///< `(450, 225)`
    tuple,     ///< other values in parentheses: `("VisibilitySet" 45)`
    object,    ///< `(object Class "Order" ...)`
    list,      ///< `(list Messages ...)`
    typed,     ///< `(value Text "...")`
};

struct Point {
    double x = 0;
    double y = 0;
};

/// What stands behind a key or in a list. Asking for something that it is not gives the empty answer.
class Value {
public:
    [[nodiscard]] ValueKind kind() const { return valueKind; }
    explicit operator bool() const { return valueKind != ValueKind::none; }

    /// As it stands in the file: a text without its quotes but with its escapes, a block with its bars, a reference
    /// without `@`, a number or word; empty for what has parts.
    [[nodiscard]] std::string_view raw() const;
    /// The words that are meant: escapes resolved, the lines of a block joined with line feeds, the text inside
    /// `(value Text ...)`, a number or word as it stands. Empty for the rest.
    [[nodiscard]] std::string asText() const;
    /// The number, toward zero, if it is one (alone or in `(value ...)`) and fits.
    [[nodiscard]] std::optional<std::int64_t> asInt() const;
    [[nodiscard]] std::optional<double> asNumber() const;
    /// `TRUE` or `FALSE`, in any case of letters.
    [[nodiscard]] std::optional<bool> asBool() const;
    [[nodiscard]] std::optional<Point> asPoint() const;
    /// The number of a reference if it fits. A writer whose counter overflows goes on with negative numbers; they are
    /// those beyond 2147483647 here.
    [[nodiscard]] std::optional<std::uint32_t> asReference() const;
    [[nodiscard]] const Object* asObject() const;
    /// A list, or the members of a tuple.
    [[nodiscard]] const List* asList() const;
    [[nodiscard]] const TypedValue* asTyped() const;

    /// Where it starts in the file's text; for `Document::place`.
    [[nodiscard]] const char* position() const;
    /// Behind the last of its characters there.
    [[nodiscard]] const char* endPosition() const;

private:
    friend class Parser;
    friend class Document;

    union {
        const char* text = nullptr;
        const Object* object;
        const List* list;
        const TypedValue* typed;
    };
    std::uint32_t length = 0;
    ValueKind valueKind = ValueKind::none;
};

/// `(value Text "...")`: `type` is `Text`.
struct TypedValue {
    std::string_view type;
    Value value;
    const char* position = nullptr;
    std::uint32_t length = 0; ///< in the file's text, with its parentheses
};

/// A key of an object and its value. An object may have a key twice; the key is empty where the file lacks it.
struct Attribute {
    std::string_view key;
    Value value;
};

/// `(list kind ...)`; `kind` may be empty.
class List {
public:
    [[nodiscard]] std::string_view kind() const { return listKind; }
    [[nodiscard]] std::span<const Value> values() const { return {first, count}; }
    /// Those of the values that are objects, in order.
    [[nodiscard]] std::vector<const Object*> objects() const;
    [[nodiscard]] const char* position() const { return start; }
    [[nodiscard]] const char* endPosition() const { return start + length; }

private:
    friend class Parser;
    friend class Document;

    std::string_view listKind;
    Value* first = nullptr;
    const char* start = nullptr;
    std::uint32_t count = 0;
    std::uint32_t length = 0; // in the text
};

/// `(object Kind "name" "another" @17 key value ...)`.
class Object {
public:
    [[nodiscard]] std::string_view kind() const { return objectKind; }
    /// Whether the kind is one of `kinds`.
    template <typename... Kinds>
    [[nodiscard]] bool is(const Kinds&... kinds) const
    {
        return ((objectKind == kinds) || ...);
    }

    /// The texts behind the kind: none, one or more.
    [[nodiscard]] std::span<const Value> names() const { return {firstName, nameCount}; }
    /// The first of them, or empty.
    [[nodiscard]] std::string name() const;
    /// The last of them, or empty: what views of classes and states are called (`ClassView "Class" "Logical View::A"`).
    [[nodiscard]] std::string lastName() const;
    /// The number behind `@`, by which views refer to each other; see `Value::asReference`.
    [[nodiscard]] std::optional<std::uint32_t> viewNumber() const;

    /// In the order of the file.
    [[nodiscard]] std::span<const Attribute> attributes() const { return {firstAttribute, attributeCount}; }
    /// The first value of that key; one without a kind when there is none.
    [[nodiscard]] const Value& get(std::string_view key) const;
    [[nodiscard]] bool has(std::string_view key) const { return static_cast<bool>(get(key)); }

    [[nodiscard]] std::string text(std::string_view key) const { return get(key).asText(); }
    [[nodiscard]] std::int64_t integer(std::string_view key, std::int64_t otherwise = 0) const;
    [[nodiscard]] double number(std::string_view key, double otherwise = 0) const;
    [[nodiscard]] bool flag(std::string_view key, bool otherwise = false) const;
    [[nodiscard]] const Object* object(std::string_view key) const { return get(key).asObject(); }
    /// The objects of the list of that key; none when there is no such list.
    [[nodiscard]] std::vector<const Object*> objects(std::string_view key) const;

    /// The object that this one stands in, directly or in a list of it; null for the outermost. The root of a unit that
    /// was loaded has the object that names the unit's file as its parent's child: it stands in its place.
    [[nodiscard]] const Object* parent() const { return parentObject; }
    /// Where it starts in the file's text; for `Document::place`.
    [[nodiscard]] const char* position() const { return start; }
    /// Behind its last parenthesis, or what there is of it.
    [[nodiscard]] const char* endPosition() const { return start + length; }

private:
    friend class Parser;
    friend class Document;

    std::string_view objectKind;
    const Value* firstName = nullptr;
    Attribute* firstAttribute = nullptr;
    const Object* parentObject = nullptr;
    const char* start = nullptr;
    std::uint32_t nameCount = 0;
    std::uint32_t attributeCount = 0;
    std::uint32_t ownNumber = 0;
    std::uint32_t length = 0; // in the text
    bool hasNumber = false;
};

/// The objects directly in `object`, in its attributes, their lists and tuples, in the order of the file.
[[nodiscard]] std::vector<const Object*> childrenOf(const Object& object);

/// Calls `visit` with `object` and every object below it, in the order of the file.
template <typename Visit>
void forEachObject(const Object& object, const Visit& visit)
{
    std::vector<const Object*> open = {&object};
    while (!open.empty()) {
        const Object* const next = open.back();
        open.pop_back();
        visit(*next);
        const std::vector<const Object*> children = childrenOf(*next);
        open.insert(open.end(), children.rbegin(), children.rend());
    }
}

} // namespace reader
