#include "tool/arguments/Arguments.h"

#include "text/Words.h"
#include "tool/terminal/Terminal.h"

#include <algorithm>
#include <map>

namespace {

const std::map<std::string, ColourUse> colourUses = {
    {"auto", ColourUse::automatic}, {"always", ColourUse::always}, {"never", ColourUse::never}};

} // namespace

CLI::Validator oneOf(const std::vector<std::string>& words)
{
    std::string expected;
    for (std::size_t i = 0; i < words.size(); ++i)
        expected.append(i == 0 ? "" : i + 1 < words.size() ? ", " : " or ").append(words[i]);
    const auto choose = [words, expected](std::string& text) {
        const auto word = std::find(words.begin(), words.end(), text::lowerCase(text));
        if (word == words.end())
            return expected + " expected, found '" + text + "'";
        text = *word;
        return std::string();
    };
    return {choose, ""};
}

// Of all commands that say how bad something is, or what is different.
void addColourOption(CLI::App& command)
{
    command
        .add_option_function<std::string>(
            "--color", [](const std::string& use) { useColours(colourUses.at(use)); },
            "Colours of what is printed (default: auto, on a terminal)")
        ->option_text("auto|always|never")
        ->transform(oneOf({"auto", "always", "never"}));
}

// The options of all commands that take designs of other tools.
void addDesignOptions(CLI::App& command, DesignRequest& request, std::string (*check)(const std::string&))
{
    command.add_option("--from", request.format, "Format of the design (default: told by its content)")
        ->type_name("FORMAT")
        ->check(CLI::Validator(check, ""));
    command
        .add_flag_callback(
            "--layout", [&request] { request.hasLayout = true; },
            "Place boxes without places, in a model file too (default: in designs alone)")
        ->disable_flag_override();
    command
        .add_flag_callback(
            "--no-layout", [&request] { request.hasLayout = false; },
            "Leave boxes without places and designs without diagrams as they are")
        ->disable_flag_override();
    command.add_option("--report", request.reportFile, "Write what was left out or made up, and the warnings, as JSON")
        ->type_name("FILE");
}

// The options of all commands that read Rose files.
void addReadOptions(CLI::App& command, ReadRequest& request)
{
    command.add_option("--charset", request.charset, "Encoding of the files (default: told by their content)")
        ->type_name("NAME")
        ->check(CLI::Validator(whyNotACharset, ""));
    command.add_option("--path", request.paths, "Folder behind a symbol in the paths of controlled units")
        ->option_text("NAME=DIR")
        ->allow_extra_args(false)
        ->check(CLI::Validator(whyNotAPath, ""))
        ->take_all();
    command
        .add_option("--units-within", request.unitsWithin,
                    "Read units from this folder and those in it alone, may be repeated")
        ->option_text("DIR")
        ->allow_extra_args(false)
        ->check(CLI::Validator(whyNotAFolder, ""))
        ->take_all();
    command.add_flag("--no-units", request.ignoresUnits, "Leave controlled units out");
}

void addFiles(CLI::App& command, std::vector<std::string>& files)
{
    command.add_option("FILE", files, "The Rose files; - reads standard input")->required()->option_text("...");
}
