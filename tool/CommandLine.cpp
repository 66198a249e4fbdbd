#include "tool/CommandLine.h"

#include "text/NearestName.h"
#include "tool/commands/Commands.h"
#include "tool/ExportOptions.h"
#include "tool/HelpFormatter.h"
#include "tool/HelpTexts.h"
#include "tool/input/DesignImport.h"
#include "tool/terminal/Terminal.h"
#include "tool/VersionText.h"

#include <algorithm>
#include <CLI/CLI.hpp>
#include <functional>
#include <iostream>
#include <limits>
#include <memory>

namespace {

const std::map<std::string, ColourUse> colourUses = {
    {"auto", ColourUse::automatic}, {"always", ColourUse::always}, {"never", ColourUse::never}};

// Of all commands that say how bad something is, or what is different.
void addColourOption(CLI::App& command)
{
    command
        .add_option_function<std::string>(
            "--color", [](const std::string& use) { useColours(colourUses.at(use)); },
            "Colours of what is printed (default: auto, on a terminal)")
        ->option_text("auto|always|never")
        ->check(CLI::IsMember({"auto", "always", "never"}).description(""));
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

// A command and what it does when the command line has been read.
struct Command {
    CLI::App* app;
    std::function<int()> run;
};

Command addExportCommand(CLI::App& app)
{
    auto request = std::make_shared<ExportRequest>();
    CLI::App* const command = app.add_subcommand("export", exportHelp);
    command->add_option("MODEL", request->models, "The model files or designs; - reads standard input")
        ->required()
        ->option_text("...");
    command
        ->add_option("-o,--output", request->output,
                     "The file to write, or the folder, which ends in /; - writes to standard output (default: MODEL's "
                     "name with .mdl, here)")
        ->type_name("FILE|DIR/");
    const auto options = std::make_shared<ExportOptions>(*command);
    command->add_option("--log", request->log, "Write every message of the export, one a line; - is standard error")
        ->type_name("FILE");
    command->add_flag("-q,--quiet", request->isQuiet, "Say nothing but errors");
    command->add_flag("--stats", request->showsStatistics, "Say what the export cost");
    command
        ->add_option("--stats-json", request->statisticsFile,
                     "Write what the export cost as JSON; - is standard output")
        ->type_name("FILE");
    addDesignOptions(*command, request->design, whyNotAFormat);
    addReadOptions(*command, request->reading);
    command->add_flag("--strict", request->isStrict, "Write nothing when there are warnings");
    addColourOption(*command);
    return {command, [request, options] {
                request->options = options->values();
                return runExport(*request);
            }};
}

Command addCheckCommand(CLI::App& app)
{
    auto request = std::make_shared<CheckRequest>();
    CLI::App* const command = app.add_subcommand("check", checkHelp);
    addFiles(*command, request->files);
    addReadOptions(*command, request->reading);
    command->add_flag("--json", request->asJson, "As JSON");
    command->add_flag("--notes", request->showsNotes, "Also what says nothing against the file");
    command
        ->add_option("--fail-on", request->leastFault,
                     "Exit with 1 for findings as bad as this or worse (default: warning, but a unit that is not "
                     "there is a note)")
        ->option_text("SEVERITY")
        ->check(CLI::IsMember({"note", "warning", "error"}).description(""));
    command->add_flag("-q,--quiet", request->isQuiet, "Do not say how many findings there are");
    addColourOption(*command);
    return {command, [request] { return runCheck(*request); }};
}

Command addTreeCommand(CLI::App& app)
{
    auto request = std::make_shared<TreeRequest>();
    CLI::App* const command = app.add_subcommand("tree", treeHelp);
    addFiles(*command, request->files);
    command->add_option("--depth", request->depth, "Number of levels (default: all)")
        ->type_name("N")
        ->check(CLI::Range(std::size_t{1}, std::numeric_limits<std::size_t>::max()).description(""));
    command->add_flag("--full", request->isFull, "One fact a line, in a stable order, of the file without its units");
    addReadOptions(*command, request->reading);
    addColourOption(*command);
    return {command, [request] { return runTree(*request); }};
}

Command addDumpCommand(CLI::App& app)
{
    auto request = std::make_shared<DumpRequest>();
    CLI::App* const command = app.add_subcommand("dump", dumpHelp);
    command->add_option("FILE", request->input, "The Rose file; - reads standard input")->required()->type_name("");
    CLI::Option* const asJson = command->add_flag("--json", request->asJson, "As one tree in JSON");
    CLI::Option* const output =
        command->add_option("-o,--output", request->output, "The JSON file to write (default: standard output)")
            ->type_name("FILE");
    CLI::Option* const csv =
        command->add_option("--csv", request->csvFolder, "As tables, a CSV file each in this folder")
            ->type_name("DIR")
            ->excludes(asJson)
            ->excludes(output);
    command->add_option("--sqlite", request->sqliteFile, "As tables in an SQLite database; - is standard output")
        ->type_name("FILE")
        ->excludes(asJson)
        ->excludes(output)
        ->excludes(csv);
    addReadOptions(*command, request->reading);
    command->add_flag("-q,--quiet", request->isQuiet, "Say nothing but errors");
    addColourOption(*command);
    return {command, [request] { return runDump(*request); }};
}

Command addDiffCommand(CLI::App& app)
{
    auto request = std::make_shared<DiffRequest>();
    CLI::App* const command = app.add_subcommand("diff", diffHelp);
    command->add_option("OLD", request->oldFile, "The file as it was, of Rose or any tool; - reads standard input")
        ->required()
        ->type_name("");
    command->add_option("NEW", request->newFile, "The file as it is, of Rose or any tool; - reads standard input")
        ->required()
        ->type_name("");
    CLI::Option* const ofModelOnly = command->add_flag("--model-only", request->ofModelOnly, "Nothing of diagrams");
    command->add_flag("--diagrams-only", request->ofDiagramsOnly, "Nothing but diagrams")->excludes(ofModelOnly);
    command->add_option("--only", request->only, "Only what was added, removed, changed or moved")
        ->type_name("SORT")
        ->check(CLI::IsMember({"added", "removed", "changed", "moved"}).description(""));
    command->add_flag("--all", request->withAll, "Also what tools change by themselves: numbers, units, sizes");
    CLI::Option* const asJson = command->add_flag("--json", request->asJson, "As JSON");
    CLI::Option* const asCounts =
        command->add_flag("--stat", request->asCounts, "Numbers of changes alone")->excludes(asJson);
    command->add_option("--html", request->pageFile, "Write a page for a browser instead; - is standard output")
        ->type_name("FILE")
        ->excludes(asJson)
        ->excludes(asCounts);
    addReadOptions(*command, request->reading);
    command->add_flag("-q,--quiet", request->isQuiet, "Say nothing but errors; the exit code tells");
    addColourOption(*command);
    return {command, [request] { return runDiff(*request); }};
}

Command addGitCommand(CLI::App& app)
{
    auto request = std::make_shared<GitRequest>();
    CLI::App* const command = app.add_subcommand("git", gitHelp);
    CLI::Option* const enables =
        command->add_flag("--enable", request->enables, "Let git compare Rose files with petal");
    CLI::Option* const disables = command->add_flag("--disable", request->disables, "Undo that");
    CLI::Option* const compares = command->add_flag("--diff", request->comparesFiles, "For git: compare two files");
    CLI::Option* const writes = command->add_flag("--text", request->writesText, "For git: write a file as text");
    command->add_option("WORDS", request->words, "What git hands over to --diff and --text")->type_name("");
    enables->excludes(disables)->excludes(compares)->excludes(writes);
    disables->excludes(compares)->excludes(writes);
    compares->excludes(writes);
    return {command, [request] { return runGitCommand(*request); }};
}

Command addBrowseCommand(CLI::App& app)
{
    auto request = std::make_shared<BrowseRequest>();
    CLI::App* const command = app.add_subcommand("browse", browseHelp);
    addFiles(*command, request->files);
    command
        ->add_option("-o,--output", request->output,
                     "The page to write, or the folder, which ends in /; - writes to standard output (default: FILE's "
                     "name with .html, here)")
        ->type_name("FILE|DIR/");
    addReadOptions(*command, request->reading);
    command->add_flag("-q,--quiet", request->isQuiet, "Say nothing but errors");
    addColourOption(*command);
    return {command, [request] { return runBrowse(*request); }};
}

Command addDrawCommand(CLI::App& app)
{
    auto request = std::make_shared<DrawRequest>();
    CLI::App* const command = app.add_subcommand("draw", drawHelp);
    addFiles(*command, request->files);
    command->add_option("--diagram", request->diagrams, "Name of a diagram to draw, may be repeated (default: all)")
        ->option_text("NAME")
        ->allow_extra_args(false)
        ->take_all();
    command
        ->add_option("-o,--output", request->output,
                     "The folder for the pictures, or the file for one, which ends in .svg, .png or .pdf; - writes "
                     "to standard output (default: here)")
        ->type_name("FILE|DIR/");
    command->add_option("--format", request->format, "svg, png or pdf (default: told by the file's ending, else svg)")
        ->type_name("FORMAT")
        ->check(CLI::Validator(whyNotAnImageFormat, ""));
    CLI::Option* const list =
        command->add_flag("--list", request->listsDiagrams, "List the diagrams, their kinds and names, and draw none");
    command->add_flag("--json", request->asJson, "With --list: the list as JSON")->needs(list);
    addReadOptions(*command, request->reading);
    command->add_flag("-q,--quiet", request->isQuiet, "Say nothing but errors");
    addColourOption(*command);
    return {command, [request] { return runDraw(*request); }};
}

Command addImportCommand(CLI::App& app)
{
    auto request = std::make_shared<ImportRequest>();
    CLI::App* const command = app.add_subcommand("import", importHelp);
    command->add_option("DESIGN", request->input, "The design; - reads standard input")->type_name("");
    command
        ->add_option("-o,--output", request->output,
                     "The file to write, or the folder, which ends in /; - writes to standard output (default: "
                     "DESIGN's name with .model.json, here)")
        ->type_name("FILE|DIR/");
    addDesignOptions(*command, request->design, whyNotAFormat);
    addReadOptions(*command, request->reading);
    command->add_flag("-q,--quiet", request->isQuiet, "Say nothing but errors");
    command->add_flag("--list-formats", request->listsFormats, "List the formats of designs and exit");
    addColourOption(*command);
    return {command, [request] { return runImport(*request); }};
}

Command addConvertCommand(CLI::App& app)
{
    auto request = std::make_shared<ConvertRequest>();
    CLI::App* const command = app.add_subcommand("convert", convertHelp);
    command->add_option("IN", request->input, "The Rose file, design or model file; - reads standard input")
        ->type_name("");
    command
        ->add_option("-o,--output", request->output,
                     "The file to write, or the folder, which ends in /; - writes to standard output (default: IN's "
                     "name with the ending of the format, here)")
        ->type_name("FILE|DIR/");
    addDesignOptions(*command, request->design, whyNotAFormatIn);
    command->add_option("--to", request->target, "Format to write (default: told by the ending of the output)")
        ->type_name("FORMAT")
        ->check(CLI::Validator(whyNotAFormatOut, ""));
    addReadOptions(*command, request->reading);
    command->add_flag("-q,--quiet", request->isQuiet, "Say nothing but errors");
    command->add_flag("--list-formats", request->listsFormats, "List the formats, whether they come in or go out");
    addColourOption(*command);
    return {command, [request] { return runConvert(*request); }};
}

Command addOptionsCommand(CLI::App& app)
{
    auto asJson = std::make_shared<bool>(false);
    CLI::App* const command = app.add_subcommand("options", optionsHelp);
    command->add_flag("--json", *asJson, "As JSON");
    return {command, [asJson] { return runOptions(*asJson); }};
}

// "; did you mean 'export'?", or where to find the commands.
std::string nearestCommand(std::string_view name, const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::App* const command : app.get_subcommands({}))
        names.push_back(command->get_name());
    const auto nearest = text::nearestName(name, std::vector<std::string_view>(names.begin(), names.end()));
    return nearest ? "; did you mean '" + std::string(*nearest) + "'?" : "; see petal --help";
}

// Without the name of a command it is the same as `--help`.
Command addHelpCommand(CLI::App& app)
{
    auto name = std::make_shared<std::string>();
    CLI::App* const command = app.add_subcommand("help", helpHelp);
    command->add_option("COMMAND", *name, "The command to describe")->type_name("");
    return {command, [&app, name] {
                const auto isNamed = [&](const CLI::App* each) { return each->get_name() == *name; };
                const std::vector<CLI::App*> described = app.get_subcommands(isNamed);
                if (described.empty()) {
                    report("there is no command '" + *name + "'" + nearestCommand(*name, app));
                    return static_cast<int>(wrongUsage);
                }
                std::cout << described.front()->help("petal");
                return endOfOutput(done, exportFailed);
            }};
}

bool isCommand(const CLI::App& app, const std::string& name)
{
    const auto isNamed = [&](const CLI::App* command) { return command->get_name() == name; };
    return !app.get_subcommands(isNamed).empty();
}

// The first argument that gives an empty value to a flag of `command`, which the parser would take for none; or null.
const char* flagWithEmptyValue(const CLI::App& command, int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (!argument.starts_with("--") || !argument.ends_with('='))
            continue;
        const CLI::Option* const option = command.get_option_no_throw(argument.substr(0, argument.size() - 1));
        if (option && option->get_items_expected_max() == 0)
            return argv[i];
    }
    return nullptr;
}

