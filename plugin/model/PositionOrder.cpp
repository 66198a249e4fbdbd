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

template <class Element>
auto beforeBy(int (*compare)(const void*, const void*))
{
    return [compare](const Element* a, const Element* b) { return compare(&a, &b) < 0; };
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
    collectByPosition(theClass.attributes, attributeOrder, beforeBy<KivAttribute>(compareAttributePos));
    return attributeOrder;
}

const std::vector<KivArgument*>& argumentsByPosition(const KivLinkTree<KivArgument>& arguments)
{
    collectByPosition(arguments, argumentOrder, beforeBy<KivArgument>(compareArgumentPos));
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
