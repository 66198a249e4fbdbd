#pragma once

#include "designs/model/Design.h"

#include <pugixml.hpp>

#include <optional>
#include <string_view>
#include <vector>

/// Where XMI 1.x keeps the parts and properties of an element.
namespace design::uml1 {

/// The children of "UML:Classifier.feature" and the like, by what follows the dot.
[[nodiscard]] std::vector<pugi::xml_node> parts(pugi::xml_node node, std::string_view role);

/// An attribute, or the text or the reference in an element such as "UML:ModelElement.name".
[[nodiscard]] std::string_view value(pugi::xml_node node, const char* role);

[[nodiscard]] std::optional<Multiplicity> multiplicity(pugi::xml_node node);

} // namespace design::uml1
