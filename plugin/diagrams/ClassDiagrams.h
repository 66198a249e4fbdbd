#pragma once

#include "kiv/KivPackage.h"

/// The writers of class diagrams and their views. A view writer works at the current level and leaves it as it found
/// it; `offset` is added to object numbers to make the diagram's view numbers. It returns 1 when it drew the element
/// and 0 when not.

/// Writes one class diagram; `diagramIndex` counts the diagrams written before it. Leaves the level one higher than it
/// found it. Returns 1.
int printClassDiagrams(KivClassDiagram* diagram, int diagramIndex);

int printClassesInDiagram(KivClassDiagram* diagram, KivClass* theClass, int offset);
int printAssociationsInDiagram(KivClassDiagram* diagram, KivAssociation* association, int offset);
/// Counts as drawn whatever its ends are.
int printInheritanceInDiagram(KivClassDiagram* diagram, KivGeneralization* generalization, int offset);
int printRealizationInDiagram(KivClassDiagram* diagram, KivRealization* realization, int offset);
int printUsesInDiagram(KivClassDiagram* diagram, KivDependency* dependency, int offset);

/// The number of the first inheritance view that `printInheritanceInDiagram` writes, or 0 when it writes none.
int firstInheritanceView(const KivClassDiagram& diagram, const KivGeneralization& generalization, int offset);