// Why the command line cannot be meant, or the empty text.
std::string faultBeforeParsing(const CLI::App& app, const std::vector<Command>& commands, int argc, char** argv)
{
    if (argc > 1 && argv[1][0] != '-' && !isCommand(app, argv[1]))
        return "there is no command '" + std::string(argv[1]) + "'" + nearestCommand(argv[1], app);
    for (const Command& command : commands)
        if (const char* const flag = flagWithEmptyValue(*command.app, argc, argv))
            return std::string(flag) + ": this option takes no value";
    return "";
}

} // namespace

int runCommandLine(int argc, char** argv)
{
    CLI::App app(mainHelp, "petal");
    app.formatter(std::make_shared<HelpFormatter>());
    app.set_help_flag("-h,--help", "Describe the command and exit");
    app.set_version_flag("-V,--version", versionText, "Say which version this is, how it was built, and exit");
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.require_subcommand(1);
    const std::vector<Command> commands = {addExportCommand(app), addImportCommand(app),  addConvertCommand(app),
                                           addCheckCommand(app),  addTreeCommand(app),    addDumpCommand(app),
                                           addDiffCommand(app),   addGitCommand(app),     addDrawCommand(app),
                                           addBrowseCommand(app), addOptionsCommand(app), addHelpCommand(app)};
    for (CLI::App* const command : app.get_subcommands({}))
        command->group("Commands");
    std::string helpFlag = "--help";
    if (argc == 2 && std::string_view(argv[1]) == "help")
        argv[1] = helpFlag.data();
    if (const std::string fault = faultBeforeParsing(app, commands, argc, argv); !fault.empty()) {
        report(fault);
        return wrongUsage;
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& success) { // help or version
        return endOfOutput(app.exit(success), exportFailed);
    } catch (const CLI::ParseError& error) {
        reportLines(error.what());
        std::cerr << "Run 'petal --help' or 'petal COMMAND --help' for usage.\n";
        return wrongUsage;
    }
    const auto isMeant = [](const Command& command) { return command.app->parsed(); };
    return std::find_if(commands.begin(), commands.end(), isMeant)->run();
}
