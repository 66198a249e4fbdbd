#include "kiv/KivCollections.h"

#include "kiv/KivObject.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <new>
#include <set>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

constexpr std::uint32_t nothing = std::numeric_limits<std::uint32_t>::max();

// Up to here a look at every element is as fast as any table, and most collections of a model are smaller.
constexpr std::size_t smallCount = 8;

// So many searches for a name look at every element; for more of them it pays to sort the names.
constexpr std::uint32_t fewScans = 3;

// The smallest block of memory holds this many pointers.
constexpr std::size_t leastCapacity = 3;

// Marks a slot whose element was taken out; a null pointer can be an element.
KivObject* hole() noexcept
{
    static KivNote marker;
    return &marker;
}

// The slots of each object: an open hash table from the object to its first and last slot, and for objects that stand
// in several places a chain from slot to slot.
class SlotTable {
public:
    [[nodiscard]] bool isBuilt() const noexcept { return !entries.empty(); }

    void reserve(std::size_t slotCount)
    {
        const std::size_t wanted = std::bit_ceil(std::max<std::size_t>(slotCount * 2, 32));
        if (wanted > entries.size()) {
            std::vector<Entry> grown(wanted);
            grown.swap(entries);
            for (const Entry& entry : grown)
                if (entry.first != nothing)
                    entries[spotOf(entry.object)] = entry;
        }
        if (!next.empty())
            next.reserve(slotCount);
    }

    // The same for objects that stand there already.
    void reserveRepeats(std::size_t slotCount) { next.reserve(slotCount); }

    // Fills the table anew; does not throw when room for that many slots was reserved and no object stands twice.
    void build(std::span<KivObject* const> slots, std::size_t head)
    {
        reserve(slots.size());
        std::fill(entries.begin(), entries.end(), Entry());
        next.clear();
        for (std::size_t slot = head; slot < slots.size(); ++slot)
            if (slots[slot] != hole())
                add(slots[slot], static_cast<std::uint32_t>(slot));
    }

    void prepareToAdd(const KivObject* object, std::size_t slotCount)
    {
        reserve(slotCount);
        if (entries[spotOf(object)].first != nothing && next.size() < slotCount)
            next.resize(std::max(slotCount, next.capacity()), nothing);
    }

    void add(const KivObject* object, std::uint32_t slot)
    {
        Entry& entry = entries[spotOf(object)];
        if (entry.first == nothing) {
            entry = {object, slot, slot};
            return;
        }
        if (next.size() <= slot)
            next.resize(slot + 1, nothing);
        next[entry.last] = slot;
        entry.last = slot;
    }

    [[nodiscard]] std::uint32_t first(const KivObject* object) const noexcept { return entries[spotOf(object)].first; }

    void removeFirst(const KivObject* object) noexcept
    {
        const std::size_t spot = spotOf(object);
        Entry& entry = entries[spot];
        if (entry.first != entry.last) {
            entry.first = std::exchange(next[entry.first], nothing);
            return;
        }
        close(spot);
    }

private:
    struct Entry {
        const KivObject* object = nullptr;
        std::uint32_t first = nothing;
        std::uint32_t last = nothing;
    };

    [[nodiscard]] std::size_t home(const KivObject* object) const noexcept
    {
        const auto bits = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(object));
        const auto mixed = (bits >> 3) * std::uint64_t{0x9E3779B97F4A7C15};
        return static_cast<std::size_t>(mixed >> 32) & (entries.size() - 1);
    }

    // Where `object` stands, or the free spot where it would.
    [[nodiscard]] std::size_t spotOf(const KivObject* object) const noexcept
    {
        std::size_t spot = home(object);
        while (entries[spot].first != nothing && entries[spot].object != object)
            spot = (spot + 1) & (entries.size() - 1);
        return spot;
    }

    // Frees a spot and moves up what was pushed past it, so that every search still ends at the first free spot.
    void close(std::size_t spot) noexcept
    {
        const std::size_t mask = entries.size() - 1;
        for (std::size_t other = (spot + 1) & mask; entries[other].first != nothing; other = (other + 1) & mask) {
            if (((other - home(entries[other].object)) & mask) >= ((other - spot) & mask)) {
                entries[spot] = entries[other];
                spot = other;
            }
        }
        entries[spot] = Entry();
    }

    std::vector<Entry> entries;
    std::vector<std::uint32_t> next;
};

