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
void sortByPosition(std::vector<Element*>& elements, int (*compare)(const void*, const void*))
{
    const auto before = [compare](Element* a, Element* b) { return compare(&a, &b) < 0; };
    if (!std::is_sorted(elements.begin(), elements.end(), before))
        std::stable_sort(elements.begin(), elements.end(), before);
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
    attributeOrder.clear();
    attributeOrder.reserve(theClass.getAttributeCount());
    for (std::size_t i = 0; i < theClass.getAttributeCount(); ++i)
        if (KivAttribute* const attribute = theClass.getAttribute(i))
            attributeOrder.push_back(attribute);
    sortByPosition(attributeOrder, compareAttributePos);
    return attributeOrder;
}

const std::vector<KivArgument*>& argumentsByPosition(const KivLinkTree<KivArgument>& arguments)
{
    argumentOrder.assign(arguments.begin(), arguments.end());
    sortByPosition(argumentOrder, compareArgumentPos);
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
