#include "Commands.h"
#include "DesignImport.h"
#include "TemporaryFile.h"
#include "Version.h"

#include "kiv/KivOptions.h"

#include <charconv>
#include <CLI/CLI.hpp>
#include <clocale>
#include <iostream>
#include <limits>
#include <map>

namespace {

constexpr const char* mainHelp = R"(Bring software designs into IBM Rational Rose 98 model files (.mdl).

Examples:
  petal export orders.model.json
  petal export orders.model.json -o orders.mdl --types java
  petal export orders.mdj
  petal import orders.mdj -o orders.model.json
)";

constexpr const char* importHelp = R"(Make a model file of a design that another tool has saved.

Examples:
  petal import orders.mdj -o orders.model.json
  petal import --list-formats
)";

constexpr const char* exportHelp = R"(Write the design in a model file, or of another tool, as a Rose 98 model file.

Examples:
  petal export orders.model.json -o orders.mdl
  petal export orders.model.json --types "oracle" --foreign-keys --scale 150
)";

constexpr const char* checkHelp = R"(Say what is wrong with Rose files, one finding a line.

Examples:
  petal check orders.mdl
  petal check old.mdl --path FRAMEWORK_PATH=shared --json
)";

constexpr const char* treeHelp = R"(Print the outline of a Rose file.

Examples:
  petal tree orders.mdl
  petal tree orders.mdl --depth 2
)";

constexpr const char* browseHelp = R"(Make one page for a browser of a Rose file, with all its elements and diagrams.

Examples:
  petal browse orders.mdl
  petal browse old.mdl -o old.html --path FRAMEWORK_PATH=shared
)";

constexpr const char* optionsHelp = R"(List the options of the export, their kinds, defaults and values.

Examples:
  petal options
  petal options --json
)";

constexpr int leastScale = 1;
constexpr int greatestScale = 100000;

// In a list of commands each is one line.
class OneLineEach : public CLI::Formatter {
public:
    std::string make_subcommand(const CLI::App* command) const override
    {
        const std::string purpose = command->get_description();
        std::stringstream out;
        CLI::detail::format_help(out, command->get_name(), purpose.substr(0, purpose.find('\n')), get_column_width());
        return out.str();
    }
};

std::string checkOption(const std::string& text)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos)
        return "NAME=VALUE expected, found '" + text + "'";
    return whyNotAnOption(std::string_view(text).substr(0, equals));
}

// A percentage in decimal digits.
std::string checkScale(const std::string& text)
{
    int percent = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), percent);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    if (isNumber && percent >= leastScale && percent <= greatestScale)
        return "";
    return "a percentage from " + std::to_string(leastScale) + " to " + std::to_string(greatestScale) +
           " expected, found '" + text + "'";
}

// Short forms and long forms set the same options; whichever comes last on the command line holds. Every occurrence is
// noted when the command line has been read, in its order.
class ExportOptions {
public:
    explicit ExportOptions(CLI::App& command) : app(command)
    {
        app.add_option("--option", assignments, "Set an option of the bridge by its own name (see: petal options)")
            ->option_text("NAME=VALUE")
            ->allow_extra_args(false)
            ->check(CLI::Validator(checkOption, ""))
            ->take_all();
        app.add_option("--types", types, "Type system of type names")
            ->option_text("as-is|c++|java|oracle")
            ->allow_extra_args(false)
            ->check(CLI::IsMember({"as-is", "c++", "java", "oracle"}).description(""))
            ->take_all();
        addFlag("--foreign-keys", BP_EXPORT_FOREIGN_KEY_ATTRIBUTES, BOOLEAN_ENUM_VALUE_TRUE,
                "Write attributes that belong to foreign keys");
        addFlag("--qualifiers", BP_GENERATE_QUALIFIERS, BOOLEAN_ENUM_VALUE_TRUE,
                "Make association qualifiers from the keys behind the roles");
        addFlag("--constraints", BP_SHOW_CONSTRAINTS_IN_DIAGRAMS, BOOLEAN_ENUM_VALUE_TRUE,
                "Show constraints of associations and roles on diagrams");
        addFlag("--no-geometry", BP_USE_GRAPHICAL_INFORMATION, BOOLEAN_ENUM_VALUE_FALSE,
                "Leave places, sizes, colours and lines of the model out");
        addScale("--scale", {&BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM, &BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM},
                 "Scale of diagrams");
        addScale("--x-scale", {&BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM}, "Horizontal scale of diagrams");
        addScale("--y-scale", {&BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM}, "Vertical scale of diagrams");
    }

