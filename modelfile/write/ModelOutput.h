#pragma once

#include "modelfile/CodeNames.h"
#include "modelfile/write/Identities.h"
#include "text/JsonWriter.h"

#include "kiv/KivPackage.h"

#include <iosfwd>

namespace modelfile {

/// The file that is written, and what every object in it has. What is as the reader takes it to be by default is left
/// out.
class ModelOutput {
public:
    /// Without a stream what is written goes nowhere.
    ModelOutput(Identities& theIdentities, Losses& theLosses, std::ostream* theStream);

    text::JsonWriter json;

    /// Calls `write(object, index)` for each object of a list that the file can hold, in braces. A list without any is
    /// left out.
    template <class Elements, class Write>
    void list(std::string_view key, const char* kind, const Elements& elements, const KivObject& holder,
              const Write& write)
    {
        list(
            key, elements, holder, [kind](const KivObject*) { return kind; }, write);
    }
    /// The same where `kindOf` tells the kind of an element, null when it has no place there.
    template <class Elements, class KindOf, class Write>
    void list(std::string_view key, const Elements& elements, const KivObject& holder, const KindOf& kindOf,
              const Write& write)
    {
        bool isOpen = false;
        for (std::size_t i = 0; i < elements.count(); ++i) {
            auto* const element = elements.at(i);
            const char* const kind = element ? kindOf(element) : nullptr;
            if (!begins(element, kind, holder) || !element)
                continue;
            if (!std::exchange(isOpen, true))
                json.beginList(key);
            json.beginObject();
            write(*element, i);
            json.endObject();
            flushWhenLarge();
        }
        if (isOpen)
            json.endList();
    }

    /// Id, name, description, stereotype, level and notes.
    void common(const KivModelObject& object);
    /// Name, description and stereotype.
    void texts(const KivModelObject& object);
    void projections(const KivModelObject& object);

    void text(const KivObject& owner, std::string_view key, const KivString& value);
    void flag(std::string_view key, bool value);
    void number(std::string_view key, int value, int usual = 0);
    void code(std::string_view key, int value, int usual, std::span<const CodeName> names);
    void position(std::int16_t value, std::size_t index);
    /// Nothing for a null pointer, or for an object that the file does not hold.
    void reference(const KivObject& owner, std::string_view key, const KivObject* target);
    /// An entry of a list: the id, or null.
    void listedReference(const KivObject& owner, const KivObject* target);
    template <class Elements>
    void references(const KivObject& owner, std::string_view key, const Elements& targets)
    {
        if (targets.isEmpty())
            return;
        json.beginList(key);
        for (const KivObject* const target : targets)
            listedReference(owner, target);
        json.endList();
    }

    void lose(const KivObject& object, std::string reason)
    {
        losses.add(identities.describe(object), std::move(reason));
    }
    void flush();

private:
    [[nodiscard]] bool begins(const KivObject* object, const char* kind, const KivObject& holder);
    void flushWhenLarge();
    void quoted(const KivObject& owner, const char* what, std::string_view value);
    void projection(const KivObject& owner, const KivProjection& projection);
    void colour(std::string_view key, int value, int usual);
    void vertices(const KivObject& owner, const KivString& points);

    std::string buffer;
    Identities& identities;
    Losses& losses;
    std::ostream* stream;
};

void writeType(ModelOutput& out, const KivType& type);
void writeClass(ModelOutput& out, const KivClass& element);
void writeAttribute(ModelOutput& out, const KivAttribute& attribute, std::size_t index);
void writeAssociation(ModelOutput& out, const KivAssociation& association);
void writeGeneralization(ModelOutput& out, const KivGeneralization& generalization);
void writeDependency(ModelOutput& out, const KivDependency& dependency);
void writeRealization(ModelOutput& out, const KivRealization& realization);
void writeContents(ModelOutput& out, const KivPackage& package, std::size_t level);

} // namespace modelfile
