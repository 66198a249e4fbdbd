#pragma once

#include "designs/formats/shared/Xml.h"
#include "designs/model/Design.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// What Enterprise Architect keeps beside the UML tree, in an element `Extension`.
namespace design::ea {

/// What it says about one element.
struct Details {
    std::string documentation;
    std::string stereotype;
    std::string typeName; ///< of an attribute or a parameter
    std::string containment;
    std::string concurrency;
    bool isVirtual = false;
    Appearance appearance;
    std::vector<Property> properties;
};

struct Extension {
    std::unordered_map<std::string, Details> details;           ///< of elements, features and connectors
    std::unordered_map<std::string, pugi::xml_node> connectors; ///< by identifier of the relation
    TextsById associationClasses;                               ///< by identifier of the connector
    TextsById typeNames;                                        ///< of types that are no element
    TextsById packages; ///< by identifier of the element that stands for one in diagrams
    TextsById proxied;  ///< lines, by identifier of the class that stands for one
    TextsById kinds;
    TextsById names;
};

[[nodiscard]] Extension readExtension(pugi::xml_node node);

/// Gives the elements of a design what only the Extension knows of them.
void complete(Design& design, const Extension& extension);

/// "BCol=16770764;" in a style; the tool's default, -1, is none.
[[nodiscard]] std::optional<std::uint32_t> colour(std::string_view style, std::string_view key);

/// The attribute of a child.
[[nodiscard]] std::string_view valueOf(pugi::xml_node node, const char* child, const char* attribute);

} // namespace design::ea
