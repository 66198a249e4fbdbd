#include "designs/formats/WrittenFiles.h"
#include "designs/Import.h"
#include "reader/document/Document.h"
#include "Target.h"

#include <string>
#include <vector>

// The bytes of a Rose file. Whatever they hold is refused in words, or goes out in every format that there is a writer
// of, into one file and into a folder. No unit is read.
namespace {

constexpr std::size_t mostFiles = 100000;

void checkFiles(const std::vector<design::WrittenFile>& files, const design::Format& format, bool isFolder)
{
    require(files.size() < mostFiles, "a bounded number of files");
    std::size_t outputs = 0;
    for (const design::WrittenFile& file : files) {
        require(!file.text.empty(), "a text in each file of " + std::string(format.name));
        outputs += file.name.empty() ? 1 : 0;
    }
    require(isFolder || files.empty() || outputs == 1, "one output of " + std::string(format.name));
}

void checkReport(const design::Report& report)
{
    for (const design::ReportEntry& entry : report.leftEntries())
        require(!entry.kind.empty() && !entry.reason.empty(), "a kind and a reason for everything that is left");
}

void checkFormat(const design::Format& target, const design::Source& source, bool isFolder)
{
    design::Report report;
    design::Design design = design::readDesign(*design::formatNamed("rose"), source, report);
    design::settleFor(target, design, true, report);
    const design::Catalogue catalogue(design.root);
    try {
        checkFiles(design::filesIn(target, {design, catalogue, "fuzzed", isFolder}, report), target, isFolder);
    } catch (const design::UnwritableDesign& error) {
        require(!isFolder && *error.what() != '\0', "a reason for refusing one file");
    }
    checkReport(report);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    reader::ReadOptions reading;
    reading.readsUnits = false;
    const design::Source source{asText(data, size), "fuzzed.mdl", &reading};
    try {
        for (const design::Format& target : design::formats()) {
            if (!target.write)
                continue;
            checkFormat(target, source, false);
            if (target.isWrittenByDiagram)
                checkFormat(target, source, true);
        }
    } catch (const design::UnreadableDesign& error) {
        require(*error.what() != '\0', "a reason for refusing a file");
    }
    return 0;
}
