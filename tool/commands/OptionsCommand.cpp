#include "tool/commands/Commands.h"

#include "text/JsonWriter.h"

#include "kiv/KivIbmRationalRose98ExportDllInterface.h"

#include <iomanip>
#include <iostream>

namespace {

const char* nameOf(KivOptionKind kind)
{
    switch (kind) {
    case KivOptionKind::OutputFile:
        return "output file";
    case KivOptionKind::Enumeration:
        return "enumeration";
    case KivOptionKind::Boolean:
        return "boolean";
    case KivOptionKind::IntegerPercent:
        return "integer percent";
    }
    return "";
}

void writeTexts(text::JsonWriter& json, std::string_view key, const std::vector<KivString>& texts)
{
    json.beginList(key);
    for (const KivString& each : texts)
        json.value(each.view());
    json.endList();
}

void printJson(const KivOptionList& options)
{
    std::string list;
    text::JsonWriter json(list, {.deepestLine = 1, .indentation = 2}); // an option a line
    json.beginList();
    for (const KivOption& option : options.getOptions()) {
        json.beginObject().member("name", option.name.view()).member("kind", nameOf(option.kind));
        json.member("default", option.defaultValue.view());
        writeTexts(json, "literals", option.literals);
        writeTexts(json, "extensions", option.extensions);
        json.member("description", option.description.view()).endObject();
    }
    json.endList();
    std::cout << list;
}

void printText(const KivOptionList& options)
{
    for (const KivOption& option : options.getOptions()) {
        std::cout << option.name.view() << "\n    " << option.description.view()
                  << "\n    kind: " << nameOf(option.kind)
                  << ", default: " << (option.defaultValue.isEmpty() ? "(empty)" : option.defaultValue.view()) << '\n';
        const char* separator = "    values: ";
        for (const KivString& literal : option.literals) {
            std::cout << separator << literal.view();
            separator = " | ";
        }
        std::cout << (option.literals.empty() ? "" : "\n");
    }
}

} // namespace

int runOptions(bool asJson)
{
    KivOptionList options;
    KivIbmRationalRose98ExportDllInterface().getOptionList(options);
    if (asJson)
        printJson(options);
    else
        printText(options);
    return endOfOutput(done, exportFailed);
}
