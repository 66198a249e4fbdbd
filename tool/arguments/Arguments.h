#pragma once

#include "tool/commands/Commands.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <vector>

// What the commands take from the command line.

/// A command and what it does when the command line has been read.
struct Command {
    CLI::App* app;
    std::function<int()> run;
};

/// Takes one of these words, in any letter case.
[[nodiscard]] CLI::Validator oneOf(const std::vector<std::string>& words);

/// Of all commands that say how bad something is, or what is different.
void addColourOption(CLI::App& command);
/// The options of all commands that take designs of other tools.
void addDesignOptions(CLI::App& command, DesignRequest& request, std::string (*check)(const std::string&));
/// The options of all commands that read Rose files.
void addReadOptions(CLI::App& command, ReadRequest& request);
/// The positional argument of all commands that take several Rose files.
void addFiles(CLI::App& command, std::vector<std::string>& files);

// Commands about designs.
[[nodiscard]] Command addExportCommand(CLI::App& app);
[[nodiscard]] Command addImportCommand(CLI::App& app);
[[nodiscard]] Command addConvertCommand(CLI::App& app);
[[nodiscard]] Command addOptionsCommand(CLI::App& app);

// Commands about Rose files.
[[nodiscard]] Command addCheckCommand(CLI::App& app);
[[nodiscard]] Command addTreeCommand(CLI::App& app);
[[nodiscard]] Command addDumpCommand(CLI::App& app);
[[nodiscard]] Command addDiffCommand(CLI::App& app);
[[nodiscard]] Command addGitCommand(CLI::App& app);
[[nodiscard]] Command addBrowseCommand(CLI::App& app);
[[nodiscard]] Command addDrawCommand(CLI::App& app);
