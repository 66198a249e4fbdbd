#pragma once

#include "modelfile/read/Fields.h"
#include "modelfile/read/JsonReader.h"
#include "modelfile/read/References.h"

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

/// Where the objects of a model file begin, in the order in which they are made.
struct ObjectPlaces {
    std::size_t current = 0; ///< offset of the object that is being read
    std::vector<std::pair<const KivObject*, std::size_t>> made;
};

/// Makes the objects of a model while its file is read.
class Builder : public JsonReader {
public:
    Builder(KivModel& theModel, std::string_view theText, const simdjson::ondemand::parser& theParser,
            Faults& theFaults)
        : JsonReader(theText, theParser, theFaults), references(*this), model(theModel)
    {
    }

    template <class Element>
    Element* create()
    {
        if constexpr (std::is_base_of_v<KivModelObject, Element>)
            ++objectCount;
        auto* const element = model.create<Element>();
        if (places)
            places->made.emplace_back(element, places->current);
        return element;
    }
    [[nodiscard]] Object readObject(Value& value)
    {
        if (places)
            places->current = static_cast<std::size_t>(value.raw_json_token().data() - start());
        return JsonReader::readObject(value);
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
            try {
                if (!fields[next].key.isAt(at))
                    next = findKey(readKey(field, at), at, fields, next);
                if ((seen >> next & 1U) != 0)
                    failRepeatedKey(fields[next].key.view(), at);
                seen |= std::uint64_t{1} << next;
                fields[next].read(*this, target, field.value());
            } catch (ContentError& error) {
                passOver(error, at);
            }
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
    ObjectPlaces* places = nullptr; ///< to be filled, or null
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
        known.reserve(Count);
        for (const auto& field : fields)
            known.push_back(field.key.view());
        failUnknownKey(key, at, known);
    }
    [[noreturn]] static void failRepeatedKey(std::string_view key, const char* at);
    [[noreturn]] static void failUnknownKey(std::string_view key, const char* at,
                                            std::span<const std::string_view> known);

    KivModel& model;
    std::size_t objectCount = 1;
};

} // namespace modelfile
