#include "compare/facts/Labels.h"

#include "compare/facts/Values.h"
#include "reader/index/Kinds.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace compare {

using reader::Object;

namespace {

constexpr std::pair<std::string_view, std::string_view> words[] = {
    {"AssociationClass", "association class"},
    {"Containment", "containment"},
    {"client_cardinality", "multiplicity"},
    {"cardinality", "multiplicity"},
    {"exportControl", "visibility"},
    {"fill_color", "fill colour"},
    {"icon_style", "icon"},
    {"initv", "initial value"},
    {"is_aggregate", "aggregate"},
    {"is_navigable", "navigable"},
    {"line_color", "line colour"},
    {"opExportControl", "visibility"},
    {"supplier", "target"},
};

void appendText(std::string& text, std::string_view sign, const std::string& value)
{
    if (!value.empty())
        text.append(sign).append(value);
}

std::string valueOf(const Object& object, std::string_view key)
{
    std::string text;
    appendValue(text, object.get(key));
    return text;
}

// What a relation leads to.
std::string targetOf(const Snapshot& state, const Object& object)
{
    if (const Object* const element = state.index().element(object).element)
        return nameOf(*element);
    for (const std::string_view key : {"supplier", "class"})
        if (object.has(key))
            return std::string(lastPart(object.text(key)));
    return {};
}

std::string endsOf(const Snapshot& state, const Object& association)
{
    std::string ends;
    for (const Object* const role : association.objects("roles"))
        ends.append(ends.empty() ? "" : " -- ").append(targetOf(state, *role));
    return ends;
}

std::string parametersOf(const Object& operation, bool withTypes)
{
    std::string text;
    for (const Object* const parameter : operation.objects("parameters")) {
        text.append(text.empty() ? "" : ", ").append(parameter->name());
        if (withTypes)
            appendText(text, " : ", valueOf(*parameter, "type"));
    }
    return text;
}

bool leadsSomewhere(const Object& object)
{
    const bool isRelation = reader::elementKindOf(object) == reader::ElementKind::relation;
    return (isRelation && !object.is("Association")) || object.is("Role", "Link");
}

std::string labelOf(const Snapshot& state, const Object& object, bool isWhole)
{
    std::string text(kindWord(object));
    const std::string name = nameOf(object);
    appendText(text, " ", name);
    if (object.is("Operation"))
        text.append("(").append(parametersOf(object, isWhole)).append(")");
    if (object.is("Association") && (isWhole || name.empty()))
        text.append(" (").append(endsOf(state, object)).append(")");
    if (leadsSomewhere(object) && (isWhole || name.empty()))
        appendText(text, " to ", targetOf(state, object));
    if (object.is("Object"))
        appendText(text, " : ", targetOf(state, object));
    return text;
}

} // namespace

std::string_view kindWord(const Object& object)
{
    if (isDiagram(object))
        return "diagram";
    const reader::KnownKind* const kind = reader::knownKindOf(object);
    return kind && !kind->word.empty() ? kind->word : object.kind();
}

std::string_view wordFor(std::string_view key)
{
    const auto* const row =
        std::find_if(std::begin(words), std::end(words), [&](const auto& each) { return each.first == key; });
    return row == std::end(words) ? key : row->second;
}

std::string headlineOf(const Snapshot& state, const Object& object)
{
    return labelOf(state, object, false);
}

std::string descriptionOf(const Snapshot& state, const Object& object)
{
    std::string text = labelOf(state, object, true);
    if (object.is("Operation"))
        appendText(text, " : ", valueOf(object, "result"));
    if (object.is("ClassAttribute", "Parameter"))
        appendText(text, " : ", valueOf(object, "type"));
    appendText(text, " = ", valueOf(object, "initv"));
    const std::string stereotype = object.text("stereotype");
    return stereotype.empty() ? text : text + " <<" + stereotype + ">>";
}

} // namespace compare
