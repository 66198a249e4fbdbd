#pragma once

#include "modelfile/CodeNames.h"
#include "modelfile/read/Faults.h"
#include "text/JsonWriter.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <limits>
#include <optional>
#include <simdjson.h>
#include <string>
#include <string_view>
#include <vector>

namespace modelfile {

using Array = simdjson::ondemand::array;
using Object = simdjson::ondemand::object;
using Value = simdjson::ondemand::value;

/// Each package is an object in a list; the parser's limit must not end before that of the packages.
inline constexpr std::size_t deepestPackageLevel = 512;
inline constexpr std::size_t deepestJsonLevel = 4 * deepestPackageLevel;

/// The values of a JSON text, checked. Whatever is not as expected is thrown as `ContentError` or `SyntaxError`. What
/// lists and objects hold is read on behind a ContentError, which goes to the faults.
class JsonReader {
public:
    JsonReader(std::string_view theText, const simdjson::ondemand::parser& theParser, Faults& theFaults)
        : faults(theFaults), text(theText), parser(theParser)
    {
    }

    /// The value as it is written, without blanks behind it; of an object or a list its bracket.
    [[nodiscard]] static std::string_view tokenOf(Value& value)
    {
        std::string_view token = value.raw_json_token();
        while (!token.empty() && std::string_view(" \n\r\t").find(token.back()) != std::string_view::npos)
            token.remove_suffix(1);
        return token;
    }
    [[nodiscard]] static bool isNull(Value& value) { return tokenOf(value) == "null"; }

    [[noreturn]] static void fail(const char* at, std::string expected, std::string found, std::string missing = {},
                                  std::string nearest = {});
    /// The value is not what is expected: either it is something else, or nothing that JSON knows.
    [[noreturn]] static void failValue(Value& value, std::string expected);

    /// The bytes of a text; valid until the next text is read.
    std::string_view readText(Value& value, const char* expected = "a text");
    /// A text that stays until the whole file is read.
    std::string_view keep(std::string_view read);

    template <class Integer>
    static Integer readInteger(Value& value)
    {
        const std::string_view token = tokenOf(value);
        Integer number = 0;
        const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), number);
        if (error != std::errc() || end != token.data() + token.size() || !takeInteger(value))
            failValue(value, rangeOf(std::numeric_limits<Integer>::min(), std::numeric_limits<Integer>::max()));
        return number;
    }
    /// A number, or one of the names that stand for numbers.
    int readCode(Value& value, std::span<const CodeName> names);
    static bool readBool(Value& value);
    /// The place of a text among those that may stand here.
    std::size_t readChoice(Value& value, std::span<const std::string_view> choices);

    /// Calls `read(item, index)` for each.
    template <class Read>
    void readList(Value& value, Read read)
    {
        const std::string_view token = tokenOf(value);
        Array array = arrayOf(value);
        std::size_t index = 0;
        for (auto item : array) {
            Value element;
            if (const auto error = item.get(element); error != simdjson::SUCCESS)
                throwSyntaxError(error, token.data());
            try {
                read(element, index++);
            } catch (ContentError& error) {
                passOver(error, element.raw_json_token().data());
            }
        }
    }

    [[nodiscard]] static Object readObject(Value& value);
    /// Back to before the first key.
    void rewind(Object& object) const;

    /// A key, and the place of its opening quote.
    std::string_view readKey(simdjson::ondemand::field& field, const char*& at);

    [[nodiscard]] simdjson::ondemand::field fieldOf(simdjson::simdjson_result<simdjson::ondemand::field> result) const
    {
        simdjson::ondemand::field field;
        if (const auto error = std::move(result).get(field); error != simdjson::SUCCESS)
            throwSyntaxError(error, nullptr);
        return field;
    }

    /// The object that the whole text is.
    [[nodiscard]] Object readDocument(simdjson::ondemand::document& theDocument);
    /// Nothing may follow that object.
    void requireEnd() const;
    /// Where the text begins.
    [[nodiscard]] const char* start() const { return text.data(); }

    /// Notes a mistake, for which the value or key is passed over.
    void passOver(ContentError& error, const char* valueOrKey)
    {
        faults.add(std::move(error));
        faults.skipped(valueOrKey);
    }

    Faults& faults;

private:
    [[nodiscard]] static bool takeInteger(Value& value);
    [[nodiscard]] static Array arrayOf(Value& value);
    [[nodiscard]] static std::string rangeOf(std::int64_t least, std::int64_t most);
    std::optional<std::string_view> unescape(simdjson::ondemand::raw_json_string raw, std::size_t length);
    [[noreturn]] void throwSyntaxError(simdjson::error_code error, const char* fallback) const;
    [[nodiscard]] const char* locate() const;

    std::string_view text;
    const simdjson::ondemand::parser& parser;
    simdjson::ondemand::document* document = nullptr;
    std::vector<std::uint8_t> scratch;
    std::deque<std::string> kept;
};

/// `"class", "note" or "association"`
[[nodiscard]] std::string alternatives(std::span<const std::string_view> choices);

/// The name that was surely meant, quoted, or the empty text.
[[nodiscard]] std::string nearestOf(std::string_view name, std::span<const std::string_view> known);

/// The beginning of a text as messages show it.
[[nodiscard]] std::string_view shownPart(std::string_view text);

} // namespace modelfile
