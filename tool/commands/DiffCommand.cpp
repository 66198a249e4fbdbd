#include "tool/commands/Commands.h"

#include "tool/commands/DiffInput.h"
#include "tool/output/FileRoles.h"
#include "tool/output/OutputFile.h"
#include "tool/pictures/PagePictures.h"
#include "tool/terminal/Amounts.h"
#include "tool/terminal/Findings.h"
#include "tool/terminal/Progress.h"
#include "tool/terminal/Terminal.h"

#include "text/Files.h"
#include "text/Utf8.h"

#include "browse/changes/ChangesPage.h"
#include "compare/changes/Pairing.h"
#include "compare/report/Report.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
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

std::string nameOf(const std::string& file)
{
    return file == "-" ? "standard input" : std::filesystem::path(file).filename().string();
}

// Files that are called alike are told by their folders.
std::pair<std::string, std::string> namesOf(const DiffRequest& request)
{
    const std::string before = nameOf(request.oldFile);
    const std::string after = nameOf(request.newFile);
    return before == after ? std::pair(request.oldFile, request.newFile) : std::pair(before, after);
}

void writePage(const DiffRequest& request, const compare::Comparison& states,
               const std::vector<compare::Change>& changes)
{
    OutputFile output(request.pageFile);
    const auto [before, after] = namesOf(request);
    std::size_t count = 0;
    for (const compare::Snapshot* const state : {&states.before, &states.after})
        count += state->index().diagrams().size();
    PagePictures pictures(request.pageFile, count, sizeOf(states.before.document()) + sizeOf(states.after.document()));
    const auto picture = [&](const compare::Snapshot& state, const reader::Diagram& diagram) {
        return pictures.draw(state.document(), state.index(), diagram);
    };
    browse::writeChangesPage(states, changes, {text::mended(before), text::mended(after), picture},
                             [&](std::string_view piece) { output.write(piece); });
    const std::string made = counted(changes.size(), "change", "changes") + ", " + sizeText(output.size());
    output.commit();
    pictures.reportLeftOut();
    if (!request.isQuiet && request.pageFile != "-")
        tellMade(request.pageFile, made);
}

void print(const DiffRequest& request, const compare::Comparison& states, const std::vector<compare::Change>& changes)
{
    const compare::Sink sink = [](std::string_view piece) { std::cout << piece; };
    const bool inColours = hasColours(STDOUT_FILENO) || (request.isForPager && std::getenv("NO_COLOR") == nullptr);
    if (request.isQuiet)
        return;
    if (request.asJson)
        compare::writeJson(states, changes, sink);
    else if (request.asCounts)
        compare::writeCounts(states, changes, sink);
    else
        compare::writeText(states, changes, inColours, sink);
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
    const std::optional<DiffInputs> inputs = readDiffInputs(request.oldFile, request.newFile, request.reading);
    if (!inputs)
        return invalidModel;
    const std::optional<reader::Document>& oldDocument = inputs->before.document;
    const std::optional<reader::Document>& newDocument = inputs->after.document;
    const bool writesPage = !request.pageFile.empty();
    refuseClashes({{writesPage ? request.pageFile : "-", writesPage ? "the page" : role}}, read);
    reportFindings(*oldDocument);
    reportFindings(*newDocument);
    const compare::Depth depth = request.withAll ? compare::Depth::all : compare::Depth::meaning;
    showProgress("comparing " + text::fileName(request.oldFile) + " and " + text::fileName(request.newFile));
    compare::Snapshot before(*oldDocument, depth);
    compare::Snapshot after(*newDocument, depth);
    compare::pair(before, after);
    const compare::Comparison states{before, after, depth, inputs->nearness()};
    std::vector<compare::Change> changes = compare::changesOf(states);
    std::erase_if(changes, [&](const compare::Change& change) {
        return !isWanted(request, change) || inputs->isOfExport(change);
    });
    clearProgress();
    if (writesPage)
        writePage(request, states, changes);
    else
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
    if (request.isQuiet)
        forbidProgress();
    bool hasCompared = false;
    const int exitCode =
        reportFailures(request.oldFile, request.pageFile.empty() ? "standard output" : request.pageFile, [&] {
            const int result = compareFiles(request);
            hasCompared = true;
            return result;
        });
    return hasCompared || exitCode > differ ? exitCode : static_cast<int>(invalidModel);
}
