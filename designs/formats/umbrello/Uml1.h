#pragma once

#include "designs/formats/shared/Xml.h"
#include "designs/model/Report.h"

/// UML 1.x models in XMI 1.x: elements such as `UML:Class` whose parts stand in `UML:Classifier.feature` and the like.
namespace design::uml1 {

/// Whether the start of a file has a UML 1.x model in it.
[[nodiscard]] bool hasModel(std::string_view head);

[[nodiscard]] Design read(const xml::Document& document, Report& report);

} // namespace design::uml1
