#pragma once

#include "designs/formats/drawn/Coverage.h"
#include "designs/formats/drawn/Groups.h"
#include "designs/formats/Format.h"

#include <string>
#include <string_view>

namespace design::plantuml {

/// What the texts of all diagrams of a design have in common.
struct Common {
    const Writing& writing;
    const Homes& homes;
    Coverage& coverage;
    Report& report;
};

/// The lines of a diagram of classes or use cases that lies in that package, between `@startuml` and `@enduml`.
[[nodiscard]] std::string textOf(const Diagram& diagram, const Package& owner, const Common& common);

} // namespace design::plantuml
