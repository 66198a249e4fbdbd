#pragma once

#include "reader/document/Document.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace dump {

/// What sort of element an object is.
enum class Category : std::uint8_t {
    none, ///< no element: a view, a font, a property, or what only names the file of a unit that is there
    model,
    package,
    classifier,
    component,
    node,
    relation,
    feature,
    behavior,
    diagram,
    other, ///< of a kind that is not known here, with a quid of its own
};

/// "classifier"; empty for none.
[[nodiscard]] std::string_view nameOf(Category category);

/// "class", "class diagram"; empty for kinds that have no word.
[[nodiscard]] std::string kindWordOf(const reader::Object& object);

/// The objects of a document by the numbers that a dump gives them, from 1 in the order of the walk; 0 is none.
class Elements {
public:
    using Number = std::uint32_t;

    explicit Elements(const reader::Document& document);

    [[nodiscard]] std::size_t objectCount() const { return entries.size() - 1; }
    [[nodiscard]] const reader::Object* object(Number number) const { return entries[number].object; }
    [[nodiscard]] Number numberOf(const reader::Object* object) const;
    [[nodiscard]] Category category(Number number) const { return entries[number].category; }
    /// The element around it.
    [[nodiscard]] Number owner(Number number) const { return entries[number].owner; }
    /// The diagram that it is in or is.
    [[nodiscard]] Number diagram(Number number) const { return entries[number].diagram; }
    /// The names of the elements around an element and its own: `Logical View::Orders::Item::price`. Those without
    /// names are left out. Empty when it has no name, is the model, or its name is longer than `longestName`.
    [[nodiscard]] std::string qualifiedName(Number number) const;
    static constexpr std::size_t longestName = 1000;

private:
    friend class ElementsVisitor;

    struct Entry {
        const reader::Object* object = nullptr;
        Number owner = 0;
        Number diagram = 0;
        Category category = Category::none;
    };

    std::vector<Entry> entries;
    std::unordered_map<const reader::Object*, Number> numbers;
};

} // namespace dump
