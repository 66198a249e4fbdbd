#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

class KivObject;

/// The objects of a model file by their ids: one table without nodes, so that a search among a million ids waits for
/// memory once. The ids' bytes must stay.
class IdTable {
public:
    /// Takes `id`, of an object or of one that will be told later (null). False when the id is taken.
    [[nodiscard]] bool add(std::string_view id, KivObject* object)
    {
        if ((count + 1) * 2 > entries.size())
            grow();
        Entry& entry = entryOf(id, hashOf(id));
        if (entry.id.data())
            return false;
        entry = {id, object};
        ++count;
        return true;
    }

    /// Tells the object of an id that is taken.
    void tell(std::string_view id, KivObject* object) { entryOf(id, hashOf(id)).object = object; }

    /// Null when nothing has the id.
    [[nodiscard]] KivObject* find(std::string_view id)
    {
        return entries.empty() ? nullptr : entryOf(id, hashOf(id)).object;
    }

private:
    struct Entry {
        std::string_view id; // without data: free
        KivObject* object = nullptr;
    };

    static std::size_t hashOf(std::string_view id) { return std::hash<std::string_view>()(id); }

    // Where the id stands, or the free entry where it would.
    Entry& entryOf(std::string_view id, std::size_t hash)
    {
        const std::size_t mask = entries.size() - 1;
        std::size_t place = hash & mask;
        while (entries[place].id.data() && entries[place].id != id)
            place = (place + 1) & mask;
        return entries[place];
    }

    void grow()
    {
        constexpr std::size_t least = 64;
        std::vector<Entry> old(std::max(least, entries.size() * 2));
        old.swap(entries);
        for (const Entry& entry : old)
            if (entry.id.data())
                entryOf(entry.id, hashOf(entry.id)) = entry;
    }

    std::vector<Entry> entries;
    std::size_t count = 0;
};
