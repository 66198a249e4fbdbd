#pragma once

#include "designs/Import.h"

#include "kiv/KivModelFile.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <simdjson.h>
#include <sstream>
#include <string>
#include <string_view>

/// What an import made of a text, or why it could not.
struct Imported {
    std::string model;
    std::string error;
    design::Report report;
    std::vector<design::Taken> taken;

    /// The value at a JSON pointer of the model file, without blanks; "none" where there is none.
    [[nodiscard]] std::string at(const std::string& pointer) const
    {
        simdjson::dom::parser parser;
        simdjson::dom::element value;
        if (parser.parse(model).at_pointer(pointer).get(value) != simdjson::SUCCESS)
            return "none";
        return simdjson::minify(value);
    }

    /// "kind name: reason" of all entries that say what was left out.
    [[nodiscard]] std::vector<std::string> left() const { return linesOf(report.leftEntries()); }
    /// The same for what was made up.
    [[nodiscard]] std::vector<std::string> made() const { return linesOf(report.madeEntries()); }

private:
    static std::vector<std::string> linesOf(const std::vector<design::ReportEntry>& entries)
    {
        std::vector<std::string> lines;
        lines.reserve(entries.size());
        for (const design::ReportEntry& entry : entries)
            lines.push_back(entry.kind + " " + entry.name + ": " + entry.reason);
        return lines;
    }
};

/// Imports with a format; what comes out must be a model file.
inline Imported importWith(const design::Format& format, std::string_view text, bool hasLayout = false)
{
    Imported imported;
    try {
        design::Converted converted = design::importDesign(format, {text, "design"}, hasLayout, imported.report);
        std::ostringstream stream;
        writeModelFile(*converted.model, stream, [&](const KivObject& object) { return converted.idOf(object); });
        imported.model = std::move(stream).str();
        imported.taken = std::move(converted.taken);
        EXPECT_EQ(parseModel(imported.model, "imported").objects, converted.objects) << imported.model;
    } catch (const design::UnreadableDesign& error) {
        imported.error = error.what();
    }
    return imported;
}

/// What an import makes of a design that a reader has read.
inline Imported convert(const design::Design& design, bool hasLayout = false)
{
    static const design::Design* read = nullptr;
    read = &design;
    return importWith({"test",
                       "",
                       {},
                       "classes",
                       nullptr,
                       [](const design::Source& /*source*/, design::Report& /*report*/) { return *read; }},
                      "", hasLayout);
}
