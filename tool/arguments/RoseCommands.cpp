#include "tool/arguments/Arguments.h"
#include "tool/arguments/HelpTexts.h"

#include <charconv>
#include <memory>

namespace {

std::string whyNotADepth(const std::string& text)
{
    std::size_t levels = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), levels);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber && levels > 0 ? "" : "a number of levels from 1 on expected, found '" + text + "'";
}

} // namespace

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
        ->transform(oneOf({"note", "warning", "error"}));
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
        ->check(CLI::Validator(whyNotADepth, ""));
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
        ->transform(oneOf({"added", "removed", "changed", "moved"}));
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
