#pragma once

#include "browse/Kinds.h"
#include "reader/index/Index.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace browse {

struct Element {
    const reader::Object* object = nullptr;
    std::size_t parent = 0; ///< its place among the elements; that of the root is its own
    std::size_t kind = 0;   ///< its place among `Elements::kinds`
    std::string name;       ///< as shown; empty when it has none
    std::string id;         ///< what it is called in addresses: the same in every page of the model, no other has it
};

/// What of a document is shown by itself, parents before their children.
class Elements {
public:
    static constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

    explicit Elements(const reader::Document& document, const reader::Index& index);

    [[nodiscard]] const std::vector<Element>& all() const { return elements; }
    [[nodiscard]] const std::vector<Kind>& kinds() const { return usedKinds; }
    /// The place of the element that `object` is or is a part of; `nowhere` when it is null or in none.
    [[nodiscard]] std::size_t placeOf(const reader::Object* object) const;

private:
    void add(const reader::Object& object, std::size_t parent);
    [[nodiscard]] std::size_t kindPlace(const reader::Object& object);
    [[nodiscard]] std::string nameOf(const reader::Object& object) const;
    void giveIds();
    void nameInteractions(const reader::Index& index);

    const reader::Object* root;
    std::vector<Element> elements;
    std::vector<Kind> usedKinds;
    std::unordered_map<const reader::Object*, std::size_t> places;
};

/// A place among the elements as the page has it: -1 for `Elements::nowhere`.
[[nodiscard]] constexpr std::int64_t numberOf(std::size_t place)
{
    return static_cast<std::int64_t>(place);
}

} // namespace browse
