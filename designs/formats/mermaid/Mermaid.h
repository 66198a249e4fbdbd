#pragma once

#include "designs/formats/drawn/OtherDiagrams.h"
#include "designs/formats/rose/DrawnDiagram.h"

#include <string>

namespace design::mermaid {

/// The whole text of a class diagram that lies in that package.
[[nodiscard]] std::string textOf(const Diagram& diagram, const Package& owner, const Common& common);

/// A whole text for a sequence, state or activity diagram; empty for other kinds.
[[nodiscard]] std::string textOf(const rose::DrawnDiagram& diagram);

[[nodiscard]] std::string sequenceOf(const rose::DrawnDiagram& diagram);
[[nodiscard]] std::string statesOf(const rose::DrawnDiagram& diagram);

} // namespace design::mermaid
