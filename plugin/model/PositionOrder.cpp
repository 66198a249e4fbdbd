#include "model/PositionOrder.h"

#include "kiv/KivPositionComparators.h"

#include <algorithm>

namespace {

std::vector<KivAttribute*> attributeOrder;
std::vector<KivArgument*> argumentOrder;
KivOperationByPosition operationOrder;
KivAttributeByPosition qualifierOrder;
KivTypeValueByPosition literalOrder;

template <class Element>
int comparePositions(const void* a, const void* b)
{
    const std::int16_t x = (*static_cast<Element* const*>(a))->position;
    const std::int16_t y = (*static_cast<Element* const*>(b))->position;
    return x == y ? 0 : x > y ? 1 : -1;
}

// Most collections stand in position order already; sorting needs memory of its own.
template <class Element>
void collectByPosition(const KivSequenceOf<Element>& collection, std::vector<Element*>& order,
                       int (*compare)(const void*, const void*))
{
    const std::size_t count = collection.count();
    order.clear();
    order.reserve(count);
    bool isSorted = true;
    for (std::size_t i = 0; i < count; ++i) {
        Element* const element = collection.at(i);
        if (!element)
            continue;
        isSorted = isSorted && (order.empty() || order.back()->position <= element->position);
        order.push_back(element);
    }
    if (!isSorted)
        std::stable_sort(order.begin(), order.end(), [compare](Element* a, Element* b) { return compare(&a, &b) < 0; });
}

} // namespace

int compareAttributePos(const void* a, const void* b)
{
    return comparePositions<KivAttribute>(a, b);
}

int compareArgumentPos(const void* a, const void* b)
{
    return comparePositions<KivArgument>(a, b);
}

const std::vector<KivAttribute*>& attributesByPosition(const KivClass& theClass)
{
    collectByPosition(theClass.attributes, attributeOrder, compareAttributePos);
    return attributeOrder;
}

const std::vector<KivArgument*>& argumentsByPosition(const KivLinkTree<KivArgument>& arguments)
{
    collectByPosition(arguments, argumentOrder, compareArgumentPos);
    return argumentOrder;
}

const KivOperationByPosition& operationsByPosition(const KivClass& theClass)
{
    theClass.getOperationByPosition(operationOrder);
    return operationOrder;
}

const KivAttributeByPosition& qualifiersByPosition(const KivAssociationRole& role)
{
    role.getQualifierAttributeByPosition(qualifierOrder);
    return qualifierOrder;
}

const KivTypeValueByPosition& literalsByPosition(const KivType& type)
{
    type.getTypeValueByPosition(literalOrder);
    return literalOrder;
}

void releasePositionOrders() noexcept
{
    operationOrder.removeAll();
    qualifierOrder.removeAll();
    literalOrder.removeAll();
    std::vector<KivAttribute*>().swap(attributeOrder);
    std::vector<KivArgument*>().swap(argumentOrder);
}
