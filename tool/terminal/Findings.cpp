#include "tool/terminal/Findings.h"

#include "text/Utf8.h"
#include "tool/terminal/Progress.h"
#include "tool/terminal/Reporting.h"
#include "tool/terminal/Terminal.h"

#include <iostream>
#include <unistd.h>

std::string lineOf(const reader::Finding& finding, int descriptor)
{
    const reader::Place& place = finding.place;
    const std::string message =
        std::string(nameOf(finding.severity)).append(": ").append(text::onOneLine(finding.text));
    return text::onOneLine(place.file)
        .append(":")
        .append(std::to_string(place.line))
        .append(":")
        .append(std::to_string(place.column))
        .append(": ")
        .append(inColour(message, descriptor));
}

void reportFaults(const reader::Document& document)
{
    clearProgress();
    for (const reader::Finding& finding : document.findings())
        std::cerr << lineOf(finding, STDERR_FILENO) << '\n';
}

void reportFindings(const reader::Document& document)
{
    reportFaults(document);
    for (const reader::MissingUnit& unit : document.missingUnits())
        if (!unit.isUnwanted)
            report(unit.fileName + ": not loaded: " + unit.reason);
}
