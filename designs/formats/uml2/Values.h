#pragma once

#include "designs/formats/shared/Xml.h"
#include "designs/model/Design.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

/// Values of UML trees in XMI, each as an attribute or as a child element.
namespace design::uml2 {

/// The elements of a file by identifier.
using Index = std::unordered_map<std::string_view, pugi::xml_node>;

/// The text of a value such as a default.
[[nodiscard]] std::string valueText(pugi::xml_node value, const Index& index);

/// From `lowerValue` and `upperValue` or the attributes `lower` and `upper`; none where the file tells none.
[[nodiscard]] std::optional<Multiplicity> multiplicity(pugi::xml_node node, const Index& index);

/// What an annotation for Eclipse's code generator documents.
[[nodiscard]] std::string_view generatorDocumentation(pugi::xml_node node);

} // namespace design::uml2
