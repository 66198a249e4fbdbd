#include "model/PositionOrder.h"

#include "kiv/KivPositionComparators.h"

namespace {

template <class Element>
int comparePositions(const void* a, const void* b)
{
    const std::int16_t x = (*static_cast<Element* const*>(a))->position;
    const std::int16_t y = (*static_cast<Element* const*>(b))->position;
    return x == y ? 0 : x > y ? 1 : -1;
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

PositionOrder<KivAttribute> attributesByPosition(const KivClass& theClass)
{
    return {theClass.attributes, compareAttributePos};
}

PositionOrder<KivArgument> argumentsByPosition(const KivLinkTree<KivArgument>& arguments)
{
    return {arguments, compareArgumentPos};
}
