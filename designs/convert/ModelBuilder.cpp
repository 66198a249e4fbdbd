#include "designs/convert/ModelBuilder.h"

#include "text/Utf8.h"

#include "kiv/KivConnecting.h"

#include <utility>

namespace design {

namespace {

constexpr std::array<std::string_view, static_cast<std::size_t>(Kind::Count)> kindNames = {
    "packages",     "classes",      "interfaces", "data types", "enumerations", "literals",
    "types",        "attributes",   "operations", "parameters", "associations", "generalizations",
    "realizations", "dependencies", "notes",      "diagrams",   "boxes",        "lines",
};

} // namespace

void ModelBuilder::describe(KivModelObject& object, const Element& element, std::string_view description,
                            std::string_view stereotype)
{
    object.setName(text(element, element.name));
    object.description = text(element, description);
    object.stereotype = text(element, element.stereotype.empty() ? stereotype : element.stereotype);
    for (const std::string& note : element.notes)
        object.notes.add(createNote(element, note));
    identify(object, element.id);
}

void ModelBuilder::identify(const KivObject& object, const std::string& id)
{
    if (!id.empty() && text::isWellFormed(id))
        result.ids.emplace(&object, id);
}

KivNote* ModelBuilder::createNote(const Element& owner, std::string_view text)
{
    auto* const note = create<KivNote>();
    note->description = this->text(owner, text);
    count(Kind::Notes);
    return note;
}

KivString ModelBuilder::text(const Element& element, std::string_view text)
{
    if (text::isWellFormed(text))
        return KivString(text);
    report.made("text", text::mended(element.id), text::mended(element.name), "bytes that are no text were replaced");
    return KivString(text::mended(text));
}

Converted ModelBuilder::finish()
{
    for (std::size_t i = 0; i < counts.size(); ++i)
        if (counts[i] > 0)
            result.taken.push_back({kindNames[i], counts[i]});
    connect(model());
    return std::move(result);
}

std::string Converted::idOf(const KivObject& object) const
{
    const auto found = ids.find(&object);
    return found == ids.end() ? std::string() : found->second;
}

int numberOf(Containment containment)
{
    switch (containment) {
    case Containment::ByValue:
        return KivContainment::ByValue;
    case Containment::ByReference:
        return KivContainment::ByReference;
    case Containment::Unspecified:
        break;
    }
    return KivContainment::Unspecified;
}

int numberOf(Visibility visibility)
{
    switch (visibility) {
    case Visibility::Public:
        return 0;
    case Visibility::Protected:
        return 1;
    case Visibility::Private:
        return 2;
    case Visibility::Package:
        break;
    }
    return 3;
}

} // namespace design
