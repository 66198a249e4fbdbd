#pragma once

#include "designs/formats/rose/DrawnDiagram.h"

#include <string>

namespace design::plantuml {

/// The lines of a diagram of another kind than class and use case, between `@startuml` and `@enduml`; empty for kinds
/// that PlantUML has not.
[[nodiscard]] std::string linesOf(const rose::DrawnDiagram& diagram);

// Each for some kinds.
[[nodiscard]] std::string sequenceOf(const rose::DrawnDiagram& diagram);
[[nodiscard]] std::string statesOf(const rose::DrawnDiagram& diagram);
/// Objects with their links, components, nodes.
[[nodiscard]] std::string figuresOf(const rose::DrawnDiagram& diagram);

} // namespace design::plantuml
