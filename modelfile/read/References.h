#pragma once

#include "modelfile/read/IdTable.h"
#include "modelfile/read/JsonReader.h"

#include "kiv/KivElementType.h"

#include <deque>
#include <vector>

class KivAttribute;
class KivObject;

namespace modelfile {

/// The objects of a file by their ids, and what refers to them. An object can stand behind what refers to it, so most
/// references are followed when the whole file is read.
class References {
public:
    using Assign = void (*)(void* owner, KivObject* target);

    explicit References(JsonReader& theReader) : reader(theReader) {}

    /// Reads the id of `object`; of one whose address is told later when it is null.
    std::string_view takeId(Value& value, KivObject* object);
    void tellAddress(std::string_view id, KivObject* object) { objects.tell(id, object); }

    /// Reads a reference, an id or null. `assign` is called with its target, or null, when all are followed, in the
    /// order in which they were read.
    void refer(Value& value, KivElementType expected, Assign assign, void* owner);
    /// The same for a reference whose order among others makes no difference: most lead back to an object already
    /// read. A reference to nothing assigns nothing.
    void referAtOnce(Value& value, KivElementType expected, Assign assign, void* owner);
    /// Calls `finish` in its turn.
    void atEnd(Assign finish, void* owner)
    {
        references.push_back({{}, nullptr, KivElementType::Object, finish, owner});
    }

    /// Those that lead to nothing or to something else go to the reader's faults.
    void follow();
    /// All ids and their objects.
    [[nodiscard]] const std::vector<IdTable::Named>& all() const { return objects.all(); }
    /// What a reference to `id` was surely meant to say: an id that is much the same, or that of an object of this
    /// name.
    [[nodiscard]] std::string nearestId(std::string_view id, KivElementType expected) const;

private:
    struct Reference {
        std::string_view id; // without data: null
        const char* at;
        KivElementType expected;
        Assign assign;
        void* owner;
    };

    void addFault(const Reference& reference, const KivObject* target);

    JsonReader& reader;
    IdTable objects;
    std::vector<Reference> references;
};

} // namespace modelfile
