#include "tool/commands/Commands.h"

#include "tool/input/DesignImport.h"
#include "tool/output/FileRoles.h"
#include "tool/terminal/Amounts.h"
#include "tool/terminal/Findings.h"
#include "tool/terminal/Progress.h"

#include "text/Files.h"
#include "text/JsonWriter.h"
#include "text/Utf8.h"

#include "reader/check/Check.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <memory>
#include <new>
#include <unistd.h>

namespace {

using reader::Severity;

constexpr const char* role = "the findings";

void writeFindings(const std::vector<reader::Finding>& findings)
{
    for (const reader::Finding& finding : findings)
        std::cout << lineOf(finding, STDOUT_FILENO) << '\n';
}

void writeJson(text::JsonWriter& json, const reader::File& file)
{
    json.beginObject().member("name", text::mended(file.name)).member("petal", file.version);
    json.member("charSet", file.charSet).member("encoding", file.encoding).member("written", file.writtenBy);
    json.endObject();
}

void writeJson(text::JsonWriter& json, const reader::Finding& finding)
{
    json.beginObject().member("severity", nameOf(finding.severity)).member("kind", finding.kind);
    json.member("file", text::mended(finding.place.file));
    json.member("line", finding.place.line).member("column", finding.place.column).member("text", finding.text);
    json.endObject();
}

template <class Items>
void writeList(text::JsonWriter& json, std::string_view key, const Items& items)
{
    json.beginList(key);
    for (const auto& item : items)
        writeJson(json, item);
    json.endList();
}

void writeJson(text::JsonWriter& json, const reader::Document& document, const reader::CheckResult& result)
{
    json.beginObject();
    writeList(json, "files", document.files());
    json.member("objects", document.objectCount());
    json.beginObject("unknownKinds");
    for (const auto& [kind, count] : result.unknownKinds)
        json.member(kind, count);
    json.endObject();
    json.beginObject("references").member("found", result.found).member("missing", result.missing);
    json.member("none", result.none).member("notLoaded", result.unloaded).endObject();
    writeList(json, "findings", result.findings);
    json.endObject();
}

// A file that cannot be read.
void writeJson(text::JsonWriter& json, const std::string& name, const std::string& error)
{
    json.beginObject();
    json.beginList("files").beginObject().member("name", text::mended(name)).endObject().endList();
    json.member("error", text::mended(error)).endObject();
}

// How many findings there are of each severity.
struct Counts {
    std::size_t files = 0;
    std::array<std::size_t, 3> findings = {};

    [[nodiscard]] std::size_t of(Severity severity) const { return findings.at(static_cast<std::size_t>(severity)); }
    void add(Severity severity) { ++findings.at(static_cast<std::size_t>(severity)); }
};

// `orders.mdl: 1 error, 2 warnings; 4 notes (see: --notes)`
void tellCounts(const Counts& counts, const CheckRequest& request)
{
    std::string text = counted(counts.of(Severity::error), "error", "errors") + ", " +
                       counted(counts.of(Severity::warning), "warning", "warnings");
    if (const std::size_t notes = counts.of(Severity::note); notes > 0)
        text += (request.showsNotes ? ", " : "; ") + counted(notes, "note", "notes") +
                (request.showsNotes ? "" : " (see: --notes)");
    tellMade(request.files.size() == 1 ? text::fileName(request.files.front()) : counted(counts.files, "file", "files"),
             text);
}

// How much a finding says against its file. Where a unit is missing the file itself may be whole.
Severity weightOf(const reader::Finding& finding)
{
    return finding.kind == "unit-not-loaded" ? Severity::note : finding.severity;
}

Severity severityCalled(const std::string& name)
{
    return name == "note" ? Severity::note : name == "error" ? Severity::error : Severity::warning;
}

// A file that has been read, and what was found in it.
struct CheckedFile {
    std::unique_ptr<const reader::Document> document;
    reader::CheckResult result;
    bool isClean = true;
};

CheckedFile checked(const CheckRequest& request, const std::string& name, const text::ReadRecord& read, Counts& counts)
{
    CheckedFile file;
    file.document = std::make_unique<const reader::Document>(name, readOptions(request.reading));
    refuseClashes({{"-", role}}, read);
    file.result = reader::check(*file.document, reader::Index(*file.document));
    const Severity leastFault = severityCalled(request.leastFault);
    ++counts.files;
    for (const reader::Finding& finding : file.result.findings) {
        counts.add(finding.severity);
        file.isClean = file.isClean && weightOf(finding) < leastFault;
    }
    if (!request.showsNotes)
        std::erase_if(file.result.findings, [](const auto& finding) { return finding.severity == Severity::note; });
    return file;
}

ExitCode sayUnreadable(const std::string& name, const char* reason, text::JsonWriter* json)
{
    report(text::fileName(name) + ": " + reason);
    if (json)
        writeJson(*json, name, reason);
    return invalidModel;
}

// Writes into `json` if there is one, else on standard output. A file that is too large for the memory does not keep
// the next ones from being checked.
ExitCode checkFile(const CheckRequest& request, const std::string& name, const text::ReadRecord& read, Counts& counts,
                   text::JsonWriter* json)
{
    CheckedFile file;
    try {
        file = checked(request, name, read, counts);
    } catch (const reader::NotPetal& error) {
        const std::string other = whyNotARoseFile(name);
        return sayUnreadable(name, other.empty() ? error.what() : other.c_str(), json);
    } catch (const std::bad_alloc&) {
        return sayUnreadable(name, notEnoughMemory, json);
    }
    if (json)
        writeJson(*json, *file.document, file.result);
    else
        writeFindings(file.result.findings);
    return file.isClean ? done : foundFaults;
}

int checkFiles(const CheckRequest& request)
{
    text::ReadRecord read;
    for (const std::string& file : request.files)
        read.expect(file);
    refuseClashes({{"-", role}}, read); // before findings of the first go where the second is
    std::string list;
    text::JsonWriter json(list, {.deepestLine = 4, .indentation = 2, .isForTerminal = true}); // a finding a line
    json.beginObject().beginList("models");
    int exitCode = done;
    Counts counts;
    for (const std::string& file : request.files) {
        showProgress("checking " + file);
        exitCode = std::max<int>(exitCode, checkFile(request, file, read, counts, request.asJson ? &json : nullptr));
    }
    clearProgress();
    json.endList().endObject();
    if (request.asJson)
        std::cout << list;
    exitCode = endOfOutput(exitCode, invalidModel);
    if (std::cout && !request.asJson && !request.isQuiet && counts.files > 0)
        tellCounts(counts, request);
    return exitCode;
}

} // namespace

int runCheck(const CheckRequest& request)
{
    if (request.isQuiet)
        forbidProgress();
    return reportFailures(request.files.front(), "standard output", [&] {
        try {
            return checkFiles(request);
        } catch (const std::bad_alloc&) { // the findings of all files together are too many for JSON
            throw reader::NotPetal(notEnoughMemory);
        }
    });
}
