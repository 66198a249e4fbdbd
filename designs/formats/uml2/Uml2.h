#pragma once

#include "designs/formats/shared/Xml.h"
#include "designs/formats/uml2/Uml2Values.h"
#include "designs/model/Design.h"
#include "designs/model/Report.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// UML 2 models in XMI 2.x, the part that all tools share. What a tool keeps beside the model (documentation, diagrams)
/// its own reader adds between `read` and `finish`.
namespace design::uml2 {

/// A text that belongs to an element which may stand anywhere in the file.
struct Remark {
    std::string elementId;
    std::string text;
    std::string packageId; ///< where the text stands
};

struct Model {
    Design design;
    std::unordered_map<std::string, std::string> kinds; ///< what each identifier of the file names, e.g. "Class"
    std::vector<Remark> notes;
    std::vector<Remark> constraints;
    std::unordered_map<std::string, std::string> stereotypes; ///< applied to the element of that identifier
    Names outsideNames; ///< of elements that are not in the file, as far as it tells them
};

/// Whether the start of a file has a UML 2 model in it.
[[nodiscard]] bool hasModel(std::string_view head);

[[nodiscard]] Model read(const xml::Document& document, Outside& outside, Report& report);

/// Gives notes, constraints and stereotypes to their elements and leaves out relations and boxes whose elements were
/// not taken.
[[nodiscard]] Design finish(Model model, Report& report);

/// Identifier of the association in an association class, whose own identifier is the class's.
[[nodiscard]] std::string associationOf(std::string_view associationClassId);

/// "StateMachine" as "state machine".
[[nodiscard]] std::string plainWords(std::string_view type);

} // namespace design::uml2
