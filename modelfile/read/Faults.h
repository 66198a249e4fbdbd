#pragma once

#include "kiv/KivElementType.h"
#include "kiv/KivModelFile.h"
#include "text/JsonFault.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace modelfile {

/// The content is wrong: `at` points at the value or key, into the text.
struct ContentError {
    const char* at;
    std::string expected;
    std::string found;
    std::string missing = {}; ///< a key that should follow there
    std::string nearest = {}; ///< what was surely meant, quoted
    std::string_view id = {}; ///< of a reference; has data only then
    KivElementType kind = {}; ///< what the reference should lead to
};

/// The JSON is broken at `at`; null when the parser does not know where.
struct SyntaxError {
    const char* at;
    std::string reason;
};

/// What a reference was surely meant to say, or the empty text.
using NearestId = std::function<std::string(std::string_view id, KivElementType kind)>;

/// The mistakes in a file while it is read. All are counted; those that come first in the file are told.
class Faults {
public:
    /// The text must stay.
    explicit Faults(std::string_view theText) : text(theText) {}

    /// Throws SyntaxError when the JSON is broken in front of that mistake: a parser that skips what it is not asked
    /// for does not see that.
    void add(ContentError error);
    void add(const SyntaxError& error);
    /// What was passed over since its key or itself was wrong: ids in it are not missing.
    void skipped(const char* valueOrKey);
    /// Whether an id stands in what was passed over.
    [[nodiscard]] bool isInSkipped(std::string_view id);

    [[nodiscard]] bool isEmpty() const { return count == 0 && !broken; }
    /// The mistakes in words, in the order of the file.
    [[nodiscard]] ModelFileError error(const std::string& name, const NearestId& nearestId);

private:
    [[nodiscard]] std::size_t offsetOf(const char* at) const { return static_cast<std::size_t>(at - text.data()); }
    void lookForBrokenJson();
    void keepFirst();

    std::string_view text;
    std::vector<ContentError> first;
    std::size_t count = 0; // without that of the JSON itself
    bool isJsonChecked = false;
    std::optional<text::JsonFault> broken;
    std::vector<std::size_t> skippedValues; // offsets
    std::optional<std::unordered_set<std::string_view>> skippedTexts;
};

} // namespace modelfile
