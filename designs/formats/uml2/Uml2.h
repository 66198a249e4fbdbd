#pragma once

#include "designs/formats/shared/Xml.h"
#include "designs/formats/uml2/Outside.h"
#include "designs/model/Design.h"
#include "designs/model/Report.h"

#include <string>
#include <string_view>

/// UML 2 models in XMI 2.x, the part that all tools share. What a tool keeps beside the model (documentation, diagrams)
/// its own reader adds to the design.
namespace design::uml2 {

/// What the source of an annotation begins with that holds the properties of a tool.
inline constexpr std::string_view ofTool = "tool:";

/// Whether the start of a file has a UML 2 model in it.
[[nodiscard]] bool hasModel(std::string_view head);

[[nodiscard]] Design read(const xml::Document& document, Outside& outside, Report& report);

/// Identifier of the association in an association class, whose own identifier is the class's.
[[nodiscard]] std::string associationOf(std::string_view associationClassId);

} // namespace design::uml2
