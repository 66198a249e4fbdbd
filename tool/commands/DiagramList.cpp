#include "tool/commands/DiagramList.h"

#include "tool/output/FileRoles.h"
#include "tool/terminal/Findings.h"

#include "text/Files.h"
#include "text/JsonWriter.h"
#include "text/Utf8.h"

#include <algorithm>
#include <iostream>

namespace {

void printText(const reader::Index& index, const std::string& file, bool isOneOfSeveral)
{
    for (const reader::Diagram& diagram : index.diagrams())
        std::cout << (isOneOfSeveral ? text::onOneLine(text::fileName(file)) + '\t' : "")
                  << reader::diagramKindName(diagram.kind) << '\t' << text::onOneLine(fullNameOf(diagram, index))
                  << '\n';
}

void writeJson(text::JsonWriter& json, const reader::Index& index, const std::string& file)
{
    json.beginObject().member("file", text::mended(text::fileName(file)));
    json.beginList("diagrams");
    for (const reader::Diagram& diagram : index.diagrams()) {
        json.beginObject().member("kind", reader::diagramKindName(diagram.kind));
        json.member("name", text::mended(diagram.name));
        json.member("fullName", text::mended(fullNameOf(diagram, index)));
        json.member("quid", text::mended(diagram.object->text("quid")));
        json.member("items", std::uint64_t{diagram.object->objects("items").size()}).endObject();
    }
    json.endList().endObject();
}

// Writes into `json` if there is one, else on standard output.
int listFile(const DrawRequest& request, const std::string& file, text::JsonWriter* json)
{
    return reportFailures(file, "standard output", [&] {
        const text::ReadRecord read;
        const reader::Document document(file, readOptions(request.reading));
        refuseClashes({{"-", "the list"}}, read);
        if (!request.isQuiet)
            reportFindings(document);
        const reader::Index index(document);
        if (json)
            writeJson(*json, index, file);
        else
            printText(index, file, request.files.size() > 1);
        return done;
    });
}

} // namespace

std::string fullNameOf(const reader::Diagram& diagram, const reader::Index& index)
{
    const std::string path = diagram.owner ? index.path(*diagram.owner) : std::string();
    return path.empty() ? diagram.name : path + "::" + diagram.name;
}

int listDiagrams(const DrawRequest& request)
{
    std::string list;
    text::JsonWriter json(list, {.deepestLine = 4, .indentation = 2, .isForTerminal = true}); // a diagram a line
    json.beginObject().beginList("models");
    int exitCode = done;
    for (const std::string& file : request.files)
        exitCode = std::max(exitCode, listFile(request, file, request.asJson ? &json : nullptr));
    json.endList().endObject();
    if (request.asJson)
        std::cout << list;
    return endOfOutput(exitCode, exportFailed);
}
