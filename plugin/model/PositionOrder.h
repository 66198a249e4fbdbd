#pragma once

#include "kiv/KivRelationship.h"

#include <vector>

/// Elements in ascending position, equal positions in collection order. The results are scratch space: each function
/// fills one array anew at every call, and `releasePositionOrders` gives the memory back at the end of an export.
const std::vector<KivAttribute*>& attributesByPosition(const KivClass& theClass);
const KivOperationByPosition& operationsByPosition(const KivClass& theClass);
/// For the arguments of an operation and the template parameters of a class.
const std::vector<KivArgument*>& argumentsByPosition(const KivLinkTree<KivArgument>& arguments);
const KivAttributeByPosition& qualifiersByPosition(const KivAssociationRole& role);
const KivTypeValueByPosition& literalsByPosition(const KivType& type);

void releasePositionOrders() noexcept;
