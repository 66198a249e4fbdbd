#pragma once

#include "designs/model/Design.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Pieces of text that several formats write alike.

namespace design {

/// "1", "0..*", "1..n", "*", with or without brackets and blanks. The numbers of a text that is none of these are those
/// of "0..*", and `text` keeps it. Empty text: none.
[[nodiscard]] std::optional<Multiplicity> parseMultiplicity(std::string_view text);

/// As diagrams show it: "1", "0..1", "*", or the text of the file.
[[nodiscard]] std::string textOf(const Multiplicity& multiplicity);

/// "#rrggbb" or "#rgb"; none for anything else.
[[nodiscard]] std::optional<std::uint32_t> parseColour(std::string_view text);

/// What a relation is called, in model files and in messages.
[[nodiscard]] std::string_view nameOf(RelationshipKind kind);

/// Adds a word to a list such as the stereotypes of an element, which are joined with ", ", unless it is there.
void addWord(std::string& list, std::string_view word);

/// Adds a line to a text such as the documentation of an element; an empty one adds nothing.
void addLine(std::string& text, std::string_view line);

/// What Rose files call classifiers that are no plain classes, where they have no stereotype of their own; empty for
/// classes.
[[nodiscard]] std::string_view stereotypeFor(ClassifierKind kind);

/// What a classifier with that stereotype is in a Rose file, in small or large letters.
[[nodiscard]] ClassifierKind kindFor(std::string_view stereotype);

} // namespace design
