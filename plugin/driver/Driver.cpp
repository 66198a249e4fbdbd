#include "kiv/KivIbmRationalRose98ExportDllInterface.h"

#include "driver/Cleanup.h"
#include "kiv/KivLocale.h"
#include "logical/LogicalView.h"
#include "model/ExportState.h"
#include "model/Numbering.h"
#include "petal/FixedText.h"
#include "petal/PetalWriter.h"

#include <cstdlib>
#include <cxxabi.h>
#include <vector>

namespace {

constexpr long firstNumber = 10;

// Made at load time, so that reporting a failure needs no memory for it.
const KivString bridgeName = "KivIbmRationalRose98Export";
const KivString logicalViewName = "Logical View";

// The one export that may run in the process.
class RunningExport {
public:
    RunningExport()
    {
        if (isRunning)
            ROS_E_EXPORT_RUNNING.throwException(KivString());
        isRunning = true;
    }
    ~RunningExport() { isRunning = false; }
    RunningExport(const RunningExport&) = delete;
    RunningExport& operator=(const RunningExport&) = delete;

private:
    static inline bool isRunning = false;
};

bool readBoolean(const KivBridgeOptionLiteral& option)
{
    return theOptions->getValue(option.getName()) == BOOLEAN_ENUM_VALUE_TRUE.getText();
}

float readScale(const KivBridgeOptionLiteral& option)
{
    const long percent = std::strtol(theOptions->getValue(option.getName()).text(), nullptr, 10);
    return static_cast<float>(static_cast<double>(percent) / 100.0);
}

void readOptions()
{
    useGraphicalInfo = readBoolean(BP_USE_GRAPHICAL_INFORMATION);
    useQualifier = readBoolean(BP_GENERATE_QUALIFIERS);
    exportFKattr = readBoolean(BP_EXPORT_FOREIGN_KEY_ATTRIBUTES);
    showConstraint = readBoolean(BP_SHOW_CONSTRAINTS_IN_DIAGRAMS);
    XLog = readScale(BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM);
    YLog = readScale(BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM);
}

void openFile()
{
    const KivOption* const file = theOptions->find(BP_FILE.getName());
    const KivString path = utf8ToLocale(file ? file->value : KivString());
    theFile.open(path.text());
    if (theFile.hasFailed())
        ROS_E_UNABLE_TO_OPEN_OUTPUT_FILE.throwException(path);
}

void numberModel()
{
    constexpr long viewNumberLimit = 1L << 31;
    KivSetPID numbering(firstNumber);
    theTrueModel->depthTraversal(numbering, nullptr);
    multiplier = lowBits(numbering.counter);
    nextFreeViewNumber = numbering.diagramCount * numbering.counter;
    if (numbering.diagramCount > viewNumberLimit / numbering.counter)
        ROS_E_VIEW_NUMBERS_WRAP.log(*localLog);
}

bool isDesignPackage(const KivPackage& package)
{
    return package.elementType == KivElementType::DesignPackage;
}

KivDesignPackage* createLogicalView()
{
    auto* const package = theTrueModel->create<KivDesignPackage>();
    package->setName(logicalViewName);
    theTrueModel->addChildPackage(package);
    theTmpPackage = package;
    return package;
}

// The package of that exact name; else the first whose name contains it; else a new one.
KivDesignPackage* findLogicalView()
{
    KivPackage* const exact = theTrueModel->childPackages.find(logicalViewName);
    if (exact && isDesignPackage(*exact))
        return static_cast<KivDesignPackage*>(exact);
    for (KivPackage* const package : theTrueModel->childPackages)
        if (isDesignPackage(*package) &&
            package->getName().view().find(logicalViewName.view()) != std::string_view::npos)
            return static_cast<KivDesignPackage*>(package);
    return createLogicalView();
}

// Room for the moves there and back is made first: once packages are on the move nothing may fail, or the model would
// stay half moved. Those at the front are taken out without any.
void moveUnder(KivDesignPackage* logicalView)
{
    std::vector<KivPackage*> others;
    bool areInFront = true;
    std::size_t place = 0;
    for (KivPackage* const package : theTrueModel->childPackages) {
        if (isDesignPackage(*package) && package != logicalView) {
            areInFront = areInFront && place == others.size();
            others.push_back(package);
        }
        ++place;
    }
    logicalView->reserveChildPackages(others.size());
    if (areInFront)
        theTrueModel->reserveChildPackages(others.size());
    else
        theTrueModel->childPackages.reserve(others.size());
    for (KivPackage* const package : others) {
        theTrueModel->removeChildPackage(package);
        logicalView->addChildPackage(package);
    }
}

void exportModel()
{
    openFile();
    writeHeader();
    theTmpPackage = nullptr;
    numberModel();
    KivDesignPackage* const logicalView = findLogicalView();
    moveUnder(logicalView);
    increaseIndent();
    int diagramCounter = 0;
    printPackages(1, &diagramCounter, theTrueModel, logicalView);
    writeFooter();
}

// What comes of an ending thread is no object, so a sanitizer must not ask the second handler's reference for one.
__attribute__((noinline, no_sanitize("null"))) void exportAndCleanUp()
{
    try {
        exportModel();
    } catch (const KivException&) {
        cleanup();
        throw;
    } catch (const abi::__forced_unwind&) { // the thread is cancelled or ends itself
        cleanup();
        throw;
    } catch (...) {
        cleanup();
        BRIDGE_UNEXPECTED_ERROR.throwException(bridgeName);
    }
    cleanup();
}

} // namespace

int KivIbmRationalRose98ExportDllInterface::run(const KivString& /*name*/, KivModel& model, KivOptionList& options,
                                                KivLog& log)
{
    const RunningExport running;
    localLog = &log;
    theTrueModel = &model;
    theOptions = &options;
    readOptions();
    resetIndent();
    exportAndCleanUp();
    return 1;
}
