#include "tool/commands/Commands.h"

#include "tool/output/FileRoles.h"
#include "tool/output/OutputFile.h"
#include "tool/results/OutputNames.h"
#include "tool/terminal/Amounts.h"
#include "tool/terminal/Findings.h"
#include "tool/terminal/Progress.h"
#include "Version.h"

#include "dump/forms/Csv.h"
#include "dump/forms/Json.h"
#include "dump/forms/Sqlite.h"
#include "text/Files.h"

#include <filesystem>
#include <memory>
#include <span>
#include <vector>

namespace {

namespace fs = std::filesystem;

// Where the tables go as texts: a file each, called as the table.
std::vector<FileRole> csvFilesIn(const std::string& folder)
{
    std::vector<FileRole> files;
    for (const dump::Table& table : dump::tables())
        files.push_back({(fs::path(folder) / std::string(table.name).append(".csv")).string(), "the table"});
    return files;
}

std::vector<FileRole> outputsOf(const DumpRequest& request)
{
    if (!request.csvFolder.empty())
        return csvFilesIn(request.csvFolder);
    if (!request.sqliteFile.empty())
        return {{request.sqliteFile, "the database"}};
    return {{request.output.empty() ? "-" : request.output, "the dump"}};
}

using Files = std::vector<std::unique_ptr<OutputFile>>;

void fill(const DumpRequest& request, const dump::Source& source, const Files& files)
{
    if (!request.csvFolder.empty())
        dump::writeCsv(source, [&](dump::TableName table, std::string_view piece) {
            files[static_cast<std::size_t>(table)]->write(piece);
        });
    else if (!request.sqliteFile.empty())
        dump::writeSqlite(source, files.front()->temporaryPath(), text::fileName(request.sqliteFile));
    else
        dump::writeJson(source, [&](std::string_view piece) { files.front()->write(piece); });
}

// Writes the outputs, all or none, and says what is in them.
std::string writeDump(const DumpRequest& request, const reader::Document& document,
                      const std::vector<FileRole>& outputs)
{
    const reader::Index index(document);
    const dump::Elements elements(document);
    Files files;
    std::vector<OutputFile*> pointers;
    for (const FileRole& output : outputs) {
        files.push_back(std::make_unique<OutputFile>(output.path));
        pointers.push_back(files.back().get());
    }
    fill(request, {document, index, elements, std::string("petal ").append(petalVersion)}, files);
    std::size_t bytes = 0;
    for (const OutputFile* const file : pointers)
        bytes += file->size();
    OutputFile::commitAll(pointers);
    return counted(elements.objectCount(), "object", "objects") + ", " + sizeText(bytes);
}

int dumpFile(const DumpRequest& request)
{
    if (!request.asJson && request.csvFolder.empty() && request.sqliteFile.empty())
        throw WrongUsage("what is to be written? Say --json, --csv DIR or --sqlite FILE");
    const text::ReadRecord read;
    const reader::Document document(request.input, readOptions(request.reading));
    const std::vector<FileRole> outputs = outputsOf(request);
    refuseClashes(outputs, read);
    const OutputFolder folder(request.csvFolder);
    showProgress("writing what is in " + text::fileName(request.input));
    const std::string made = writeDump(request, document, outputs);
    clearProgress();
    if (request.isQuiet)
        return done;
    reportFindings(document);
    const std::string place =
        request.csvFolder.empty() ? outputs.front().path : (fs::path(request.csvFolder) / "").string();
    if (place != "-")
        tellMade(place, made);
    return done;
}

} // namespace

int runDump(const DumpRequest& request)
{
    if (request.isQuiet)
        forbidProgress();
    const std::string output = request.csvFolder.empty() ? request.sqliteFile : request.csvFolder;
    return reportFailures(request.input, output.empty() ? "standard output" : output,
                          [&] { return dumpFile(request); });
}
