#include "driver/Cleanup.h"

#include "diagrams/Geometry.h"
#include "model/ExportState.h"
#include "model/Numbering.h"
#include "petal/PetalFile.h"
#include "types/TypeNames.h"

#include <pthread.h>

namespace {

// A thread that is cancelled ends in the next thing that may take long, such as a write; here it has to wait.
class WithoutCancellation {
public:
    WithoutCancellation() { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before); }
    ~WithoutCancellation() { pthread_setcancelstate(before, nullptr); }
    WithoutCancellation(const WithoutCancellation&) = delete;
    WithoutCancellation& operator=(const WithoutCancellation&) = delete;

private:
    int before = PTHREAD_CANCEL_ENABLE;
};

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
    const WithoutCancellation wholly;
    theFile.close();
    clearTypeMarks();
    releaseTypeNames();
    movePackagesBack();
    resetNumbers();
    releaseProjections();
}
