#pragma once

#include "reader/PetalTexts.h"

#include "dump/rows/Tables.h"

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A document with what a dump of it needs.
class Dumping {
public:
    explicit Dumping(reader::Document theDocument)
        : document(std::move(theDocument)), index(document), elements(document)
    {
    }

    [[nodiscard]] dump::Source source() const { return {document, index, elements, "petal test"}; }

    /// The rows of a table, each with the cells of some columns, parted by blanks; a cell without a value is `-`.
    [[nodiscard]] std::vector<std::string> rows(dump::TableName table, const std::vector<std::string>& columns) const
    {
        std::vector<std::string> result;
        dump::giveRows(source(), [&](dump::TableName name, std::span<const dump::Cell> cells) {
            if (name == table)
                result.push_back(lineOf(dump::table(table), cells, columns));
        });
        return result;
    }

    const reader::Document document;
    const reader::Index index;
    const dump::Elements elements;

private:
    static std::string lineOf(const dump::Table& table, std::span<const dump::Cell> cells,
                              const std::vector<std::string>& columns)
    {
        std::ostringstream line;
        const char* separator = "";
        for (const std::string& name : columns) {
            const auto column = std::ranges::find(table.columns, name, &dump::Column::name) - table.columns.begin();
            line << std::exchange(separator, " ");
            write(line, cells[static_cast<std::size_t>(column)]);
        }
        return line.str();
    }

    static void write(std::ostream& out, const dump::Cell& cell)
    {
        if (const auto* const whole = std::get_if<std::int64_t>(&cell))
            out << *whole;
        else if (const auto* const real = std::get_if<double>(&cell))
            out << *real;
        else if (const auto* const text = std::get_if<std::string_view>(&cell))
            out << *text;
        else
            out << '-';
    }
};

/// Two classes in packages, of which one inherits from the other, and a diagram that shows them.
inline std::string shop()
{
    return logicalView(R"((object Class_Category "Orders" quid "0000000000B0" logical_models (list unit_reference_list
(object Class "Order" quid "0000000000B1" documentation "What is \"asked\" for"
operations (list Operations (object Operation "pay" quid "0000000000B2"
parameters (list Parameters (object Parameter "by" type "Card")) result "Money" quidu "0000000000B3"))
superclasses (list inheritance_relationship_list
(object Inheritance_Relationship quid "0000000000B4" supplier "Logical View::Thing" quidu "0000000000B5")))
(object Class "Money" quid "0000000000B3" stereotype "type")
(object Association "$UNNAMED$0" quid "0000000000B6" roles (list role_list
(object Role "whole" supplier "Logical View::Orders::Order" quidu "0000000000B1"
client_cardinality (value cardinality "1"))
(object Role "$UNNAMED$1" supplier "Logical View::Gone" quidu "0000000000FF")))))
(object Class "Thing" quid "0000000000B5")
(object Novelty "New" quid "0000000000B7" odd (list Odds 1 (2, 3, 4))))",
                       R"((object ClassView "Class" "Logical View::Orders::Order" @1 location (100, 250)
label (object ItemLabel @2 Parent_View @1 label "Order") width 300 quidu "0000000000B1")
(object ClassView "Class" "Logical View::Thing" @3 quidu "0000000000B5")
(object InheritView "" @4 client @1 supplier @3 quidu "0000000000B4" stereotype @9)
(object NoteView @5 label "see"))");
}
