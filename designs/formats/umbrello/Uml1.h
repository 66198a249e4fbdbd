#pragma once

#include "designs/formats/shared/Xml.h"
#include "designs/formats/uml2/Uml2.h"
#include "designs/model/Report.h"

/// UML 1.x models in XMI 1.x: elements such as `UML:Class` whose parts stand in `UML:Classifier.feature` and the like.
namespace design::uml1 {

/// Whether the start of a file has a UML 1.x model in it.
[[nodiscard]] bool hasModel(std::string_view head);

/// In the same form as UML 2 models are read in, for `uml2::finish`.
[[nodiscard]] uml2::Model read(const xml::Document& document, Report& report);

} // namespace design::uml1
