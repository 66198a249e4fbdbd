#pragma once

#include "reader/index/Kinds.h"
#include "reader/notation/Petal.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace browse {

/// Where an element stands among those beside it in the tree.
enum class Group : std::uint8_t { diagram, package, classifier, feature, behavior, relation };

/// What the page says about the objects of one kind.
struct Kind {
    std::string_view keyword;
    std::string word;          ///< "class", "use case" ...
    std::string_view icon;     ///< name of a symbol of the page
    std::string_view forward;  ///< "Uses": what leads from an element to the one that it refers to
    std::string_view backward; ///< "Used by"
    Group group = Group::classifier;
    bool isRelation = false; ///< it leads from the element that it stands in, not from itself
};

/// That of `object`, which has its keyword as its word if it is not known here.
[[nodiscard]] Kind kindOf(const reader::Object& object);

/// Whether `object` is shown by itself: in the tree, with a sheet and an address.
[[nodiscard]] bool isElement(const reader::Object& object);

/// What a key is called on a sheet; empty for those that say nothing to its reader.
[[nodiscard]] std::string labelOf(std::string_view key);

} // namespace browse
