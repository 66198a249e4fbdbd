#pragma once

#include "kiv/KivCollections.h"

#include <algorithm>
#include <vector>

/// Puts the elements of `collection` into `elements`, null places left out, in the order of `before`, which must be
/// that of ascending `position`; equal positions keep the order of the collection. Most collections stand in it
/// already, and sorting needs memory of its own.
template <class Element, class Before>
void collectByPosition(const KivSequenceOf<Element>& collection, std::vector<Element*>& elements, Before before)
{
    elements.clear();
    elements.reserve(collection.count());
    bool isSorted = true;
    for (Element* const element : collection) {
        if (!element)
            continue;
        isSorted = isSorted && (elements.empty() || elements.back()->position <= element->position);
        elements.push_back(element);
    }
    if (!isSorted)
        std::stable_sort(elements.begin(), elements.end(), before);
}

/// The elements of a collection in ascending `position`, equal positions in collection order.
template <class Element>
class KivPositionView {
public:
    /// Takes the elements of `collection`, null places left out. The view keeps its memory from one filling to the
    /// next.
    void fill(const KivSequenceOf<Element>& collection)
    {
        collectByPosition(collection, elements, [](const Element* first, const Element* second) {
            return first->position < second->position;
        });
    }
    void removeAll() noexcept { std::vector<Element*>().swap(elements); }

    [[nodiscard]] std::size_t count() const noexcept { return elements.size(); }
    /// `index` must be below `count()`.
    [[nodiscard]] Element* at(std::size_t index) const noexcept { return elements[index]; }
    [[nodiscard]] auto begin() const noexcept { return elements.begin(); }
    [[nodiscard]] auto end() const noexcept { return elements.end(); }

private:
    std::vector<Element*> elements;
};

class KivAttribute;
class KivOperation;
class KivTypeValue;

using KivOperationByPosition = KivPositionView<KivOperation>;
using KivFeatureByPosition = KivPositionView<KivAttribute>;
using KivAttributeByPosition = KivFeatureByPosition;
using KivTypeValueByPosition = KivPositionView<KivTypeValue>;
