#include "Commands.h"

#include "JsonText.h"

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

std::string jsonList(const std::vector<KivString>& texts)
{
    std::string list;
    for (const KivString& text : texts)
        list += (list.empty() ? "" : ", ") + jsonQuoted(text.view());
    return "[" + list + "]";
}

void printJson(const KivOptionList& options)
{
    const char* separator = "[\n";
    for (const KivOption& option : options.getOptions()) {
        std::cout << separator << "  {\"name\": " << jsonQuoted(option.name.view())
                  << ", \"kind\": " << jsonQuoted(nameOf(option.kind))
                  << ", \"default\": " << jsonQuoted(option.defaultValue.view())
                  << ", \"literals\": " << jsonList(option.literals)
                  << ", \"extensions\": " << jsonList(option.extensions)
                  << ", \"description\": " << jsonQuoted(option.description.view()) << "}";
        separator = ",\n";
    }
    std::cout << "\n]\n";
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
    std::cout.flush();
    if (std::cout)
        return done;
    report("standard output: the list could not be written");
    return exportFailed;
}
