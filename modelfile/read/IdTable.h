#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

class KivObject;

/// The objects of a model file by their ids. The ids' bytes must stay.
///
/// The table that is searched holds hashes and numbers only, so that it stays in the processor's caches as long as it
/// can: to wait for memory is what a search among a million ids costs.
class IdTable {
public:
    /// Takes `id`, of an object or of one that will be told later (null). False when the id is taken.
    [[nodiscard]] bool add(std::string_view id, KivObject* object)
    {
        if ((named.size() + 1) * 2 > slots.size())
            grow();
        const std::uint32_t hash = hashOf(id);
        Slot& slot = slotOf(id, hash);
        if (slot.number != 0)
            return false;
        named.push_back({id, object});
        slot = {hash, static_cast<std::uint32_t>(named.size())};
        return true;
    }

    /// Tells the object of an id that is taken.
    void tell(std::string_view id, KivObject* object) { named[slotOf(id, hashOf(id)).number - 1].object = object; }

    /// Null when nothing has the id.
    [[nodiscard]] KivObject* find(std::string_view id)
    {
        if (slots.empty())
            return nullptr;
        const Slot& slot = slotOf(id, hashOf(id));
        return slot.number == 0 ? nullptr : named[slot.number - 1].object;
    }

    struct Named {
        std::string_view id;
        KivObject* object;
    };
    /// All, in the order in which they were added.
    [[nodiscard]] const std::vector<Named>& all() const { return named; }

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t number = 0; // of the id, counted from 1; 0 is free
    };

    static std::uint32_t hashOf(std::string_view id)
    {
        return static_cast<std::uint32_t>(std::hash<std::string_view>()(id));
    }

    // Where the id stands, or the free slot where it would.
    Slot& slotOf(std::string_view id, std::uint32_t hash)
    {
        const std::size_t mask = slots.size() - 1;
        std::size_t place = hash & mask;
        while (slots[place].number != 0 && (slots[place].hash != hash || named[slots[place].number - 1].id != id))
            place = (place + 1) & mask;
        return slots[place];
    }

    void grow()
    {
        constexpr std::size_t least = 64;
        std::vector<Slot> larger(std::max(least, slots.size() * 2));
        const std::size_t mask = larger.size() - 1;
        for (const Slot& slot : slots) {
            if (slot.number == 0)
                continue;
            std::size_t place = slot.hash & mask;
            while (larger[place].number != 0)
                place = (place + 1) & mask;
            larger[place] = slot;
        }
        slots.swap(larger);
    }

    std::vector<Named> named; // in the order in which they were added
    std::vector<Slot> slots;
};
