#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace text {

/// JSON pointer of the value or key that begins at `offset`; the text must be well-formed up to there. It stays one
/// line whatever the keys hold.
[[nodiscard]] std::string jsonPointerAt(std::string_view json, std::size_t offset);

/// A way through a JSON text from place to place, each behind the one before, so that the pointers of many places cost
/// one pass. The text must stay, and be well-formed as far as the way goes.
class JsonWalk {
public:
    /// An object or list around the place.
    struct Level {
        std::size_t opened = 0; ///< offset of its bracket
        bool isObject = false;
        bool keyIsNext = false;
        std::string_view key = {}; ///< the last one of an object, as it is written, with its quotes
        std::size_t index = 0;     ///< of the entry in a list
    };

    explicit JsonWalk(std::string_view theJson) : json(theJson) {}

    /// To the value or key that begins at `offset`.
    void goTo(std::size_t offset);
    [[nodiscard]] std::string pointer() const;
    /// From the outermost inward.
    [[nodiscard]] const std::vector<Level>& levels() const { return around; }

private:
    void step();

    std::string_view json;
    std::size_t at = 0;
    std::vector<Level> around;
};

/// A text without its quotes and escapes; as it stands when it cannot be read.
[[nodiscard]] std::string unescaped(std::string_view quoted);

/// A key of an object and its value.
struct JsonMember {
    std::size_t key = 0;   ///< offset of its opening quote
    std::size_t value = 0; ///< offset
};

/// The member `key` of the object whose bracket stands at `object`, in a well-formed text; what lies deeper is passed
/// over.
[[nodiscard]] std::optional<JsonMember> findJsonMember(std::string_view json, std::size_t object, std::string_view key);

/// The end of the value that begins at `offset` in a well-formed text.
[[nodiscard]] std::size_t endOfJsonValue(std::string_view json, std::size_t offset);

} // namespace text
