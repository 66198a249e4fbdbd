#pragma once

#include "modelfile/read/Fields.h"
#include "modelfile/read/JsonReader.h"
#include "modelfile/read/References.h"
#include "text/NearestName.h"

#include "kiv/KivPackage.h"

#include <type_traits>

namespace modelfile {

template <class Target>
using Field = FieldOf<Target, Value>;

/// A key mapping, which its attribute takes when both references are followed.
struct PendingKeyMapping {
    KivAttribute* attribute = nullptr;
    KivKeyMapping mapping;
};

/// Makes the objects of a model while its file is read.
class Builder : public JsonReader {
public:
    Builder(KivModel& theModel, std::string_view theText, const simdjson::ondemand::parser& theParser)
        : JsonReader(theText, theParser), references(*this), model(theModel)
    {
    }

    template <class Element>
    Element* create()
    {
        if constexpr (std::is_base_of_v<KivModelObject, Element>)
            ++objectCount;
        return model.create<Element>();
    }
    [[nodiscard]] std::size_t getObjectCount() const { return objectCount; }

    /// Reads every key of an object. Files list the keys of like objects in one order, so the search for a key starts
    /// behind the one before, and most are recognised at once.
    template <class Target, std::size_t Count>
    void readFields(Object& object, Target& target, const std::array<Field<Target>, Count>& fields)
    {
        static_assert(Count <= 64);
        std::uint64_t seen = 0;
        std::size_t next = 0;
        for (auto result : object) {
            simdjson::ondemand::field field = fieldOf(std::move(result));
            const char* at = field.key().raw() - 1;
            if (!fields[next].key.isAt(at))
                next = findKey(readKey(field, at), at, fields, next);
            if ((seen >> next & 1U) != 0)
                fail(at, "each key once in an object",
                     "the key " + text::jsonQuoted(fields[next].key.view()) + " again");
            seen |= std::uint64_t{1} << next;
            fields[next].read(*this, target, field.value());
            next = next + 1 == Count ? 0 : next + 1;
        }
    }

    /// Looks ahead for one key and leaves the object as it was.
    template <class Read>
    bool findField(Object& object, const Key& wanted, Read read)
    {
        bool found = false;
        for (auto result : object) {
            simdjson::ondemand::field field = fieldOf(std::move(result));
            const char* at = field.key().raw() - 1;
            found = wanted.isAt(at) || readKey(field, at) == wanted.view();
            if (found) {
                read(field.value());
                break;
            }
        }
        rewind(object);
        return found;
    }

    /// Whether an object has any key; it is as it was then.
    bool hasFields(Object& object) const;

    /// The place of an object's kind among `kinds`, or `missing` when it tells none.
    std::size_t readKind(Object& object, std::span<const std::string_view> kinds, std::size_t missing);

    References references;
    std::size_t packageLevel = 0;
    std::vector<KivObject*> unfinished; ///< objects of the lists that are being read (see MadeObjects)
    std::deque<PendingKeyMapping> keyMappings;

private:
    // Place of a key in the table, looked for from `start` on.
    template <class Target, std::size_t Count>
    std::size_t findKey(std::string_view key, const char* at, const std::array<Field<Target>, Count>& fields,
                        std::size_t start)
    {
        for (std::size_t tried = 0; tried < Count; ++tried) {
            const std::size_t place = (start + tried) % Count;
            if (fields[place].key.view() == key)
                return place;
        }
        std::vector<std::string_view> known;
        for (const auto& field : fields)
            known.push_back(field.key.view());
        failUnknownKey(key, at, known);
    }
    [[noreturn]] static void failUnknownKey(std::string_view key, const char* at,
                                            std::span<const std::string_view> known);

    KivModel& model;
    std::size_t objectCount = 1;
};

} // namespace modelfile
