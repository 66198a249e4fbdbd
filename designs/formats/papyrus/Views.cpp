#include "designs/formats/papyrus/Views.h"

#include "designs/model/Walk.h"

#include <cmath>

namespace design::papyrus {

Notation::Notation(const Writing& theWriting, const uml2::Writer& theModel, text::Sink& sink, Report& theReport)
    : writing(theWriting), model(theModel), report(theReport),
      xml(sink, R"(<?xml version="1.0" encoding="UTF-8"?>)", "  ")
{
    forEachPackage(writing.design.root, [this](const Package& package) {
        for (const Diagram& diagram : package.diagrams)
            diagramIds.insert(uml2::xmlIdentifier(diagram.id));
    });
}

std::string Notation::newId()
{
    std::string id;
    do
        id = diagramId + "-" + std::to_string(++last);
    while (diagramIds.contains(id));
    return id;
}

View::View(Notation& notation, const char* name, std::string_view type, std::string_view kind)
    : viewId(notation.newId()), element(notation.xml, name)
{
    element.with("xmi:type", type).with("xmi:id", viewId).withSome("type", kind);
}

void writePart(Notation& notation, const char* name, std::string_view type, std::string_view kind)
{
    const View part(notation, name, type, kind);
}

void writeElement(Notation& notation, const char* name, std::string_view type, std::string_view id)
{
    xml::Element(notation.xml, name).with("xmi:type", type).with("href", (notation.writing.stem + ".uml#").append(id));
}

void writeLocation(Notation& notation, int y)
{
    View(notation, "layoutConstraint", "notation:Location").with("y", std::to_string(y));
}

void writeFont(View& view, const Appearance& appearance)
{
    if (!appearance.fontName.empty())
        view.with("fontName", appearance.fontName);
    if (appearance.fontSize >= 1)
        view.with("fontHeight", numberText(appearance.fontSize));
    writeColour(view, "fontColor", appearance.fontColor);
}

// Blue in the high byte.
void writeColour(View& view, std::string_view key, const std::optional<std::uint32_t>& colour)
{
    constexpr std::uint32_t byte = 0xFF;
    if (colour)
        view.with(key, std::to_string((*colour & byte) << 16U | (*colour & byte << 8U) | *colour >> 16U));
}

std::string numberText(double number)
{
    return std::to_string(std::lround(number));
}

} // namespace design::papyrus