    [[nodiscard]] std::vector<OptionValue> values() const
    {
        std::vector<OptionValue> result;
        std::map<const CLI::Option*, std::size_t> taken;
        for (const CLI::Option* const option : app.parse_order()) {
            const std::size_t occurrence = taken[option]++;
            if (option->get_name() == "--option")
                addAssignment(result, assignments[occurrence]);
            else if (option->get_name() == "--types")
                result.push_back(
                    {textOf(BP_SUPPORTED_TYPES.getName()), std::string(typeSystemText(types[occurrence]))});
            else if (const auto flag = flags.find(option->get_name()); flag != flags.end())
                result.push_back(flag->second);
            else if (const auto scale = scales.find(option->get_name()); scale != scales.end())
                for (const KivBridgeOptionLiteral* const target : scale->second.targets)
                    result.push_back({textOf(target->getName()), scale->second.percents[occurrence]});
        }
        return result;
    }

private:
    struct Scale {
        std::vector<const KivBridgeOptionLiteral*> targets;
        std::vector<std::string> percents;
    };

    static std::string textOf(const KivString& text) { return std::string(text.view()); }

    static std::string_view typeSystemText(const std::string& word)
    {
        if (word == "as-is")
            return BP_SUPPORTED_TYPES_ENUM_AS_IS.getText();
        if (word == "java")
            return BP_SUPPORTED_TYPES_ENUM_JAVA.getText();
        if (word == "oracle")
            return BP_SUPPORTED_TYPES_ENUM_ORACLE_7_X___8.getText();
        return BP_SUPPORTED_TYPES_ENUM_C__.getText();
    }

    static void addAssignment(std::vector<OptionValue>& result, const std::string& text)
    {
        const std::size_t equals = text.find('=');
        result.push_back({text.substr(0, equals), text.substr(equals + 1)});
    }

    void addFlag(const std::string& name, const KivBridgeOptionLiteral& option, const KivOptionEnumLiteral& value,
                 const std::string& description)
    {
        flags[name] = {textOf(option.getName()), std::string(value.getText())};
        app.add_flag(name, description)->disable_flag_override();
    }

    void addScale(const std::string& name, std::vector<const KivBridgeOptionLiteral*> targets,
                  const std::string& description)
    {
        Scale& scale = scales[name];
        scale.targets = std::move(targets);
        app.add_option(name, scale.percents, description)
            ->option_text("PERCENT")
            ->allow_extra_args(false)
            ->check(CLI::Validator(checkScale, ""))
            ->take_all();
    }

    CLI::App& app;
    std::vector<std::string> assignments;
    std::vector<std::string> types;
    std::map<std::string, OptionValue> flags;
    std::map<std::string, Scale> scales;
};

std::string checkFormat(const std::string& name)
{
    return whyNotAFormat(name);
}

// The options of both commands that take designs of other tools.
void addDesignOptions(CLI::App& command, DesignRequest& request)
{
    command.add_option("--from", request.format, "Format of the design (default: told by its content)")
        ->type_name("FORMAT")
        ->check(CLI::Validator(checkFormat, ""));
    command
        .add_flag_callback(
            "--no-layout", [&request] { request.hasLayout = false; },
            "Leave boxes without places and designs without diagrams as they are")
        ->disable_flag_override();
    command.add_option("--report", request.reportFile, "Write what was left out or made up as JSON")->type_name("FILE");
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
    command.add_flag("--no-units", request.ignoresUnits, "Leave controlled units out");
}

CLI::App* addCheckCommand(CLI::App& app, CheckRequest& request)
{
    CLI::App* const command = app.add_subcommand("check", checkHelp);
    command->add_option("FILE", request.files, "The Rose files; - reads standard input")->required()->type_name("");
    addReadOptions(*command, request.reading);
    command->add_flag("--json", request.asJson, "As JSON");
    command->add_flag("--notes", request.showsNotes, "Also what says nothing against the file");
    return command;
}

CLI::App* addTreeCommand(CLI::App& app, TreeRequest& request)
{
    CLI::App* const command = app.add_subcommand("tree", treeHelp);
    command->add_option("FILE", request.file, "The Rose file; - reads standard input")->required()->type_name("");
    command->add_option("--depth", request.depth, "Number of levels (default: all)")
        ->type_name("N")
        ->check(CLI::Range(std::size_t{1}, std::numeric_limits<std::size_t>::max()).description(""));
    addReadOptions(*command, request.reading);
    return command;
}