// How many elements stand before a slot, and which slot holds the i-th: a binary indexed tree over the slots, needed
// only while there are holes between elements.
class RankTree {
public:
    [[nodiscard]] bool isBuilt() const noexcept { return !sums.empty(); }
    void drop() noexcept { sums.clear(); }
    void reserve(std::size_t slotCount) { sums.reserve(slotCount + 1); }

    void build(std::span<KivObject* const> slots, std::size_t head, std::size_t capacity)
    {
        sums.reserve(capacity + 1);
        sums.assign(slots.size() + 1, 0);
        for (std::size_t i = 1; i < sums.size(); ++i) {
            sums[i] += i - 1 >= head && slots[i - 1] != hole() ? 1U : 0U;
            const std::size_t parent = i + (i & -i);
            if (parent < sums.size())
                sums[parent] += sums[i];
        }
    }

    void append() noexcept
    {
        const std::size_t i = sums.size();
        sums.push_back(static_cast<std::uint32_t>(before(i - 1) - before(i - (i & -i)) + 1));
    }

    void removeLast() noexcept { sums.pop_back(); }

    void clear(std::size_t slot) noexcept
    {
        for (std::size_t i = slot + 1; i < sums.size(); i += i & -i)
            --sums[i];
    }

    // Number of elements in the slots before `slot`.
    [[nodiscard]] std::size_t before(std::size_t slot) const noexcept
    {
        std::size_t sum = 0;
        for (std::size_t i = slot; i > 0; i &= i - 1)
            sum += sums[i];
        return sum;
    }

    [[nodiscard]] std::size_t slotOf(std::size_t index) const noexcept
    {
        std::size_t slot = 0;
        for (std::size_t step = std::bit_floor(sums.size() - 1); step > 0; step >>= 1) {
            if (slot + step < sums.size() && sums[slot + step] <= index) {
                slot += step;
                index -= sums[slot];
            }
        }
        return slot;
    }

private:
    std::vector<std::uint32_t> sums;
};

// Asks for the memory from `begin` to `end`, unless these have nothing to do with each other.
void fetchStretch(const void* begin, const void* end) noexcept
{
    constexpr std::uintptr_t cacheLine = 64;
    constexpr std::uintptr_t most = std::uintptr_t{8} * 1024;
    constexpr std::uintptr_t unrelated = std::uintptr_t{64} * 1024;
    const auto from = reinterpret_cast<std::uintptr_t>(begin);
    const auto to = reinterpret_cast<std::uintptr_t>(end);
    if (to <= from || to - from > unrelated)
        return;
    const std::uintptr_t last = std::min(to, from + most);
    for (std::uintptr_t at = from; at < last; at += cacheLine)
        fetchMemory(reinterpret_cast<const void*>(at)); // NOLINT(performance-no-int-to-ptr): nothing is read
}

} // namespace

// Everything but the slots themselves: made when a question is asked that the slots alone answer slowly.
struct KivSequence::Lookup {
    SlotTable table;
    RankTree ranks;
    std::set<std::pair<KivString, std::uint32_t>> names; // by name, then by slot
    bool namesBuilt = false;
    std::uint32_t scans = 0; // searches for a name that looked at every element

    void dropNames() noexcept
    {
        names.clear();
        namesBuilt = false;
    }
};

void KivSequence::Release::operator()(Places* block) const noexcept
{
    const std::unique_ptr<Lookup> lookup(block->lookup);
    ::operator delete(block);
}

KivSequence::KivSequence() noexcept = default;
KivSequence::KivSequence(KivSequence&&) noexcept = default;
KivSequence& KivSequence::operator=(KivSequence&&) noexcept = default;
KivSequence::~KivSequence() = default;

