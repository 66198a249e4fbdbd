#pragma once

#include "kiv/KivOptions.h"

#include <string>
#include <string_view>
#include <vector>

/// The commands behind the command line. Each returns the process's exit code and reports failures on standard error.

enum ExitCode : int {
    done = 0,
    exportFailed = 1,
    wrongUsage = 2,
    invalidModel = 3,
};

/// A value for an option of the bridge, by the option's name.
struct OptionValue {
    std::string name;
    std::string value;
};

struct ExportRequest {
    std::string model;  ///< path, or `-` for standard input
    std::string output; ///< path, `-` for standard output, or empty for the model's name
    std::string log;    ///< path, `-` for standard error, or empty
    std::string statisticsFile;
    std::vector<OptionValue> options; ///< in the order given; the last one for a name holds
    bool isQuiet = false;
    bool showsStatistics = false;
};

int runExport(const ExportRequest& request);

/// Lists the options of the bridge.
int runOptions(bool asJson);

/// Why `option` cannot be given to an export, or the empty text when it can.
[[nodiscard]] std::string whyNotAnOption(std::string_view option);

/// The name of the output when none is given: the model's without its folder and ending, with `.mdl`.
[[nodiscard]] std::string defaultOutput(const std::string& model);

/// A text for a terminal or a log: `petal: ` and the message, as a line on standard error.
void report(std::string_view message);
