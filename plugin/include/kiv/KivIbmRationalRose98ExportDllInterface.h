#pragma once

#include "kiv/KivMessages.h"
#include "kiv/KivOptions.h"
#include "kiv/KivPackage.h"

/// The plug-in: writes a model as an IBM Rational Rose 98 model file (petal notation, extension "mdl").
///
/// Works on the calling thread and keeps its state in the process, so there is one export at a time. The object itself
/// has no state.
class __attribute__((visibility("default"))) KivIbmRationalRose98ExportDllInterface {
public:
    /// Writes `model` to the file that the option `BP_FILE` names (UTF-8; converted to the locale's encoding) and
    /// returns 1. An existing file is truncated. `name` is not used.
    ///
    /// The model is the host's. During the export its objects carry numbers and its top-level design packages hang
    /// under the one called "Logical View"; afterwards the numbers are 0. When the model had no such package, one was
    /// made: the others are back at the top then, and the new one stays in the model, empty. When it had one, the
    /// others stay under it.
    ///
    /// Failures are exceptions of the type `KivException`, thrown after the same clean-up:
    /// `ROS_E_UNABLE_TO_OPEN_OUTPUT_FILE`, `BRIDGE_UNCONVERTIBLE_TEXT` (the path), `ROS_E_PACKAGES_NESTED_TOO_DEEP`,
    /// whatever `KivException` the log throws, and `BRIDGE_UNEXPECTED_ERROR` in place of any other exception, of
    /// another language too. A thread that is cancelled or ends inside the call cleans up likewise. What was written
    /// until then stays in the file. `ROS_E_EXPORT_RUNNING`, from a call inside a call, changes nothing. An exception
    /// while the options are read reaches the caller as it is. A failure to write to the open file is not reported: the
    /// rest of the text is dropped, so a complete file is known by its last line.
    int run(const KivString& name, KivModel& model, KivOptionList& options, KivLog& log);

    /// Replaces the content of `options` by the eight options that `run` reads, with their default values.
    void getOptionList(KivOptionList& options);

    /// Name of the bridge's mapping description, which the host resolves.
    KivString getMappingSpecificationXmlFile();
};
