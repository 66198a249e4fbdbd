#pragma once

#include "ElementFaults.h"

#include <vector>

/// Classes that inherit from themselves by way of others. Each generalization is followed once.
void findInheritanceCycles(const std::vector<const KivClass*>& classes, FaultList& list);
