#include "tool/input/RoseText.h"

#include "text/Files.h"
#include "tool/output/TemporaryFile.h"
#include "tool/terminal/CommandLog.h"

#include "kiv/KivIbmRationalRose98ExportDllInterface.h"

#include <filesystem>

std::string roseTextOf(KivModel& model, std::string_view typeSystem)
{
    constexpr mode_t ownersOnly = 0600;
    const TemporaryFile file(std::filesystem::temp_directory_path().string(), ownersOnly);
    KivIbmRationalRose98ExportDllInterface bridge;
    KivOptionList options;
    bridge.getOptionList(options);
    options.setValue(BP_FILE.getName(), KivString(file.openablePath()));
    options.setValue(BP_SUPPORTED_TYPES.getName(), KivString(typeSystem));
    CommandLog log("");
    bridge.run(KivString(file.openablePath()), model, options, log);
    return text::readFile(file.openablePath());
}
