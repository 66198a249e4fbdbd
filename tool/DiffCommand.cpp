#include "Commands.h"

#include "FileRoles.h"
#include "Findings.h"

#include "text/Files.h"

#include "compare/Pairing.h"
#include "compare/Report.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <unistd.h>

namespace {

constexpr const char* role = "the differences";

// The code of a failure must not be the one that says that files differ.
constexpr int differ = 1;

bool isWanted(const DiffRequest& request, const compare::Change& change)
{
    constexpr std::pair<std::string_view, compare::Sort> sorts[] = {{"added", compare::Sort::added},
                                                                    {"removed", compare::Sort::removed},
                                                                    {"changed", compare::Sort::changed},
                                                                    {"moved", compare::Sort::moved}};
    if (change.isOfDiagram ? request.ofModelOnly : request.ofDiagramsOnly)
        return false;
    return request.only.empty() || std::any_of(std::begin(sorts), std::end(sorts), [&](const auto& sort) {
               return sort.first == request.only && sort.second == change.sort;
           });
}

void print(const DiffRequest& request, const compare::Comparison& states, const std::vector<compare::Change>& changes)
{
    const compare::Sink sink = [](std::string_view piece) { std::cout << piece; };
    const bool inColours = (request.isForPager || isatty(STDOUT_FILENO) == 1) && std::getenv("NO_COLOR") == nullptr;
    if (request.isQuiet)
        return;
    if (request.asJson)
        compare::writeJson(states, changes, sink);
    else if (request.asCounts)
        compare::writeCounts(states, changes, sink);
    else
        compare::writeText(states, changes, inColours, sink);
}

// Nothing after a message when the file cannot be read.
std::optional<reader::Document> documentOf(const std::string& file, const ReadRequest& reading)
{
    try {
        return reader::Document(file, readOptions(reading));
    } catch (const reader::NotPetal& error) {
        report(text::fileName(file) + ": " + error.what());
        return std::nullopt;
    }
}

bool isDamaged(const reader::Document& document)
{
    return std::ranges::any_of(document.findings(), [](const reader::Finding& finding) {
        return finding.severity == reader::Severity::error;
    });
}

int compareFiles(const DiffRequest& request)
{
    if (request.oldFile == "-" && request.newFile == "-") {
        report("only one of the two files can be standard input");
        return wrongUsage;
    }
    const text::ReadRecord read;
    const auto oldDocument = documentOf(request.oldFile, request.reading);
    const auto newDocument = documentOf(request.newFile, request.reading);
    if (!oldDocument || !newDocument)
        return invalidModel;
    refuseClashes({{"-", role}}, read);
    reportFindings(*oldDocument);
    reportFindings(*newDocument);
    const compare::Depth depth = request.withAll ? compare::Depth::all : compare::Depth::meaning;
    compare::Snapshot before(*oldDocument, depth);
    compare::Snapshot after(*newDocument, depth);
    compare::pair(before, after);
    const compare::Comparison states{before, after, depth};
    std::vector<compare::Change> changes = compare::changesOf(states);
    std::erase_if(changes, [&](const compare::Change& change) { return !isWanted(request, change); });
    print(request, states, changes);
    // What could be read of a damaged file was compared, and that says little.
    const int result = isDamaged(*oldDocument) || isDamaged(*newDocument) ? invalidModel
                       : changes.empty()                                  ? done
                                                                          : differ;
    return endOfOutput(result, invalidModel);
}

} // namespace

int runDiff(const DiffRequest& request)
{
    bool hasCompared = false;
    const int exitCode = reportFailures(request.oldFile, "standard output", [&] {
        const int result = compareFiles(request);
        hasCompared = true;
        return result;
    });
    return hasCompared || exitCode > differ ? exitCode : static_cast<int>(invalidModel);
}
