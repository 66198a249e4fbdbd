#pragma once

#include "kiv/KivString.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <span>
#include <type_traits>

class KivObject;

/// What the three container kinds of the model share: objects in the order in which they were added. A collection never
/// owns its elements; an empty one is one pointer.
///
/// Count and element at index take constant time, adding constant time on average, membership, index and lookup by name
/// logarithmic time on average. A removal takes the time to move the shorter side, and keeps the order. Only additions
/// need memory; one that throws `std::bad_alloc` has changed nothing. Searches make an index of a large collection;
/// without memory for it they look at every element.
class __attribute__((visibility("default"))) KivSequence {
public:
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

    [[nodiscard]] std::size_t count() const noexcept { return block ? block->count : 0; }
    [[nodiscard]] bool isEmpty() const noexcept { return count() == 0; }
    void removeAll() noexcept { block.reset(); }
    /// Makes room: the next `additional` additions do not throw, whatever is removed in between.
    void reserve(std::size_t additional) { makeRoom(additional); }

protected:
    /// `index` must be below `count()`.
    [[nodiscard]] KivObject* objectAt(std::size_t index) const noexcept { return block->objects()[index]; }
    /// Index of the first place that holds `object`, or `npos`.
    [[nodiscard]] std::size_t indexOfObject(const KivObject* object) const;
    void append(KivObject* object);
    /// Takes out the first place that holds `object`; returns false when there is none. `mayRepeat` tells whether other
    /// places can hold it as well.
    bool removeObject(const KivObject* object, bool mayRepeat);
    /// The first element of that exact name, or null.
    [[nodiscard]] KivObject* objectNamed(const KivString& name) const;
    /// Must be called after the name of `object` changed from `oldName`.
    void renamed(KivObject* object, const KivString& oldName) noexcept;
    /// For a loop that has come to `index`: asks the processor for what the next elements are made of, so that a pass
    /// over a large model does not wait for each piece of it in turn. `index` must be that far from the end.
    void fetchAhead(std::size_t index) const noexcept;
    static constexpr std::size_t fetchDistance = 3;

private:
    friend class KivPackage;      // knows which packages are no children of it yet
    friend struct KivNewElements; // of a model file: each was made for its list

    struct Index;
    // One block of memory: what there is to know, and behind it the places. Not there while nothing was added.
    struct Block {
        std::uint32_t capacity = 0;
        std::uint32_t head = 0; // places in front of the elements, left by removals
        std::uint32_t count = 0;
        std::uint32_t questions = 0; // answered by a look at every element
        std::unique_ptr<Index> index;

        [[nodiscard]] KivObject** objects() noexcept { return reinterpret_cast<KivObject**>(this + 1) + head; }
        [[nodiscard]] std::span<KivObject* const> all() noexcept { return {objects(), count}; }
    };
    struct __attribute__((visibility("default"))) Release {
        void operator()(Block* block) const noexcept;
    };
    Block& makeRoom(std::size_t additional);
    [[nodiscard]] const Index* indexForQuestion(bool aboutNames) const;

    std::unique_ptr<Block, Release> block;
};

/// Elements of one class, as the typed containers below give them. Additions leave iterators valid.
template <class Element>
class KivSequenceOf : public KivSequence {
public:
    struct Iterator {
        using iterator_category = std::input_iterator_tag;
        using value_type = Element*;
        using difference_type = std::ptrdiff_t;
        using pointer = Element* const*;
        using reference = Element*;

        const KivSequenceOf* sequence;
        std::size_t index;

        Element* operator*() const { return sequence->at(index); }
        Iterator& operator++()
        {
            ++index;
            if constexpr (std::is_same_v<Element, KivObject>) // of these some are large
                if (index + fetchDistance < sequence->count())
                    sequence->fetchAhead(index);
            return *this;
        }
        friend bool operator==(const Iterator& a, const Iterator& b) { return a.index == b.index; }
    };

    /// `index` must be below `count()`.
    [[nodiscard]] Element* at(std::size_t index) const noexcept { return static_cast<Element*>(objectAt(index)); }
    /// Index of the first place that holds `element`, or `npos`.
    [[nodiscard]] std::size_t indexOf(const Element* element) const { return indexOfObject(element); }
    [[nodiscard]] bool contains(const Element* element) const { return indexOf(element) != npos; }

    [[nodiscard]] Iterator begin() const { return {this, 0}; }
    [[nodiscard]] Iterator end() const { return {this, this->count()}; }
};

/// A vector: the same object may stand in it several times, and a place may hold null.
template <class Element>
class KivVector : public KivSequenceOf<Element> {
public:
    void add(Element* element) { this->append(element); }
    /// Takes out the first place that holds `element`; returns false when there is none.
    bool remove(const Element* element) { return this->removeObject(element, true); }
};

/// A link tree: holds an object at most once and never null; adding it again changes nothing.
template <class Element>
class KivLinkTree : public KivSequenceOf<Element> {
public:
    /// Returns whether the element is new.
    bool add(Element* element)
    {
        const bool isNew = element && !this->contains(element);
        if (isNew)
            this->append(element);
        return isNew;
    }
    /// Returns whether the element was there.
    bool remove(const Element* element) { return this->removeObject(element, false); }
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
