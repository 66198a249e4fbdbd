#include "kiv/KivIbmRationalRose98ExportDllInterface.h"

namespace {

constexpr const char* BRDproductFileExtension[] = {"mdl", nullptr};

} // namespace

void KivIbmRationalRose98ExportDllInterface::getOptionList(KivOptionList& options)
{
    options.removeAll();
    options.append(BP_FILE.generateOption(true, BRDproductFileExtension, "Default", true));
    options.append(BP_SUPPORTED_TYPES.generateOption(false));
    options.append(BP_EXPORT_FOREIGN_KEY_ATTRIBUTES.generateOption(false));
    options.append(BP_GENERATE_QUALIFIERS.generateOption(false));
    options.append(BP_SHOW_CONSTRAINTS_IN_DIAGRAMS.generateOption(false));
    options.append(BP_USE_GRAPHICAL_INFORMATION.generateOption(false));
    options.append(BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM.generateOption(false));
    options.append(BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM.generateOption(false));
}

KivString KivIbmRationalRose98ExportDllInterface::getMappingSpecificationXmlFile()
{
    return "KivIbmRationalRoseExport";
}
