#pragma once

#include "dump/facts/Source.h"
#include "dump/facts/Walk.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dump {

/// What a reference leads to.
struct Target {
    Elements::Number object = 0;
    std::string_view state; ///< a word: see `stateOf`
};

/// `found`; `by name` when nothing has the quid but an element is called so; `none`, `unloaded` and `missing`.
[[nodiscard]] std::string_view stateOf(const reader::Reference& reference);
[[nodiscard]] Target targetOf(const reader::Reference& reference, const Elements& elements);

/// The view that `number` means in what `from` is in.
[[nodiscard]] const reader::Object* viewMeant(const Source& source, Elements::Number from, std::uint32_t number);

/// Where the references lead that a walk comes by. It has to be told of all objects, lists and values.
class Targets {
public:
    explicit Targets(const Source& theSource) : source(theSource) {}

    void beginObject(Elements::Number object, const Member& member);
    void endObject() { levels.pop_back(); }
    void beginList(const Member& member);
    /// Nothing for a value that refers to nothing by its kind and key.
    [[nodiscard]] std::optional<Target> of(const Member& member);

private:
    static constexpr std::size_t namedKeys = 3;
    struct Level {
        Elements::Number object = 0;
        const reader::Value* textBefore = nullptr;                 // a text, if that is what stood before
        std::array<std::optional<std::string>, namedKeys> names{}; // of what the quids of these keys lead to
    };

    [[nodiscard]] Target viewTarget(const Member& member) const;
    [[nodiscard]] Target quidTarget(const reader::Value& value, std::size_t key);
    [[nodiscard]] const std::string& nameBehind(std::size_t key);

    const Source& source;
    std::vector<Level> levels;
};

} // namespace dump
