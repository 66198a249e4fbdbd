#pragma once

#include "kiv/KivCollections.h"

#include <algorithm>
#include <vector>

/// The elements of a collection in ascending `position`, equal positions in collection order.
template <class Element>
class KivPositionView {
public:
    /// Takes the elements of `collection`, null places left out. The view keeps its memory from one filling to the
    /// next.
    void fill(const KivSequenceOf<Element>& collection)
    {
        elements.clear();
        elements.reserve(collection.count());
        bool isSorted = true;
        for (Element* element : collection) {
            if (!element)
                continue;
            isSorted = isSorted && (elements.empty() || elements.back()->position <= element->position);
            elements.push_back(element);
        }
        if (!isSorted)
            std::stable_sort(elements.begin(), elements.end(),
                             [](const Element* a, const Element* b) { return a->position < b->position; });
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
