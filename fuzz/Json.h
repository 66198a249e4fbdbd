#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct JsonMember;

/// A JSON value that can be changed at will. Numbers are integers.
struct Json {
    enum class Kind { Null, Boolean, Integer, Text, List, Object };

    Kind kind = Kind::Null;
    bool boolean = false;
    std::int64_t integer = 0;
    std::string text;
    std::vector<JsonMember> members; ///< of an object, or with empty keys of a list

    Json();
    explicit Json(Kind theKind);
    explicit Json(std::string theText);
    explicit Json(std::int64_t theInteger);

    [[nodiscard]] bool isText() const { return kind == Kind::Text; }
    [[nodiscard]] bool isList() const { return kind == Kind::List; }
    [[nodiscard]] bool isObject() const { return kind == Kind::Object; }
    /// The member of that key, or null.
    [[nodiscard]] Json* find(std::string_view key);
    /// The text of the member of that key; empty when there is none.
    [[nodiscard]] std::string_view textOf(std::string_view key);
    /// Sets or adds a member.
    void set(std::string_view key, Json value);
    void remove(std::string_view key);
};

struct JsonMember {
    std::string key;
    Json value;
};

/// Nothing when `text` is not JSON.
[[nodiscard]] std::optional<Json> parseJson(std::string_view text);
[[nodiscard]] std::string toText(const Json& value);
