#pragma once

#include "compare/changes/Changes.h"

#include <vector>

namespace compare {

/// Appends what is different in the pictures of two diagrams that are paired.
void compareViews(const Comparison& states, std::uint32_t old, std::uint32_t fresh, std::vector<Change>& changes);

/// What a view of a diagram shows, in words: "Order", `note "Prices are..."`, "association Order -- Item".
[[nodiscard]] std::string viewName(const Snapshot& state, const reader::Object& view);

/// Whether a view is a line between others, and which.
[[nodiscard]] bool isLine(const reader::Object& view);

/// The bends of a line as a text: its points but the ends, and without those that lie on their way.
[[nodiscard]] std::string courseOf(const reader::Object& view);

/// The views in the list of a diagram, without those that only hold others together.
[[nodiscard]] std::vector<const reader::Object*> viewsOf(const reader::Object& diagram);

/// Whether a tool chooses the size of a view.
[[nodiscard]] bool sizesItself(const reader::Object& view);

/// What somebody has chosen for the looks of a view.
inline constexpr std::string_view lookKeys[] = {
    "ShowCompartmentStereotypes",
    "ShowOperationSignature",
    "SuppressAttribute",
    "SuppressOperation",
    "fill_color",
    "icon_style",
    "line_color",
};

} // namespace compare
