#pragma once

#include "browse/Elements.h"
#include "text/JsonWriter.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace browse {

inline constexpr text::JsonLayout pageLayout = {.isDense = true, .isInPage = true};

/// Writes what the sheet of an element shows as members of the JSON object that is open:
///
///     "stereotype": "entity", "documentation": "...", "visibility": "+",
///     "type": ["Money", 17],                             the text and the place of the element, or -1
///     "value": "0",
///     "parameters": [["amount", "Money", 17, "0", "..."]],  name, type, its element, default, documentation
///     "to": ["Order", 12, 0],                            and why it leads nowhere: a reader::ReferenceState
///     "ends": [["owner", "1", "Customer", 9, 0, "navigable", "..."]],
///     "properties": 3,                                   the place in `shared` of: [["Visibility", "Public"]]
///     "tools": 4                                         and of: [["Java", [["final", "FALSE"]]]]
class Sheets {
public:
    Sheets(const reader::Document& document, const reader::Index& index, const Elements& elements)
        : document(document), index(index), elements(elements)
    {
    }

    void write(text::JsonWriter& json, const Element& element);
    /// The lists that elements have in common, as members of the list that is open. Written when all sheets are.
    void writeShared(text::JsonWriter& json) const;

private:
    void writeTexts(text::JsonWriter& json, const reader::Object& object) const;
    void writeFeature(text::JsonWriter& json, const reader::Object& object) const;
    void writeParameters(text::JsonWriter& json, const reader::Object& object) const;
    void writeTarget(text::JsonWriter& json, const Element& element) const;
    void writeEnds(text::JsonWriter& json, const reader::Object& association) const;
    void writeEnd(text::JsonWriter& json, const reader::Object& role) const;
    void writeUnit(text::JsonWriter& json, const reader::Object& object) const;
    void writePlaceOf(text::JsonWriter& json, std::string_view key, const std::string& list);
    [[nodiscard]] std::int64_t placeOf(const reader::Reference& reference) const;
    [[nodiscard]] reader::Reference typeOf(const reader::Object& object, const std::string& type) const;

    const reader::Document& document;
    const reader::Index& index;
    const Elements& elements;
    std::unordered_map<std::string, std::size_t> sharedPlaces; // by JSON
    std::vector<const std::string*> shared;
};

} // namespace browse