KivSequence::Places& KivSequence::ensureCapacity(std::size_t capacity)
{
    if (places && capacity <= places->capacity)
        return *places;
    if (capacity >= nothing)
        throw std::length_error("a collection holds more than four billion elements");
    const std::size_t doubled = places ? std::size_t{places->capacity} * 2 : 0;
    capacity = std::min<std::size_t>(std::max({capacity, doubled, leastCapacity}), nothing - 1);
    std::unique_ptr<Places, Release> grown(new (::operator new(sizeof(Places) + capacity * sizeof(void*))) Places());
    if (places) {
        *grown = *places;
        std::copy_n(places->slots(), places->size, grown->slots());
        places->lookup = nullptr;
    }
    grown->capacity = static_cast<std::uint32_t>(capacity);
    places = std::move(grown);
    return *places;
}

KivSequence::Lookup& KivSequence::ensureLookup() const
{
    if (!places->lookup)
        places->lookup = std::make_unique<Lookup>().release();
    return *places->lookup;
}

void KivSequence::removeAll() noexcept
{
    places.reset();
}

void KivSequence::reserve(std::size_t additional)
{
    reserveNew(additional);
    if (places->size - places->head + additional > smallCount && !hasTable())
        buildTable();
    if (hasTable())
        places->lookup->table.reserveRepeats(places->capacity);
}

void KivSequence::reserveNew(std::size_t additional)
{
    const Places& p = ensureCapacity((places ? places->size : 0) + additional);
    if (hasTable())
        p.lookup->table.reserve(p.capacity);
    if (p.holes > 0)
        p.lookup->ranks.reserve(p.capacity);
}

bool KivSequence::hasTable() const noexcept
{
    return places->lookup && places->lookup->table.isBuilt();
}

// With room for as many elements as there are places for.
void KivSequence::buildTable() const
{
    SlotTable table;
    table.reserve(places->capacity);
    table.build(places->used(), places->head);
    ensureLookup().table = std::move(table);
}

void KivSequence::append(KivObject* object)
{
    if (!places || (!places->lookup && places->size - places->live() <= places->live())) {
        // Nothing to keep up, no room worth winning back.
        Places& p = ensureCapacity((places ? places->size : 0) + std::size_t{1});
        p.slots()[p.size++] = object;
        return;
    }
    if (places->size == places->capacity) {
        Places& p = *places;
        if (p.size - p.live() > p.live()) { // mostly free slots: move the elements together instead of growing
            p.size = static_cast<std::uint32_t>(std::remove(p.slots(), p.slots() + p.size, hole()) - p.slots());
            p.head = 0;
            p.holes = 0;
            if (p.lookup) {
                p.lookup->ranks.drop();
                p.lookup->dropNames();
                if (hasTable())
                    p.lookup->table.build(p.used(), 0);
            }
        } else {
            reserveNew(1);
        }
    }
    Places& p = *places;
    const std::uint32_t slot = p.size;
    if (hasTable()) {
        p.lookup->table.prepareToAdd(object, std::size_t{slot} + 1);
        p.lookup->table.add(object, slot);
    }
    p.slots()[p.size++] = object;
    if (p.holes > 0)
        p.lookup->ranks.append();
    if (p.lookup && p.lookup->namesBuilt) {
        try {
            p.lookup->names.emplace(object->getName(), slot);
        } catch (const std::bad_alloc&) {
            p.lookup->dropNames(); // made anew by the next search
        }
    }
}

bool KivSequence::appendOnce(KivObject* object)
{
    if (findSlot(object) != npos)
        return false;
    append(object);
    return true;
}

std::size_t KivSequence::findSlot(const KivObject* object) const
{
    if (!places)
        return npos;
    Places& p = *places;
    if (!hasTable() && p.size - p.head <= smallCount) {
        const std::span<KivObject* const> slots = p.used();
        const auto found = std::find(slots.begin() + p.head, slots.end(), object);
        return found == slots.end() ? npos : static_cast<std::size_t>(found - slots.begin());
    }
    if (!hasTable())
        buildTable();
    const std::uint32_t slot = p.lookup->table.first(object);
    return slot == nothing ? npos : slot;
}

