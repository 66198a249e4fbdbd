#pragma once

#include "designs/formats/ea/Extension.h"
#include "designs/model/Report.h"

namespace design::ea {

/// Puts the class diagrams of the Extension into the packages that own them; others are told to `report`.
void readDiagrams(pugi::xml_node root, pugi::xml_node extensionNode, const Extension& extension, Design& design,
                  Report& report);

} // namespace design::ea
