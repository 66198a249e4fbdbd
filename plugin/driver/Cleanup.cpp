#include "driver/Cleanup.h"

#include "diagrams/ClassDiagrams.h"
#include "model/ExportState.h"
#include "model/Numbering.h"
#include "model/PositionOrder.h"
#include "petal/PetalFile.h"
#include "types/TypeNames.h"

namespace {

void clearTypeMarks()
{
    for (std::size_t i = theTrueModel->types.count(); i > 0; --i)
        if (KivType* const type = theTrueModel->types.at(i - 1))
            type->generalPointer = nullptr;
}

void movePackagesBack()
{
    if (!theTmpPackage)
        return;
    while (!theTmpPackage->childPackages.isEmpty()) {
        KivPackage* const package = theTmpPackage->childPackages.at(0);
        theTmpPackage->removeChildPackage(package);
        package->addParentPackage(theTrueModel);
    }
    theTmpPackage = nullptr;
}

void resetNumbers()
{
    KivZeroPID reset;
    theTrueModel->depthTraversal(reset, nullptr);
}

} // namespace

void cleanup()
{
    if (theFile.is_open())
        theFile.close();
    clearTypeMarks();
    releaseTypeNames();
    movePackagesBack();
    resetNumbers();
    releasePositionOrders();
    releaseDiagrams();
}
