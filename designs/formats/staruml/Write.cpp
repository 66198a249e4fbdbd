#include "designs/formats/staruml/Write.h"

#include "designs/model/Walk.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace design::staruml {

namespace {

// A line a value, so that versions of a file can be compared. Views lie so deep that blanks would be half of the file.
constexpr text::JsonLayout layout = {.deepestLine = std::numeric_limits<int>::max(), .indentation = 0};

constexpr std::string_view newPrefix = "petal-"; // of identifiers that are made here

} // namespace

Output::Output(const Writing& theWriting, text::Sink& sink, Report& theReport)
    : writing(theWriting), report(theReport), tail(sink), json(tail.text(), layout)
{
    forEachElement(writing.design.root, [&](const Element& element) {
        if (element.id.starts_with(newPrefix))
            taken.insert(element.id);
    });
}

std::string Output::newId()
{
    std::string id;
    do
        id = std::string(newPrefix).append(std::to_string(++last));
    while (taken.contains(id));
    return id;
}

std::string Output::idOf(const Element& element)
{
    if (!element.id.empty())
        return element.id;
    std::string& id = madeIds[&element];
    if (id.empty())
        id = newId();
    return id;
}

const std::string& Output::classLinkOf(const Association& association)
{
    std::string& id = classLinks[&association];
    if (id.empty())
        id = newId();
    return id;
}

void Output::begin(std::string_view type, std::string_view id, std::string_view parent)
{
    json.beginObject().member("_type", type).member("_id", id);
    if (!parent.empty())
        reference("_parent", parent);
}

std::string Output::begin(std::string_view type, const Element& element, std::string_view parent)
{
    std::string id = idOf(element);
    begin(type, id, parent);
    textIfAny("name", element.name);
    textIfAny("documentation", element.documentation);
    if (element.properties.empty())
        return id;
    json.beginList("tags");
    for (const Property& property : element.properties) {
        begin("Tag", newId(), id);
        json.member("name", property.tool + "::" + property.name).member("kind", "string");
        json.member("value", property.value);
        end();
    }
    json.endList();
    return id;
}

void Output::end()
{
    json.endObject();
    tail.passOnWhenLong();
}

void Output::reference(std::string_view key, std::string_view id)
{
    json.beginObject(key).member("$ref", id).endObject();
}

void Output::textIfAny(std::string_view key, std::string_view text)
{
    if (!text.empty())
        json.member(key, text);
}

void Output::number(std::string_view key, double value)
{
    json.member(key, static_cast<std::int64_t>(std::llround(value)));
}

void Output::constraint(std::string_view text, std::string_view parent)
{
    begin("UMLConstraint", newId(), parent);
    json.member("specification", text);
    end();
}

void Output::constraints(const Element& element, std::string_view id, std::initializer_list<std::string_view> flags)
{
    for (const std::string& text : element.constraints)
        if (std::find(flags.begin(), flags.end(), text) == flags.end())
            constraint(text, id);
}

void Output::ownedConstraints(const Element& element, std::string_view id,
                              std::initializer_list<std::string_view> flags)
{
    const auto isFlag = [&](const std::string& text) {
        return std::find(flags.begin(), flags.end(), text) != flags.end();
    };
    if (std::all_of(element.constraints.begin(), element.constraints.end(), isFlag))
        return;
    json.beginList("ownedElements");
    constraints(element, id, flags);
    json.endList();
}

void Output::leave(std::string_view property, const Element& element) const
{
    report.left(property, element.id, element.name, hasNone);
}

void Output::leaveNotes(const Element& element) const
{
    for (const std::string& note : element.notes)
        report.left("note", element.id, note, "StarUML has notes in diagrams only, and none shows the element");
}

std::string_view wordFor(Visibility visibility)
{
    switch (visibility) {
    case Visibility::Protected:
        return "protected";
    case Visibility::Private:
        return "private";
    case Visibility::Package:
        return "package";
    case Visibility::Public:
        break;
    }
    return "public";
}

bool hasConstraint(const Element& element, std::string_view flag)
{
    return std::find(element.constraints.begin(), element.constraints.end(), flag) != element.constraints.end();
}

} // namespace design::staruml
