#include "tool/CommandLine.h"

#include "text/NearestName.h"
#include "tool/arguments/Arguments.h"
#include "tool/arguments/HelpTexts.h"
#include "tool/HelpFormatter.h"
#include "tool/VersionText.h"

#include <algorithm>
#include <iostream>
#include <memory>

namespace {

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

// "there is no option --dept; did you mean --depth?"
std::string whyNotAnOptionOf(const CLI::App& command, const std::string& argument)
{
    const std::string name = argument.substr(0, argument.find('='));
    std::vector<std::string> names;
    for (const CLI::Option* const option : command.get_options())
        for (const std::string& each : option->get_lnames())
            names.push_back("--" + each);
    const auto nearest = text::nearestName(name, std::vector<std::string_view>(names.begin(), names.end()));
    return "there is no option " + name + (nearest ? "; did you mean " + std::string(*nearest) + "?" : "");
}

// What the parser says, but of options that are not there what they could be.
std::string faultOf(const CLI::App& app, const CLI::App& command, const CLI::ParseError& error)
{
    const std::vector<std::string> rest = app.remaining(true);
    const auto option = std::find_if(rest.begin(), rest.end(),
                                     [](const std::string& word) { return word.size() > 1 && word.starts_with('-'); });
    const bool isExtra = dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr;
    return isExtra && option != rest.end() ? whyNotAnOptionOf(command, *option) : error.what();
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
    if (argc < 2)
        return "a command is expected; petal --help lists them";
    const std::string first = argv[1];
    if (!first.starts_with('-') && !isCommand(app, first))
        return "there is no command '" + first + "'" + nearestCommand(first, app);
    if (first.starts_with('-') && !app.get_option_no_throw(first))
        return whyNotAnOptionOf(app, first);
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
        const std::vector<CLI::App*> used = app.get_subcommands();
        const CLI::App& command = used.empty() ? app : *used.front();
        reportLines(faultOf(app, command, error));
        std::cerr << "Run 'petal " << (used.empty() ? "" : command.get_name() + " ") << "--help' for usage.\n";
        return wrongUsage;
    }
    const auto isMeant = [](const Command& command) { return command.app->parsed(); };
    return std::find_if(commands.begin(), commands.end(), isMeant)->run();
}
