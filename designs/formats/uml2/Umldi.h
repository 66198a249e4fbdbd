#pragma once

#include "designs/formats/shared/Drawing.h"
#include "designs/formats/shared/Xml.h"
#include "designs/model/Report.h"

#include <string>
#include <vector>

/// Diagrams in UMLDI, the form of exchange that XMI has for them.
namespace design::umldi {

struct OwnedDiagram {
    Diagram diagram;
    std::string packageId;
};

/// Adds the names that boxes show, which is all that a file tells of elements outside of it.
void readNames(pugi::xml_node root, TextsById& names);

/// The class diagrams of a document; others are told to `report`.
[[nodiscard]] std::vector<OwnedDiagram> read(pugi::xml_node root, const Drawing& drawing, Report& report);

} // namespace design::umldi
