#pragma once

#include "tool/commands/Commands.h"

#include <CLI/CLI.hpp>
#include <map>
#include <string>
#include <vector>

/// The options of `petal export` that set options of the bridge. Short forms and long forms set the same options;
/// whichever comes last on the command line holds. Every occurrence is noted when the command line has been read, in
/// its order.
class ExportOptions {
public:
    /// Adds them to `command`, which must stay.
    explicit ExportOptions(CLI::App& command);

    /// What was given, in the order of the command line.
    [[nodiscard]] std::vector<OptionValue> values() const;

private:
    struct Scale {
        std::vector<const KivBridgeOptionLiteral*> targets;
        std::vector<std::string> percents;
    };

    void addFlag(const std::string& name, const KivBridgeOptionLiteral& option, const KivOptionEnumLiteral& value,
                 const std::string& description);
    void addScale(const std::string& name, std::vector<const KivBridgeOptionLiteral*> targets,
                  const std::string& description);

    CLI::App& app;
    std::vector<std::string> assignments;
    std::vector<std::string> types;
    std::map<std::string, OptionValue> flags;
    std::map<std::string, Scale> scales;
};
