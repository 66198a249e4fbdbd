#pragma once

#include "reader/notation/Petal.h"

#include <string>
#include <string_view>
#include <vector>

/// What is said of an element in its own object: "type" is "Money", "Java.final" is "TRUE".

namespace compare {

struct Fact {
    std::string key;
    std::string value;
};

/// Which facts count.
enum class Depth {
    meaning, ///< what somebody has decided
    all,     ///< also numbers, units and settings that a tool keeps for itself
};

/// Whether the value of a key is the name of another element.
[[nodiscard]] bool isReference(std::string_view key);

/// Gives the facts of one object after the other in buffers that it uses again.
class FactReader {
public:
    explicit FactReader(Depth depth) : depth(depth) {}

    /// Calls `visit(key, value)` with each fact, in the order of the file.
    template <class Visit>
    void forEach(const reader::Object& object, const Visit& visit)
    {
        for (const reader::Attribute& attribute : object.attributes()) {
            if (const reader::List* const list = propertiesIn(attribute)) {
                for (const Fact& property : properties(*list))
                    visit(std::string_view(property.key), std::string_view(property.value));
            } else if (take(object, attribute)) {
                visit(attribute.key, std::string_view(value));
            }
        }
    }

    /// All of them, by key.
    [[nodiscard]] std::vector<Fact> all(const reader::Object& object);

private:
    bool take(const reader::Object& object, const reader::Attribute& attribute);
    static const reader::List* propertiesIn(const reader::Attribute& attribute);
    const std::vector<Fact>& properties(const reader::List& list);
    void addProperties(const reader::List& list, const std::string& around, int level);

    Depth depth;
    std::string value;
    std::vector<Fact> found; // properties of one list
};

} // namespace compare
