#include "dump/rows/FileRows.h"

#include "dump/rows/Row.h"

#include <unordered_map>
#include <vector>

namespace dump {

namespace {

class FileRows {
public:
    FileRows(const Source& theSource, const RowSink& theSink) : source(theSource), sink(theSink) {}

    void give()
    {
        const std::vector<reader::File>& files = source.document.files();
        row.number(schemaVersion).text(std::string_view(source.program)).text(std::string_view(files.front().name));
        row.give(sink, TableName::dump);
        for (const reader::File& file : files)
            giveFile(file);
        for (const reader::MissingUnit& unit : source.document.missingUnits()) {
            row.object(source.elements.numberOf(unit.stub));
            row.text(std::string_view(unit.fileName)).text(std::string_view(unit.reason));
            row.give(sink, TableName::missingUnits);
        }
        for (const reader::Finding& finding : source.document.findings())
            giveFinding(finding);
    }

private:
    void giveFile(const reader::File& file)
    {
        numbers.emplace(file.name, numbers.size() + 1);
        row.number(numbers.size()).text(std::string_view(file.name)).object(source.elements.numberOf(file.stub));
        row.number(static_cast<std::size_t>(file.version)).number(static_cast<std::size_t>(file.charSet));
        row.nonEmpty(std::string_view(file.encoding)).nonEmpty(std::string_view(file.writtenBy));
        row.number(source.document.text(file).size());
        row.give(sink, TableName::files);
    }

    void giveFinding(const reader::Finding& finding)
    {
        row.text(reader::nameOf(finding.severity)).text(finding.kind).number(numbers[finding.place.file]);
        row.number(finding.place.line).number(finding.place.column).text(std::string_view(finding.text));
        row.give(sink, TableName::findings);
    }

    const Source& source;
    const RowSink& sink;
    Row row;
    std::unordered_map<std::string_view, std::size_t> numbers; // of the files by their names
};

} // namespace

void giveFileRows(const Source& source, const RowSink& sink)
{
    FileRows(source, sink).give();
}

} // namespace dump
