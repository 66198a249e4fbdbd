#include "tool/arguments/Arguments.h"
#include "tool/arguments/ExportOptions.h"
#include "tool/arguments/HelpTexts.h"
#include "tool/input/DesignImport.h"

#include <memory>

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

Command addImportCommand(CLI::App& app)
{
    auto request = std::make_shared<ImportRequest>();
    CLI::App* const command = app.add_subcommand("import", importHelp);
    command->add_option("DESIGN", request->designs, "The designs; - reads standard input")->option_text("...");
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
    command->add_option("IN", request->inputs, "The Rose files, designs or model files; - reads standard input")
        ->option_text("...");
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
