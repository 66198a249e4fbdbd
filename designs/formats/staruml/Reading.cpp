#include "designs/formats/staruml/Reading.h"

#include "designs/model/Texts.h"
#include "text/Words.h"

#include <utility>

namespace design::staruml {

namespace {

// The host has no tagged values; they stay readable as lines of the documentation. Those that name a tool are that
// tool's properties.
void readTag(const Object& tag, Element& element)
{
    constexpr std::string_view separator = "::";
    const std::string_view name = nameOf(tag);
    std::string_view text;
    const std::size_t at = name.find(separator);
    if (at != std::string_view::npos && at > 0 && tag["value"].get(text) == simdjson::SUCCESS) {
        element.properties.push_back(
            {std::string(name.substr(0, at)), std::string(name.substr(at + separator.size())), std::string(text)});
        return;
    }
    std::string line("{");
    line += nameOf(tag);
    json::Value value;
    if (tag["value"].get(value) == simdjson::SUCCESS && !value.is_null())
        line.append(" = ").append(value.is_string() ? std::string(json::text(tag, "value")) : simdjson::minify(value));
    addLine(element.documentation, line + "}");
}

} // namespace

std::string_view typeOf(const Object& object)
{
    return json::text(object, "_type");
}

std::string_view idOf(const Object& object)
{
    return json::text(object, "_id");
}

std::string_view nameOf(const Object& object)
{
    return json::text(object, "name");
}

std::string_view referenceIn(const Object& object, std::string_view key)
{
    Object reference;
    return object[key].get(reference) == simdjson::SUCCESS ? json::text(reference, "$ref") : std::string_view();
}

std::string_view textOfConstraint(const Object& constraint)
{
    const std::string_view text = json::text(constraint, "specification");
    return text.empty() ? nameOf(constraint) : text;
}

Reading::Reading(json::Value root, Report& theReport) : report(theReport)
{
    add(root);
}

void Reading::add(json::Value value)
{
    Object object;
    json::List list;
    if (value.get(object) == simdjson::SUCCESS) {
        const std::string_view type = typeOf(object);
        const std::string_view id = idOf(object);
        if (!id.empty() && objects.emplace(id, object).second && !type.ends_with("View") && !isPackage(type) &&
            !classifierOf(type) && !isRelation(type))
            kinds.emplace(id, type);
        if (type == "UMLAssociationClassLink")
            associationClasses.emplace(referenceIn(object, "associationSide"), referenceIn(object, "classSide"));
        for (const auto& member : object)
            add(member.value);
    } else if (value.get(list) == simdjson::SUCCESS) {
        for (const json::Value item : list)
            add(item);
    }
}

const Object* Reading::find(std::string_view id) const
{
    const auto found = objects.find(id);
    return found == objects.end() ? nullptr : &found->second;
}

Reference Reading::referenceTo(std::string_view id) const
{
    const Object* const object = find(id);
    return {std::string(id), std::string(object ? nameOf(*object) : std::string_view())};
}

std::string_view Reading::associationClassOf(std::string_view associationId) const
{
    const auto found = associationClasses.find(associationId);
    return found == associationClasses.end() ? std::string_view() : found->second;
}

void Reading::describe(const Object& object, Element& element, Package& package) const
{
    element.id = idOf(object);
    element.name = nameOf(object);
    element.documentation = json::text(object, "documentation");
    if (const std::string_view id = referenceIn(object, "stereotype"); !id.empty())
        element.stereotype = referenceTo(id).name;
    else
        element.stereotype = text::trimmed(json::text(object, "stereotype"));
    json::forEach(object, "tags", [&](const Object& tag) { readTag(tag, element); });
    json::forEach(object, "ownedElements", [&](const Object& owned) {
        if (typeOf(owned) == "UMLConstraint")
            readConstraint(owned, element, package);
    });
}

void Reading::readConstraint(const Object& constraint, Element& owner, Package& package) const
{
    Remark remark;
    remark.id = idOf(constraint);
    remark.text = textOfConstraint(constraint);
    remark.isConstraint = true;
    if (remark.text.empty())
        return;
    json::forEach(constraint, "constrainedElements",
                  [&](const Object& reference) { remark.elementIds.emplace_back(json::text(reference, "$ref")); });
    if (remark.elementIds.empty())
        owner.constraints.push_back(std::move(remark.text));
    else
        package.remarks.push_back(std::move(remark));
}

void Reading::leave(const Object& object) const
{
    const std::string_view type = typeOf(object);
    report.left(type, idOf(object), nameOf(object), type.ends_with("Diagram") ? classDiagramsOnly : nothingOfThisKind);
    json::forEach(object, "ownedElements", [&](const Object& owned) { leave(owned); });
}

} // namespace design::staruml
