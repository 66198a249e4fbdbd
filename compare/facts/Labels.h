#pragma once

#include "compare/facts/Snapshot.h"

#include <string>
#include <string_view>

namespace compare {

/// "class", "attribute", "diagram"; the keyword for what is not known.
[[nodiscard]] std::string_view kindWord(const reader::Object& object);

/// What a fact is called: "visibility" for `exportControl`; most are called by their keys.
[[nodiscard]] std::string_view wordFor(std::string_view key);

/// Kind and name: "class Order", "operation pay(amount)", "generalization to Item".
[[nodiscard]] std::string headlineOf(const Snapshot& state, const reader::Object& object);

/// The same with what is most worth knowing of something new: "attribute total : Money = 0".
[[nodiscard]] std::string descriptionOf(const Snapshot& state, const reader::Object& object);

} // namespace compare
