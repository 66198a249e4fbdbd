#include "tool/arguments/ExportOptions.h"

#include "tool/arguments/Arguments.h"

#include <charconv>

namespace {

constexpr int leastScale = 1;
constexpr int greatestScale = 100000;

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

std::string textOf(const KivString& text)
{
    return std::string(text.view());
}

std::string_view typeSystemText(const std::string& word)
{
    if (word == "as-is")
        return BP_SUPPORTED_TYPES_ENUM_AS_IS.getText();
    if (word == "java")
        return BP_SUPPORTED_TYPES_ENUM_JAVA.getText();
    if (word == "oracle")
        return BP_SUPPORTED_TYPES_ENUM_ORACLE_7_X___8.getText();
    return BP_SUPPORTED_TYPES_ENUM_C__.getText();
}

void addAssignment(std::vector<OptionValue>& result, const std::string& text)
{
    const std::size_t equals = text.find('=');
    result.push_back({text.substr(0, equals), text.substr(equals + 1)});
}

} // namespace

ExportOptions::ExportOptions(CLI::App& command) : app(command)
{
    app.add_option("--option", assignments, "Set an option of the bridge by its own name (see: petal options)")
        ->option_text("NAME=VALUE")
        ->allow_extra_args(false)
        ->check(CLI::Validator(checkOption, ""))
        ->take_all();
    app.add_option("--types", types,
                   "Whose type names are written: those of the model as they are, or those of C++ (the default, which "
                   "makes std::chrono::year_month_day of Date), Java or Oracle")
        ->option_text("as-is|c++|java|oracle")
        ->allow_extra_args(false)
        ->transform(oneOf({"as-is", "c++", "java", "oracle"}))
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

std::vector<OptionValue> ExportOptions::values() const
{
    std::vector<OptionValue> result;
    std::map<const CLI::Option*, std::size_t> taken;
    for (const CLI::Option* const option : app.parse_order()) {
        const std::size_t occurrence = taken[option]++;
        if (option->get_name() == "--option")
            addAssignment(result, assignments[occurrence]);
        else if (option->get_name() == "--types")
            result.push_back({textOf(BP_SUPPORTED_TYPES.getName()), std::string(typeSystemText(types[occurrence]))});
        else if (const auto flag = flags.find(option->get_name()); flag != flags.end())
            result.push_back(flag->second);
        else if (const auto scale = scales.find(option->get_name()); scale != scales.end())
            for (const KivBridgeOptionLiteral* const target : scale->second.targets)
                result.push_back({textOf(target->getName()), scale->second.percents[occurrence]});
    }
    return result;
}

void ExportOptions::addFlag(const std::string& name, const KivBridgeOptionLiteral& option,
                            const KivOptionEnumLiteral& value, const std::string& description)
{
    flags[name] = {textOf(option.getName()), std::string(value.getText())};
    app.add_flag(name, description)->disable_flag_override();
}

void ExportOptions::addScale(const std::string& name, std::vector<const KivBridgeOptionLiteral*> targets,
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
