#include "dump/forms/Csv.h"
#include "dump/forms/Json.h"
#include "dump/forms/Sqlite.h"
#include "dump/rows/Tables.h"
#include "MemoryFile.h"
#include "reader/index/Index.h"
#include "Target.h"
#include "text/Utf8.h"

#include <array>
#include <simdjson.h>
#include <string>

// The bytes of a Rose file. Whatever they hold is refused, or is dumped in every form: rows with a number and a place
// each that lead to others that are there, a tree of JSON, a database. No unit is read.
namespace {

using dump::Cell;
using dump::ColumnType;
using dump::TableName;

bool fits(const Cell& cell, ColumnType type)
{
    if (std::holds_alternative<std::monostate>(cell))
        return true;
    if (const auto* const text = std::get_if<std::string_view>(&cell))
        return type == ColumnType::text && (text->empty() || text::isUtf8(*text));
    return type == (std::holds_alternative<double>(cell) ? ColumnType::real : ColumnType::integer);
}

class RowCheck {
public:
    explicit RowCheck(const dump::Source& theSource) : source(theSource) {}

    void check(TableName name, std::span<const Cell> cells)
    {
        const dump::Table& table = dump::table(name);
        require(cells.size() == table.columns.size(), "a cell for each column");
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const dump::Column& column = table.columns[i];
            require(fits(cells[i], column.type), "cells of the kind of their columns");
            const auto* const number = std::get_if<std::int64_t>(&cells[i]);
            if (column.isNumberOfRow)
                require(number && *number > std::exchange(last[static_cast<std::size_t>(name)], *number),
                        "numbers that grow");
            if (column.name == "target" || column.name == "source" || column.name == "owner")
                require(!number || (*number > 0 && static_cast<std::size_t>(*number) <= source.elements.objectCount()),
                        "references to objects that there are");
        }
        if (name == TableName::objects || name == TableName::properties)
            checkPlace(cells.last(4));
    }

private:
    void checkPlace(std::span<const Cell> place) const
    {
        const std::size_t size = source.document.text(source.document.files().front()).size();
        const auto begin = static_cast<std::size_t>(std::get<std::int64_t>(place[2]));
        const auto length = static_cast<std::size_t>(std::get<std::int64_t>(place[3]));
        require(begin <= size && length <= size - begin, "places in the text");
        require(std::get<std::int64_t>(place[0]) > 0 && std::get<std::int64_t>(place[1]) > 0, "a line and a column");
    }

    const dump::Source& source;
    std::array<std::int64_t, 16> last{};
};

// Deeper trees are more than the reader of JSON takes.
void checkJson(const dump::Source& source)
{
    std::string text;
    dump::writeJson(source, [&](std::string_view piece) { text += piece; });
    simdjson::dom::parser parser;
    const auto error = parser.parse(text).error();
    require(error == simdjson::SUCCESS || error == simdjson::DEPTH_ERROR, "JSON");
}

void checkDump(const dump::Source& source)
{
    RowCheck rows(source);
    dump::giveRows(source, [&](TableName table, std::span<const Cell> cells) { rows.check(table, cells); });
    checkJson(source);
    dump::writeCsv(source, [](TableName, std::string_view piece) { require(!piece.empty(), "no empty pieces"); });
    const MemoryFile database;
    dump::writeSqlite(source, database.path(), "fuzzed.db");
    require(database.content().starts_with("SQLite format 3"), "a database");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    reader::ReadOptions options;
    options.readsUnits = false;
    try {
        const reader::Document document(std::string(asText(data, size)), "fuzzed.mdl", options);
        const reader::Index index(document);
        const dump::Elements elements(document);
        checkDump({document, index, elements, "fuzzer"});
    } catch (const reader::NotPetal& error) {
        require(*error.what() != '\0', "a reason for refusing a file");
    }
    return 0;
}
