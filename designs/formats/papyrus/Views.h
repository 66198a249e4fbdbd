#pragma once

#include "designs/formats/Format.h"
#include "designs/formats/shared/XmlText.h"
#include "designs/formats/uml2/write/Writer.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

/// Writes the file of diagrams that stands beside a model: a view for each thing that is drawn.
namespace design::papyrus {

/// What the writers of all views share.
struct Notation {
    Notation(const Writing& theWriting, const uml2::Writer& theModel, text::Sink& sink, Report& theReport);

    /// An identifier that nothing in the file has.
    [[nodiscard]] std::string newId();

    const Writing& writing;
    const uml2::Writer& model;
    Report& report;
    xml::Text xml;
    std::string diagramId; ///< of the diagram that is written; those of its views begin with it

    /// A box that lines may end at.
    struct Place {
        std::string view;
        Rectangle bounds;
    };
    std::unordered_map<std::string_view, Place> places; ///< of the diagram, by element

private:
    std::unordered_set<std::string> diagramIds;
    std::size_t last = 0;
};

/// A view or a part of one, from its start to the end of the block or statement.
class View {
public:
    /// `kind` is what the tool calls it, e.g. "Class_NameLabel"; parts have none.
    View(Notation& notation, const char* name, std::string_view type, std::string_view kind = {});

    [[nodiscard]] const std::string& id() const { return viewId; }
    View& with(std::string_view attribute, std::string_view value)
    {
        element.with(attribute, value);
        return *this;
    }

private:
    std::string viewId;
    xml::Element element;
};

/// A part that says nothing but what it is.
void writePart(Notation& notation, const char* name, std::string_view type, std::string_view kind = {});

/// <element xmi:type="uml:Class" href="shop.uml#_1"/>, the element that a view shows.
void writeElement(Notation& notation, const char* name, std::string_view type, std::string_view id);

/// <layoutConstraint xmi:type="notation:Location" x="0" y="20"/>
void writeLocation(Notation& notation, int y);

void writeFont(View& view, const Appearance& appearance);
void writeColour(View& view, std::string_view key, const std::optional<std::uint32_t>& colour);
/// As the file has it: whole pixels.
[[nodiscard]] std::string numberText(double number);

// Each writes a view of the diagram that is open.

void writeShape(Notation& notation, const Box& box);
void writeEdge(Notation& notation, const Line& line);

} // namespace design::papyrus
