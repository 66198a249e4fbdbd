#include "designs/formats/rose/Reading.h"

#include "reader/index/Exports.h"
#include "reader/index/Kinds.h"

#include <algorithm>
#include <cctype>

namespace design::rose {

namespace {

std::string withoutPath(std::string name)
{
    if (const std::size_t colons = name.rfind("::"); colons != std::string::npos)
        name.erase(0, colons + 2);
    return name;
}

std::string nameIn(const Object& from)
{
    for (const std::string_view key : {"supplier", "class"})
        if (std::string name = from.text(key); !name.empty() && !name.starts_with('@'))
            return name;
    return from.lastName();
}

} // namespace

Reading::Reading(const reader::Document& theDocument, Report& theReport)
    : index(theDocument), report(theReport), document(theDocument),
      isExport(reader::startsLikeAnExport(theDocument.text(theDocument.files().front())))
{
    if (!isExport)
        return;
    reader::forEachObject(theDocument.root(), [&](const Object& object) {
        if (object.is("ClassView") && object.text("icon") == "Interface")
            interfaces.insert(object.text("quidu"));
    });
}

std::string Reading::idOf(const Object& object) const
{
    std::string quid = object.text("quid");
    const bool isNamed = reader::elementKindOf(object) == reader::ElementKind::package ||
                         reader::elementKindOf(object) == reader::ElementKind::classifier;
    return quid.empty() && isNamed ? index.path(object) : quid;
}

Reference Reading::elementOf(const Object& from) const
{
    const reader::Reference found = index.element(from);
    if (found.element)
        return {idOf(*found.element), reader::shownName(*found.element)};
    if (found.state == reader::ReferenceState::none)
        return {};
    return {std::string(reader::quidIn(from)), withoutPath(nameIn(from))};
}

Reference Reading::typeOf(const Object& object, std::string_view key) const
{
    const std::string name = object.text(key);
    if (name.empty())
        return {};
    const std::string quid = object.text("quidu");
    const Object* const element = quid.empty() ? nullptr : index.byQuid(quid);
    if (element && isClass(*element))
        return {idOf(*element), name};
    if (name.find("::") != std::string::npos)
        if (const Object* const called = index.byName(name); called && isClass(*called))
            return {idOf(*called), name};
    return {"", name};
}

namespace {

std::string textOf(const reader::Value& value)
{
    if (const std::optional<bool> flag = value.asBool())
        return *flag ? "true" : "false";
    return value.asText();
}

// The whole name: where an element stands, "::" belongs to it, as in "std::string". Only references have paths.
std::string declaredName(const Object& object, bool isExport)
{
    if (!isExport && reader::shownName(object).empty())
        return "";
    return reader::elementKindOf(object) == reader::ElementKind::none ? object.lastName() : object.name();
}

} // namespace

void Reading::describe(const Object& object, Element& element) const
{
    element.id = idOf(object);
    element.name = declaredName(object, isExport);
    element.documentation = object.text("documentation");
    element.stereotype = object.text("stereotype");
    for (const Object* const property : object.objects("attributes"))
        if (property->is("Attribute"))
            element.properties.push_back(
                {property->text("tool"), property->text("name"), textOf(property->get("value"))});
}

void Reading::leave(const Object& object, std::string_view reason)
{
    const std::string kind = kindOf(object);
    const std::string id = idOf(object);
    report.left(kind, id, reader::shownName(object), reason);
    if (!id.empty())
        kinds.emplace(id, kind);
}

bool Reading::isNewNote(const std::string& id, const std::string& text)
{
    return notes.emplace(id, text).second;
}

// Several diagrams may show parts of one tree.
void Reading::join(const std::string& first, const std::string& other)
{
    const auto [found, isNew] = treeOf.emplace(first, trees.size());
    if (isNew)
        trees.push_back({first});
    if (treeOf.emplace(other, found->second).second)
        trees[found->second].push_back(other);
}

std::string kindOf(const Object& object)
{
    const reader::KnownKind* const known = reader::knownKindOf(object);
    const std::string kind(known && !known->word.empty() ? known->word : object.kind());
    return known && known->diagram ? kind + " diagram" : kind;
}

Visibility visibilityOf(const Object& object, std::string_view key, Visibility otherwise)
{
    const std::string word = object.text(key);
    if (word == "Public")
        return Visibility::Public;
    if (word == "Protected")
        return Visibility::Protected;
    if (word == "Private")
        return Visibility::Private;
    return word.empty() ? otherwise : Visibility::Package;
}

Containment containmentOf(const Object& object)
{
    const std::string word = object.text("Containment");
    if (word == "By Value")
        return Containment::ByValue;
    return word == "By Reference" ? Containment::ByReference : Containment::Unspecified;
}

Concurrency concurrencyOf(const Object& object)
{
    const std::string word = object.text("concurrency");
    if (word.empty() || word == "Sequential")
        return Concurrency::Sequential;
    if (word == "Guarded")
        return Concurrency::Guarded;
    return word == "Active" ? Concurrency::Active : Concurrency::Synchronous;
}

std::string lowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return text;
}

} // namespace design::rose
