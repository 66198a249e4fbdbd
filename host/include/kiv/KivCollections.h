#pragma once

#include "kiv/KivString.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <span>

class KivObject;

/// What the three container kinds of the model share: objects in the order in which they were added.
///
/// Element at index i is the i-th added of those still there. Count and element at index take constant time;
/// membership, index and removal take constant time on average, logarithmic time where elements were removed from the
/// middle. A removal keeps the order of the rest. A collection never owns its elements. An empty one is one pointer.
class __attribute__((visibility("default"))) KivSequence {
public:
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

    KivSequence() noexcept;
    KivSequence(KivSequence&& other) noexcept;
    KivSequence& operator=(KivSequence&& other) noexcept;
    KivSequence(const KivSequence&) = delete;
    KivSequence& operator=(const KivSequence&) = delete;
    ~KivSequence();

    [[nodiscard]] std::size_t count() const noexcept { return places ? places->live() : 0; }
    [[nodiscard]] bool isEmpty() const noexcept { return count() == 0; }
    void removeAll() noexcept;
    /// Makes room: the next `additional` additions neither allocate nor throw.
    void reserve(std::size_t additional);
    /// The same for additions of elements that are known to be new (`KivLinkTree::addNew`), which ask for less.
    void reserveNew(std::size_t additional);

    /// For a loop that goes into each element and has come to `index`: asks the processor for what the next ones are
    /// made of, so that a pass over a large model does not wait for each piece of it in turn. What belongs to an
    /// element is mostly made right behind it and lies there in memory, up to the next one: objects in one stretch,
    /// texts and collections in another. Whole stretches come faster than the pieces of them that are needed, which
    /// have to be found first. Nothing changes.
    void fetchAhead(std::size_t index) const noexcept;

protected:
    /// How many elements a loop has on the way from memory.
    static constexpr std::size_t fetchDistance = 8;

    /// `index` must be below `count()`.
    [[nodiscard]] KivObject* objectAt(std::size_t index) const noexcept
    {
        return places->holes == 0 ? places->slots()[places->head + index] : objectBetweenHoles(index);
    }
    /// Asks for the element at `index`, which need not exist.
    void fetchElement(std::size_t index) const noexcept
    {
        if (places && index < places->live() && places->holes == 0)
            fetchMemory(places->slots()[places->head + index]);
    }
    /// Index of the first place that holds `object`, or `npos`.
    [[nodiscard]] std::size_t indexOfObject(const KivObject* object) const;
    void append(KivObject* object);
    /// Returns false, and changes nothing, when `object` is already there.
    bool appendOnce(KivObject* object);
    /// Takes out the first place that holds `object`; returns false when there is none. When it throws, nothing has
    /// changed; it does not throw for the first element, nor for the last one where `reserve` was called or of a
    /// collection that never had more than eight.
    bool removeObject(const KivObject* object);
    /// The first element of that exact name, or null.
    [[nodiscard]] KivObject* objectNamed(const KivString& name) const;
    /// Must be called after the name of `object` changed from `oldName`.
    void renamed(KivObject* object, const KivString& oldName) noexcept;

private:
    struct Lookup;
    // One block of memory: what there is to know, and behind it the slots. Not there while nothing was added.
    struct Places {
        std::uint32_t size = 0; // slots in use, free ones among them
        std::uint32_t capacity = 0;
        std::uint32_t head = 0;  // slots before it are free
        std::uint32_t holes = 0; // free slots between elements
        Lookup* lookup = nullptr;

        // Number of elements.
        [[nodiscard]] std::uint32_t live() const noexcept { return size - head - holes; }
        [[nodiscard]] KivObject** slots() noexcept { return reinterpret_cast<KivObject**>(this + 1); }
        [[nodiscard]] std::span<KivObject* const> used() noexcept { return {slots(), size}; }
    };
    struct Release {
        void operator()(Places* block) const noexcept;
    };
    [[nodiscard]] KivObject* objectBetweenHoles(std::size_t index) const noexcept;
    [[nodiscard]] std::size_t findSlot(const KivObject* object) const;
    // A block with at least that many slots, the elements in it.
    Places& ensureCapacity(std::size_t capacity);
    [[nodiscard]] Lookup& ensureLookup() const;
    // Whether a table finds elements; there must be places.
    [[nodiscard]] bool hasTable() const noexcept;
    void buildTable() const;

    std::unique_ptr<Places, Release> places;
};

/// Elements of one class, as the typed containers below give them.
template <class Element>
class KivSequenceOf : public KivSequence {
public:
    class Iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Element*;
        using difference_type = std::ptrdiff_t;
        using pointer = Element* const*;
        using reference = Element*;

        Iterator(const KivSequenceOf& theSequence, std::size_t theIndex) : sequence(&theSequence), index(theIndex) {}
        Element* operator*() const { return sequence->at(index); }
        Iterator& operator++()
        {
            ++index;
            sequence->fetchElement(index + fetchDistance - 1);
            return *this;
        }
        friend bool operator==(const Iterator& a, const Iterator& b) { return a.index == b.index; }

    private:
        const KivSequenceOf* sequence;
        std::size_t index;
    };

    /// `index` must be below `count()`.
    [[nodiscard]] Element* at(std::size_t index) const noexcept { return static_cast<Element*>(objectAt(index)); }
    /// Index of the first place that holds `element`, or `npos`.
    [[nodiscard]] std::size_t indexOf(const Element* element) const { return indexOfObject(element); }
    [[nodiscard]] bool contains(const Element* element) const { return indexOf(element) != npos; }
    /// Takes out the first place that holds `element`; returns false when there is none.
    bool remove(const Element* element) { return removeObject(element); }

    [[nodiscard]] Iterator begin() const { return {*this, 0}; }
    [[nodiscard]] Iterator end() const { return {*this, this->count()}; }
};

/// A vector: the same object may stand in it several times, and a place may hold null.
template <class Element>
class KivVector : public KivSequenceOf<Element> {
public:
    void add(Element* element) { this->append(element); }
    /// The same; for code that fills collections of either kind.
    void addNew(Element* element) { this->append(element); }
};

/// A link tree: holds an object at most once and never null; adding it again changes nothing.
template <class Element>
class KivLinkTree : public KivSequenceOf<Element> {
public:
    /// Returns whether the element is new.
    bool add(Element* element) { return element && this->appendOnce(element); }
    /// Adds an element that must be neither null nor there already, which is not checked.
    void addNew(Element* element) { this->append(element); }
};

/// A link tree with lookup by name. Two different objects of equal name are both kept.
template <class Element>
class KivNameLinkTree : public KivLinkTree<Element> {
public:
    /// The first added element of that exact name, or null.
    [[nodiscard]] Element* find(const KivString& name) const { return static_cast<Element*>(this->objectNamed(name)); }
    /// Must be called when an element has got another name, with the name it had before.
    void rename(Element* element, const KivString& oldName) noexcept { this->renamed(element, oldName); }
};