CLI::App* addBrowseCommand(CLI::App& app, BrowseRequest& request)
{
    CLI::App* const command = app.add_subcommand("browse", browseHelp);
    command->add_option("FILE", request.file, "The Rose file; - reads standard input")->required()->type_name("");
    command
        ->add_option("-o,--output", request.output,
                     "The page to write; - writes to standard output (default: FILE's name with .html, here)")
        ->type_name("OUT.html");
    addReadOptions(*command, request.reading);
    command->add_flag("-q,--quiet", request.isQuiet, "Say nothing but errors");
    return command;
}

CLI::App* addImportCommand(CLI::App& app, ImportRequest& request)
{
    CLI::App* const command = app.add_subcommand("import", importHelp);
    command->add_option("DESIGN", request.input, "The design; - reads standard input")->type_name("");
    command
        ->add_option("-o,--output", request.output,
                     "The file to write; - writes to standard output (default: DESIGN's name with .model.json, here)")
        ->type_name("OUT.model.json");
    addDesignOptions(*command, request.design);
    command->add_flag("-q,--quiet", request.isQuiet, "Say nothing but errors");
    command->add_flag("--list-formats", request.listsFormats, "List the formats of designs and exit");
    return command;
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

int runCommandLine(int argc, char** argv)
{
    CLI::App app(mainHelp, "petal");
    app.formatter(std::make_shared<OneLineEach>());
    app.set_version_flag("--version", std::string("petal ") + petalVersion);
    app.require_subcommand(1);

    ExportRequest request;
    CLI::App* const exportCommand = app.add_subcommand("export", exportHelp);
    exportCommand->add_option("MODEL", request.model, "The model file or design; - reads standard input")
        ->required()
        ->type_name("");
    exportCommand
        ->add_option("-o,--output", request.output,
                     "The file to write; - writes to standard output (default: MODEL's name with .mdl, here)")
        ->type_name("OUT.mdl");
    const ExportOptions exportOptions(*exportCommand);
    exportCommand
        ->add_option("--log", request.log, "Write every message of the export, one a line; - is standard error")
        ->type_name("FILE");
    exportCommand->add_flag("-q,--quiet", request.isQuiet, "Say nothing but errors");
    exportCommand->add_flag("--stats", request.showsStatistics, "Say what the export cost");
    exportCommand
        ->add_option("--stats-json", request.statisticsFile, "Write what the export cost as JSON; - is standard output")
        ->type_name("FILE");

    addDesignOptions(*exportCommand, request.design);

    ImportRequest importRequest;
    CLI::App* const importCommand = addImportCommand(app, importRequest);
    CheckRequest checkRequest;
    CLI::App* const checkCommand = addCheckCommand(app, checkRequest);
    TreeRequest treeRequest;
    CLI::App* const treeCommand = addTreeCommand(app, treeRequest);
    BrowseRequest browseRequest;
    CLI::App* const browseCommand = addBrowseCommand(app, browseRequest);

    bool asJson = false;
    CLI::App* const optionsCommand = app.add_subcommand("options", optionsHelp);
    optionsCommand->add_flag("--json", asJson, "As JSON");

    if (argc > 1 && argv[1][0] != '-' && !isCommand(app, argv[1])) {
        report("there is no command '" + std::string(argv[1]) + "'; see petal --help");
        return wrongUsage;
    }
    for (const CLI::App* const command : {exportCommand, importCommand, checkCommand, treeCommand, browseCommand})
        if (const char* const flag = flagWithEmptyValue(*command, argc, argv)) {
            report(std::string(flag) + ": this option takes no value");
            return wrongUsage;
        }
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& success) { // help or version
        return app.exit(success);
    } catch (const CLI::ParseError& error) {
        report(error.what());
        std::cerr << "Run 'petal --help' or 'petal COMMAND --help' for usage.\n";
        return wrongUsage;
    }
    if (checkCommand->parsed())
        return runCheck(checkRequest);
    if (treeCommand->parsed())
        return runTree(treeRequest);
    if (browseCommand->parsed())
        return runBrowse(browseRequest);
    if (optionsCommand->parsed())
        return runOptions(asJson);
    if (importCommand->parsed())
        return runImport(importRequest);
    request.options = exportOptions.values();
    return runExport(request);
}

} // namespace

int main(int argc, char** argv)
{
    occupyStandardStreams();
    std::setlocale(LC_CTYPE, ""); // of the user's locale only the encoding matters: file names are in it
    handleSignals();
    try {
        return runCommandLine(argc, argv);
    } catch (const std::exception& error) {
        report(error.what());
        return exportFailed;
    }
}
