#include "Commands.h"

#include "DesignImport.h"

#include "FileRoles.h"

#include "text/Files.h"
#include "text/JsonWriter.h"
#include "text/Utf8.h"

#include "reader/Check.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <new>

namespace {

constexpr const char* role = "the findings";

std::string_view nameOf(reader::Severity severity)
{
    switch (severity) {
    case reader::Severity::note:
        return "note";
    case reader::Severity::warning:
        return "warning";
    case reader::Severity::error:
        break;
    }
    return "error";
}

void writeFindings(const std::vector<reader::Finding>& findings)
{
    for (const reader::Finding& finding : findings)
        std::cout << text::onOneLine(finding.place.file) << ':' << finding.place.line << ':' << finding.place.column
                  << ": " << nameOf(finding.severity) << ": " << text::onOneLine(finding.text) << '\n';
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

// A file that has been read, and what was found in it.
struct CheckedFile {
    std::unique_ptr<const reader::Document> document;
    reader::CheckResult result;
    bool isClean = true;
};

CheckedFile checked(const CheckRequest& request, const std::string& name, const text::ReadRecord& read)
{
    CheckedFile file;
    file.document = std::make_unique<const reader::Document>(name, readOptions(request.reading));
    refuseClashes({{"-", role}}, read);
    file.result = reader::check(*file.document, reader::Index(*file.document));
    const auto isNote = [](const auto& finding) { return finding.severity == reader::Severity::note; };
    file.isClean = std::all_of(file.result.findings.begin(), file.result.findings.end(), isNote);
    if (!request.showsNotes)
        std::erase_if(file.result.findings, isNote);
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
ExitCode checkFile(const CheckRequest& request, const std::string& name, const text::ReadRecord& read,
                   text::JsonWriter* json)
{
    CheckedFile file;
    try {
        file = checked(request, name, read);
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
    text::JsonWriter json(list, {.deepestLine = 5, .indentation = 2, .isForTerminal = true}); // a finding a line
    json.beginObject().beginList("models");
    int exitCode = done;
    for (const std::string& file : request.files)
        exitCode = std::max<int>(exitCode, checkFile(request, file, read, request.asJson ? &json : nullptr));
    json.endList().endObject();
    if (request.asJson)
        std::cout << list;
    return endOfOutput(exitCode, invalidModel);
}

} // namespace

int runCheck(const CheckRequest& request)
{
    return reportFailures(request.files.front(), "standard output", [&] {
        try {
            return checkFiles(request);
        } catch (const std::bad_alloc&) { // the findings of all files together are too many for JSON
            throw reader::NotPetal(notEnoughMemory);
        }
    });
}
