#pragma once

#include "kiv/KivRelationship.h"

#include <algorithm>
#include <vector>

/// Compares two elements by position, as `qsort` wants it.
using PositionComparator = int (*)(const void* a, const void* b);

/// The elements of a collection in ascending position, equal positions in collection order, null places left out; to be
/// gone through while the collection stays as it is. Most collections stand in that order, and then nothing is copied.
template <class Element>
class PositionOrder {
public:
    PositionOrder(const KivSequenceOf<Element>& theCollection, PositionComparator compare)
        : collection(theCollection), isInOrder(standsInOrder(theCollection))
    {
        if (isInOrder)
            return;
        sorted.reserve(collection.count());
        std::copy_if(collection.begin(), collection.end(), std::back_inserter(sorted),
                     [](const Element* element) { return element; });
        std::stable_sort(sorted.begin(), sorted.end(),
                         [&](const Element* a, const Element* b) { return compare(&a, &b) < 0; });
    }

    class Iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = Element*;
        using difference_type = std::ptrdiff_t;
        using pointer = Element* const*;
        using reference = Element*;

        Iterator(const PositionOrder& theOrder, std::size_t theIndex) : order(&theOrder), index(theIndex) {}
        Element* operator*() const { return order->at(index); }
        Iterator& operator++()
        {
            ++index;
            return *this;
        }
        friend bool operator==(const Iterator& a, const Iterator& b) { return a.index == b.index; }

    private:
        const PositionOrder* order;
        std::size_t index;
    };
    [[nodiscard]] Iterator begin() const { return {*this, 0}; }
    [[nodiscard]] Iterator end() const { return {*this, isInOrder ? collection.count() : sorted.size()}; }

private:
    static bool standsInOrder(const KivSequenceOf<Element>& collection)
    {
        const Element* before = nullptr;
        for (const Element* const element : collection) {
            if (!element || (before && element->position < before->position))
                return false;
            before = element;
        }
        return true;
    }
    [[nodiscard]] Element* at(std::size_t index) const { return isInOrder ? collection.at(index) : sorted[index]; }

    const KivSequenceOf<Element>& collection;
    bool isInOrder;
    std::vector<Element*> sorted;
};

[[nodiscard]] PositionOrder<KivAttribute> attributesByPosition(const KivClass& theClass);
/// For the arguments of an operation and the template parameters of a class.
[[nodiscard]] PositionOrder<KivArgument> argumentsByPosition(const KivLinkTree<KivArgument>& arguments);
