#pragma once

#include "designs/formats/drawn/OtherDiagrams.h"
#include "designs/formats/Format.h"

#include <string>
#include <string_view>

namespace design::plantuml {

/// The lines of a diagram of classes or use cases that lies in that package, between `@startuml` and `@enduml`.
[[nodiscard]] std::string textOf(const Diagram& diagram, const Package& owner, const Common& common);

} // namespace design::plantuml
