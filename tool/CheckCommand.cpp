#include "Commands.h"

#include "FileRoles.h"

#include "text/Files.h"
#include "text/JsonWriter.h"
#include "text/Utf8.h"

#include "reader/Check.h"

#include <algorithm>
#include <iostream>

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

// Writes into `json` if there is one, else on standard output.
ExitCode checkFile(const CheckRequest& request, const std::string& name, const text::ReadRecord& read,
                   text::JsonWriter* json)
{
    try {
        const reader::Document document(name, readOptions(request.reading));
        refuseClashes({{"-", role}}, read);
        const reader::Index index(document);
        reader::CheckResult result = reader::check(document, index);
        const auto isNote = [](const auto& finding) { return finding.severity == reader::Severity::note; };
        const bool isClean = std::all_of(result.findings.begin(), result.findings.end(), isNote);
        if (!request.showsNotes)
            std::erase_if(result.findings, isNote);
        if (json)
            writeJson(*json, document, result);
        else
            writeFindings(result.findings);
        return isClean ? done : foundFaults;
    } catch (const reader::NotPetal& error) {
        report(text::fileName(name) + ": " + error.what());
        if (json)
            writeJson(*json, name, error.what());
        return invalidModel;
    }
}

int checkFiles(const CheckRequest& request)
{
    text::ReadRecord read;
    for (const std::string& file : request.files)
        read.expect(file);
    refuseClashes({{"-", role}}, read); // before findings of the first go where the second is
    std::string list;
    text::JsonWriter json(list, {.deepestLine = 5, .indentation = 2}); // a finding a line
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
    return reportFailures(request.files.front(), "standard output", [&] { return checkFiles(request); });
}
