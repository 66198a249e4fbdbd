#pragma once

#include "ElementFaults.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

/// The classes that diagrams draw, against those that are written and have a place there.
class DrawnClasses {
public:
    /// Takes a class of the model; `isLost`: no written package has it.
    void count(const KivClass& theClass, bool isLost);
    /// What is wrong with the boxes of `diagrams`, once all classes are counted.
    void find(const std::vector<const KivClassDiagram*>& diagrams, FaultList& list);

private:
    struct Counts {
        std::size_t met = 0; // classes of the model that it draws
        std::size_t withoutPlace = 0;
        std::size_t unwritten = 0;
    };

    std::unordered_map<const KivObject*, Counts> countsOf;
    std::vector<const KivObject*> places; // diagrams on which the class in hand has a place
};
