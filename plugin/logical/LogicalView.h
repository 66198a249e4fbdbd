#pragma once

#include "kiv/KivPackage.h"

/// The writers of the Logical View: each writes one object of the model as one object of the petal file at the current
/// level, leaves the level as it found it unless its comment says otherwise, and returns 1.

/// Writes `package` and everything below it; `root` is 1 for the Logical View itself and 0 for every other package.
/// Class diagrams take the index `*diagramCounter` and advance it. Leaves the level one lower than it found it for a
/// package without diagrams. Throws `ROS_E_PACKAGES_NESTED_TOO_DEEP` past 512 levels below the root.
int printPackages(int root, int* diagramCounter, KivModel* model, KivDesignPackage* package);

/// Writes nothing for a class whose level code excludes it.
int printClasses(KivClass* theClass);

int printAttributes(KivAttribute* attribute);
int printOperations(KivOperation* operation);

/// The template parameters of a class or the arguments of an operation, in position order.
void printParameters(const KivLinkTree<KivArgument>& parameters);

/// Writes nothing for an association that the level code excludes, or that touches such a class.
int printAssociations(KivAssociation* association);

/// Writes the enumeration types that were named (`enumClasses`) and are not written yet, each as a class.
void createEnumClass();
