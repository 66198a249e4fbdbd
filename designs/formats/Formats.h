#pragma once

#include "designs/formats/Format.h"

#include <span>

namespace design {

/// All formats, in the order in which they are asked whether a file is theirs.
[[nodiscard]] std::span<const Format> formats();

/// The format whose name is given, or null.
[[nodiscard]] const Format* formatNamed(std::string_view name);

/// The format that goes out into files with that ending, or null: one whose usual ending it is, or else one that has
/// it, too.
[[nodiscard]] const Format* formatWrittenTo(std::string_view fileName);

/// The format that the content is of, or null when it is of none.
[[nodiscard]] const Format* formatOf(const Source& source);

[[nodiscard]] Format starUmlFormat();
[[nodiscard]] Format enterpriseArchitectFormat();
/// The diagrams lie in a file beside the model.
[[nodiscard]] Format papyrusFormat();
/// Its forms of XMI 1.2 and 2.1, with the diagrams in an extension; other UML 1.x in XMI 1.2 too.
[[nodiscard]] Format umbrelloFormat();
/// UML 2 of any other tool.
[[nodiscard]] Format xmiFormat();
[[nodiscard]] Format ecoreFormat();
/// Models and controlled units of Rose, of all versions.
[[nodiscard]] Format roseFormat();
/// The texts of PlantUML, a diagram each. Only goes out.
[[nodiscard]] Format plantUmlFormat();
/// The texts of Mermaid, a file for each diagram. Only goes out.
[[nodiscard]] Format mermaidFormat();

} // namespace design