std::size_t KivSequence::indexOfObject(const KivObject* object) const
{
    const std::size_t slot = findSlot(object);
    if (slot == npos)
        return npos;
    return places->holes > 0 ? places->lookup->ranks.before(slot) : slot - places->head;
}

KivObject* KivSequence::objectBetweenHoles(std::size_t index) const noexcept
{
    return places->slots()[index == 0 ? places->head : places->lookup->ranks.slotOf(index)];
}

bool KivSequence::removeObject(const KivObject* object)
{
    const bool isFirst = !isEmpty() && objectAt(0) == object;
    const std::size_t slot = isFirst ? places->head : findSlot(object);
    if (slot == npos)
        return false;
    Places& p = *places;
    const bool atEdge = slot == p.head || slot + 1 == p.size;
    if (!atEdge && p.holes == 0)
        ensureLookup().ranks.build(p.used(), p.head, p.capacity);
    if (p.lookup && p.lookup->namesBuilt)
        p.lookup->names.erase({p.slots()[slot]->getName(), static_cast<std::uint32_t>(slot)});
    if (hasTable())
        p.lookup->table.removeFirst(object);
    if (p.holes > 0 || !atEdge)
        p.lookup->ranks.clear(slot);
    p.slots()[slot] = hole();
    ++p.holes;
    for (; p.head < p.size && p.slots()[p.head] == hole(); ++p.head)
        --p.holes;
    for (; p.head < p.size && p.slots()[p.size - 1] == hole(); --p.holes) {
        --p.size;
        if (p.lookup && p.lookup->ranks.isBuilt())
            p.lookup->ranks.removeLast();
    }
    if (p.holes == 0 && p.lookup)
        p.lookup->ranks.drop();
    return true;
}

KivObject* KivSequence::objectNamed(const KivString& name) const
{
    if (!places)
        return nullptr;
    Places& p = *places;
    const bool isSmall = p.size - p.head <= smallCount;
    if (isSmall || ensureLookup().scans++ < fewScans) {
        for (std::size_t slot = p.head; slot < p.size; ++slot)
            if (p.slots()[slot] != hole() && p.slots()[slot]->getName() == name)
                return p.slots()[slot];
        return nullptr;
    }
    Lookup& lookup = ensureLookup();
    if (!lookup.namesBuilt) {
        lookup.names.clear();
        for (std::size_t slot = p.head; slot < p.size; ++slot)
            if (p.slots()[slot] != hole())
                lookup.names.emplace(p.slots()[slot]->getName(), static_cast<std::uint32_t>(slot));
        lookup.namesBuilt = true;
    }
    const auto found = lookup.names.lower_bound({name, 0});
    return found != lookup.names.end() && found->first == name ? p.slots()[found->second] : nullptr;
}

void KivSequence::renamed(KivObject* object, const KivString& oldName) noexcept
{
    if (!places || !places->lookup || !places->lookup->namesBuilt)
        return;
    Lookup& lookup = *places->lookup;
    try {
        const auto slot = static_cast<std::uint32_t>(findSlot(object));
        auto entry = lookup.names.extract({oldName, slot});
        if (entry) {
            entry.value().first = object->getName();
            lookup.names.insert(std::move(entry));
        }
    } catch (const std::bad_alloc&) {
        lookup.dropNames();
    }
}

void KivSequence::fetchAhead(std::size_t index) const noexcept
{
    index += 2; // the next one is on its way already
    if (!places || places->holes > 0 || index + 2 >= places->live())
        return;
    const KivObject* const first = objectAt(index);
    const KivObject* const second = objectAt(index + 1);
    const KivObject* const third = objectAt(index + 2);
    if (!first || !second || !third)
        return;
    fetchStretch(second, third + 1);
    fetchStretch(first->name.text(), second->name.text());
}
