#include "kiv/KivCollections.h"

#include "kiv/KivObject.h"

#include <algorithm>
#include <deque>
#include <new>
#include <set>
#include <stdexcept>
#include <unordered_map>
#include <utility>

namespace {

constexpr std::size_t mostElements = UINT32_MAX;
constexpr std::size_t leastCapacity = 3;  // of a block
constexpr std::size_t smallCount = 16;    // up to here a look at every element is as fast as an index
constexpr std::uint32_t fewQuestions = 3; // so many such looks at a larger collection cost less than an index

} // namespace

// Finds places without looking at each. Every place has a number, and the numbers grow from place to place. An element
// keeps its number when a removal moves it, so that a removal concerns nothing but what it takes out.
struct KivSequence::Index {
    std::deque<std::size_t> numbers;                            // of the places, in their order
    std::unordered_map<const KivObject*, std::size_t> firsts;   // of the first place that holds an object
    std::set<std::pair<const KivObject*, std::size_t>> repeats; // of its other places
    std::set<std::pair<KivString, std::size_t>> names;          // by name, then in the order of the places
    bool hasNames = false;

    // Leaves an index that is of no more use when it throws.
    void add(KivObject* object)
    {
        const std::size_t number = numbers.empty() ? 0 : numbers.back() + 1;
        if (hasNames)
            names.emplace(object->getName(), number);
        if (!firsts.emplace(object, number).second)
            repeats.emplace(object, number);
        numbers.push_back(number);
    }

    // `place` must be the first one that holds `object`.
    void remove(const KivObject* object, std::size_t place)
    {
        hasNames = hasNames && names.erase({object->getName(), numbers[place]}) == 1;
        const auto repeat = repeats.lower_bound({object, 0});
        if (repeat != repeats.end() && repeat->first == object) {
            firsts.find(object)->second = repeat->second;
            repeats.erase(repeat);
        } else {
            firsts.erase(object);
        }
        numbers.erase(numbers.begin() + static_cast<std::ptrdiff_t>(place));
    }

    [[nodiscard]] std::size_t placeOf(std::size_t number) const noexcept
    {
        // Exact as long as only elements at the ends were removed.
        const std::size_t most = std::min(number - numbers.front(), numbers.size() - 1);
        if (numbers[most] == number)
            return most;
        return static_cast<std::size_t>(std::lower_bound(numbers.begin(), numbers.end(), number) - numbers.begin());
    }
};

void KivSequence::Release::operator()(Block* block) const noexcept
{
    std::destroy_at(block);
    ::operator delete(block);
}

// The block, with places behind the elements for that many more. What removals have left free in front goes with the
// old block.
KivSequence::Block& KivSequence::makeRoom(std::size_t additional)
{
    const std::size_t held = count();
    if (block && additional <= block->capacity - block->head - held)
        return *block;
    if (additional > mostElements - held)
        throw std::length_error("a collection holds more than four billion elements");
    const std::size_t capacity = std::min(std::max({held + additional, 2 * held, leastCapacity}), mostElements);
    std::unique_ptr<Block, Release> grown(new (::operator new(sizeof(Block) + capacity * sizeof(void*))) Block());
    if (block) {
        std::copy_n(block->objects(), held, grown->objects());
        *grown = std::move(*block);
        grown->head = 0;
    }
    grown->capacity = static_cast<std::uint32_t>(capacity);
    block = std::move(grown);
    return *block;
}

// The index, if the question is worth one and there is memory for it; else null.
const KivSequence::Index* KivSequence::indexForQuestion(bool aboutNames) const
{
    if (block->count <= smallCount)
        return nullptr;
    if (block->index && (block->index->hasNames || !aboutNames))
        return block->index.get();
    if (block->questions++ < fewQuestions)
        return nullptr;
    try {
        auto made = std::make_unique<Index>();
        made->hasNames = aboutNames;
        for (KivObject* const object : block->all())
            made->add(object);
        block->index = std::move(made);
        return block->index.get();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void KivSequence::append(KivObject* object)
{
    Block& room = makeRoom(1);
    try {
        if (room.index)
            room.index->add(object);
    } catch (const std::bad_alloc&) {
        room.index.reset(); // made anew when it is asked next
    }
    room.objects()[room.count++] = object;
}

std::size_t KivSequence::indexOfObject(const KivObject* object) const
{
    if (!block)
        return npos;
    if (const Index* const index = indexForQuestion(false)) {
        const auto found = index->firsts.find(object);
        return found == index->firsts.end() ? npos : index->placeOf(found->second);
    }
    const auto all = block->all();
    const auto found = std::find(all.begin(), all.end(), object);
    return found == all.end() ? npos : static_cast<std::size_t>(found - all.begin());
}

bool KivSequence::removeObject(const KivObject* object, bool mayRepeat)
{
    std::size_t place = npos;
    // A look from both ends at once takes no longer than moving what lies between the object and the nearer end.
    for (std::size_t front = 0, back = block && !block->index ? block->count : 0; front < back && place == npos;
         ++front)
        if (objectAt(front) == object)
            place = front;
        else if (objectAt(--back) == object && !mayRepeat)
            place = back;
    if (place == npos)
        place = indexOfObject(object);
    if (place == npos)
        return false;
    if (block->index)
        block->index->remove(object, place);
    KivObject** const first = block->objects();
    KivObject** const removed = first + place;
    if (place < block->count / 2) {
        std::copy_backward(first, removed, removed + 1);
        ++block->head;
    } else {
        std::copy(removed + 1, first + block->count, removed);
    }
    --block->count;
    return true;
}

KivObject* KivSequence::objectNamed(const KivString& name) const
{
    if (!block)
        return nullptr;
    const auto all = block->all();
    if (const Index* const index = indexForQuestion(true)) {
        const auto found = index->names.lower_bound({name, 0});
        return found != index->names.end() && found->first == name ? all[index->placeOf(found->second)] : nullptr;
    }
    const auto found = std::find_if(all.begin(), all.end(), [&](KivObject* each) { return each->getName() == name; });
    return found == all.end() ? nullptr : *found;
}

void KivSequence::renamed(KivObject* object, const KivString& oldName) noexcept
{
    Index* const index = block ? block->index.get() : nullptr;
    if (!index || !index->hasNames || !index->firsts.contains(object))
        return;
    if (auto entry = index->names.extract({oldName, index->firsts[object]})) {
        entry.value().first = object->getName();
        index->names.insert(std::move(entry));
    }
}

// What belongs to an element is mostly made right behind it and lies there in memory, up to the next one: objects in
// one stretch, texts and collections in another. Whole stretches come faster than the pieces of them that are needed,
// which have to be found first. What lies far apart does not belong together.
void KivSequence::fetchAhead(std::size_t index) const noexcept
{
    const auto fetch = [](const void* begin, const void* end) {
        const std::size_t length = reinterpret_cast<std::uintptr_t>(end) - reinterpret_cast<std::uintptr_t>(begin);
        for (std::size_t at = 0; length <= 65536 && at < std::min<std::size_t>(length, 8192); at += 64)
            __builtin_prefetch(static_cast<const char*>(begin) + at);
    };
    const KivObject* const* const next = block->objects() + index;
    if (next[1] && next[2] && next[3]) {
        fetch(next[2], next[3] + 1);
        fetch(next[1]->name.text(), next[2]->name.text());
    }
}
