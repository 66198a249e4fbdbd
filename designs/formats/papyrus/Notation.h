#pragma once

#include "designs/formats/uml2/Outside.h"
#include "designs/model/Design.h"
#include "designs/model/Report.h"

#include <pugixml.hpp>

namespace design::papyrus {

/// Puts the class diagrams of a notation into the packages that they are drawn for. Other diagrams go into the report.
void readDiagrams(pugi::xml_node root, Design& design, uml2::Outside& outside, Report& report);

} // namespace design::papyrus
