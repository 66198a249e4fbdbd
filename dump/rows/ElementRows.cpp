#include "dump/rows/ElementRows.h"

#include "dump/facts/Targets.h"
#include "dump/rows/Relations.h"
#include "reader/index/Kinds.h"

namespace dump {

using reader::Object;

namespace {

// The first of the texts behind these keys; operations and attributes call alike things by other names.
template <typename... Keys>
std::string firstText(const Object& object, const Keys&... keys)
{
    std::string result;
    static_cast<void>(((result = object.text(keys), !result.empty()) || ...));
    return result;
}

Elements::Number viewBehind(const Source& source, Elements::Number view, std::string_view key)
{
    const auto number = source.elements.object(view)->get(key).asReference();
    return number ? source.elements.numberOf(viewMeant(source, view, *number)) : 0;
}

// What a view calls its element, in full if it does.
std::string nameGiven(const Object& view)
{
    return view.names().size() > 1 ? view.lastName() : std::string();
}

// What is written on a view, which may have an object for it.
std::string labelOf(const Object& view)
{
    const Object* const label = view.object("label");
    return (label ? *label : view).text("label");
}

} // namespace

void addElement(const Source& source, Elements::Number element, const Extent& extent, Row& row, const RowSink& sink)
{
    const Object& object = *source.elements.object(element);
    std::string name = object.name();
    row.number(element).object(source.elements.owner(element));
    row.text(nameOf(source.elements.category(element))).nonEmpty(kindWordOf(object)).text(object.kind());
    row.nonEmpty(reader::isUnnamed(name) ? std::string() : std::move(name));
    row.nonEmpty(source.elements.qualifiedName(element)).nonEmpty(object.text("quid"));
    row.nonEmpty(object.text("stereotype")).nonEmpty(object.text("documentation"));
    row.nonEmpty(firstText(object, "exportControl", "opExportControl"));
    row.nonEmpty(firstText(object, "type", "result"));
    row.number(extent.file).number(extent.line);
    row.give(sink, TableName::elements);
    addRelations(source, element, extent, row, sink);
}

void addView(const Source& source, Elements::Number view, Elements::Number container, const Extent& extent, Row& row,
             const RowSink& sink)
{
    const Elements& elements = source.elements;
    const Object& object = *elements.object(view);
    const Elements::Number diagram = elements.diagram(view);
    const Target shown = targetOf(source.index.element(object), elements);
    std::string name = elements.qualifiedName(shown.object);
    const auto place = object.get("location").asPoint();
    const auto number = object.viewNumber();
    row.number(view).number(diagram).nonEmpty(elements.qualifiedName(diagram)).number(container);
    row.text(object.kind());
    number ? row.number(*number) : row.none();
    row.object(shown.object).nonEmpty(name.empty() ? nameGiven(object) : std::move(name)).text(shown.state);
    row.nonEmpty(labelOf(object));
    row.real(place ? std::optional(place->x) : std::nullopt).real(place ? std::optional(place->y) : std::nullopt);
    row.real(object.get("width").asNumber()).real(object.get("height").asNumber());
    row.object(viewBehind(source, view, "client")).object(viewBehind(source, view, "supplier"));
    row.number(extent.file).number(extent.line);
    row.give(sink, TableName::views);
}

} // namespace dump
