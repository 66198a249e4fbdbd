#pragma once

#include "designs/formats/staruml/Write.h"

#include <array>
#include <string>
#include <string_view>

namespace design::staruml {

/// How a view and the labels in it look, as the file has it.
struct Style {
    explicit Style(const Appearance& appearance);

    std::string lineColor;
    std::string fillColor;
    std::string fontColor;
    std::string font; ///< "Arial;13;", to which the style is added
};

/// A label of a line, where it stands: beside the tail, the middle or the head.
struct EdgeLabel {
    std::string_view key;
    int position = 1;
    std::string_view angle;
    int distance = 0;
    std::string text = {};
    std::string model = {};
};

/// Whole numbers, as the tool keeps them, so that what is drawn at a place is there in the next round, too.
[[nodiscard]] Rectangle wholePixels(const std::optional<Rectangle>& bounds);

/// Opens a view with what it shows; nothing if `model` is empty.
void beginView(Output& output, std::string_view type, std::string_view id, std::string_view parent,
               std::string_view model);
/// What all views say of how they look; `fontStyle` is 1 for bold, 2 for italic, 3 for both.
void writeStyle(Output& output, const Style& style, bool isVisible, int fontStyle = 0);
void writeBounds(Output& output, const Rectangle& bounds);

// Each writes a view into the list that is open.

void writeBox(Output& output, const Box& box, std::string_view id, std::string_view diagram);

void writeNote(Output& output, std::string_view text, const Rectangle& bounds, std::string_view id,
               std::string_view diagram);

/// What a line joins, by the identifiers of views, and the way between them ("0:0;10:0").
struct Edge {
    std::string_view type;
    std::string_view id;
    std::string_view model;
    std::string_view tail;
    std::string_view head;
    std::string points;
};

/// A line with labels: an association's has one for each of its ends, too.
void writeEdge(Output& output, const Edge& edge, const Appearance& appearance, std::string_view diagram);
/// A line without any, such as that of a note.
void writePlainEdge(Output& output, const Edge& edge, std::string_view diagram);

} // namespace design::staruml
