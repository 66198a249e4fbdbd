#include "Commands.h"

#include "JsonText.h"

#include "reader/Check.h"

#include <algorithm>
#include <iostream>

namespace {

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

// What is said about one file of the command line.
struct Report {
    std::string asJson;
    ExitCode exitCode = done;
};

void writeFindings(const std::vector<reader::Finding>& findings)
{
    for (const reader::Finding& finding : findings)
        std::cout << onOneLine(finding.place.file) << ':' << finding.place.line << ':' << finding.place.column << ": "
                  << nameOf(finding.severity) << ": " << onOneLine(finding.text) << '\n';
}

std::string jsonOf(const reader::Finding& finding)
{
    return R"({"severity": )" + jsonQuoted(nameOf(finding.severity)) + R"(, "kind": )" + jsonQuoted(finding.kind) +
           R"(, "file": )" + jsonQuoted(finding.place.file) + R"(, "line": )" + std::to_string(finding.place.line) +
           R"(, "column": )" + std::to_string(finding.place.column) + R"(, "text": )" + jsonQuoted(finding.text) + "}";
}

template <typename Items, typename AsJson>
std::string jsonList(const Items& items, std::string_view indentation, const AsJson& asJson)
{
    std::string result = "[";
    for (const auto& item : items)
        result.append(result.size() == 1 ? "\n" : ",\n").append(indentation).append("  ").append(asJson(item));
    if (result.size() > 1)
        result.append("\n").append(indentation);
    return result.append("]");
}

std::string jsonOf(const reader::File& file)
{
    return R"({"name": )" + jsonQuoted(file.name) + R"(, "petal": )" + std::to_string(file.version) +
           R"(, "charSet": )" + std::to_string(file.charSet) + R"(, "encoding": )" + jsonQuoted(file.encoding) +
           R"(, "written": )" + jsonQuoted(file.writtenBy) + "}";
}

std::string jsonOf(const std::map<std::string, std::size_t>& counts)
{
    std::string result = "{";
    for (const auto& [name, count] : counts)
        result.append(result.size() == 1 ? "" : ", ")
            .append(jsonQuoted(name))
            .append(": ")
            .append(std::to_string(count));
    return result.append("}");
}

std::string jsonOf(const reader::Document& document, const reader::CheckResult& result)
{
    const std::map<std::string, std::size_t> references = {
        {"found", result.found}, {"none", result.none}, {"notLoaded", result.unloaded}, {"missing", result.missing}};
    const auto asJson = [](const auto& item) { return jsonOf(item); };
    return "{\n      \"files\": " + jsonList(document.files(), "      ", asJson) +
           ",\n      \"objects\": " + std::to_string(document.objectCount()) +
           ",\n      \"unknownKinds\": " + jsonOf(result.unknownKinds) +
           ",\n      \"references\": " + jsonOf(references) +
           ",\n      \"findings\": " + jsonList(result.findings, "      ", asJson) + "\n    }";
}

Report checkFile(const CheckRequest& request, const std::string& name)
{
    try {
        const reader::Document document(name, readOptions(request.reading));
        const reader::Index index(document);
        reader::CheckResult result = reader::check(document, index);
        const auto isNote = [](const auto& finding) { return finding.severity == reader::Severity::note; };
        const bool isClean = std::all_of(result.findings.begin(), result.findings.end(), isNote);
        if (!request.showsNotes)
            std::erase_if(result.findings, isNote);
        Report checked{{}, isClean ? done : foundFaults};
        if (request.asJson)
            checked.asJson = jsonOf(document, result);
        else
            writeFindings(result.findings);
        return checked;
    } catch (const reader::NotPetal& error) {
        report((name == "-" ? "standard input" : name) + ": " + error.what());
        return {R"({"files": [{"name": )" + jsonQuoted(name) + R"(}], "error": )" + jsonQuoted(error.what()) + "}",
                invalidModel};
    }
}

} // namespace

int runCheck(const CheckRequest& request)
{
    std::vector<std::string> models;
    int exitCode = done;
    for (const std::string& file : request.files) {
        Report checked = checkFile(request, file);
        exitCode = std::max<int>(exitCode, checked.exitCode);
        models.push_back(std::move(checked.asJson));
    }
    if (request.asJson)
        std::cout << "{\n  \"models\": " << jsonList(models, "  ", [](const std::string& model) { return model; })
                  << "\n}\n";
    std::cout.flush();
    if (std::cout)
        return exitCode;
    report("standard output cannot be written");
    return invalidModel;
}
