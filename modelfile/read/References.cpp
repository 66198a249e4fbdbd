#include "modelfile/read/References.h"

#include "text/JsonWriter.h"

#include "kiv/KivObject.h"

namespace modelfile {

namespace {

std::string_view nameOf(KivElementType code)
{
    switch (code) {
    case KivElementType::Type:
        return "a type";
    case KivElementType::Class:
        return "a class";
    case KivElementType::Key:
        return "a key";
    case KivElementType::Attribute:
        return "an attribute";
    case KivElementType::ClassDiagram:
        return "a class diagram";
    case KivElementType::ModelElement:
        return "an element of a package";
    default:
        return "a model object";
    }
}

std::string idOf(KivElementType code)
{
    const bool mayBeNull = code != KivElementType::ClassDiagram; // of a projection
    return "the id of " + std::string(nameOf(code)) + (mayBeNull ? " or null" : "");
}

} // namespace

std::string_view References::takeId(Value& value, KivObject* object)
{
    const char* const at = JsonReader::tokenOf(value).data();
    const std::string_view id = reader.keep(reader.readText(value));
    if (!objects.add(id, object))
        JsonReader::fail(at, "an id that is used once", "the id " + text::jsonQuoted(id) + " again");
    return id;
}

void References::refer(Value& value, KivElementType expected, Assign assign, void* owner)
{
    const char* const at = JsonReader::tokenOf(value).data();
    if (JsonReader::isNull(value)) {
        if (value.is_null().error() != simdjson::SUCCESS)
            JsonReader::failValue(value, "null");
        references.push_back({{}, at, expected, assign, owner});
        return;
    }
    const std::string_view id = reader.keep(reader.readText(value, "an id (a text) or null"));
    references.push_back({id, at, expected, assign, owner});
}

void References::referAtOnce(Value& value, KivElementType expected, Assign assign, void* owner)
{
    refer(value, expected, assign, owner);
    const Reference& reference = references.back();
    if (!reference.id.data()) {
        references.pop_back();
        return;
    }
    KivObject* const found = objects.find(reference.id);
    if (found && found->isInstanceOf(expected)) {
        assign(owner, found);
        references.pop_back();
    }
}

void References::follow()
{
    for (const Reference& reference : references) {
        KivObject* target = nullptr;
        if (reference.id.data()) {
            target = objects.find(reference.id);
            if (!target || !target->isInstanceOf(reference.expected))
                JsonReader::fail(reference.at, idOf(reference.expected),
                                 text::jsonQuoted(reference.id) +
                                     (target ? ", the id of something else" : ", which is no id in the file"));
        }
        reference.assign(reference.owner, target);
    }
}

} // namespace modelfile
