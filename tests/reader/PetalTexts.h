#pragma once

#include "reader/document/Document.h"

#include <string>
#include <string_view>

/// Petal files for tests.

inline constexpr std::string_view petalHeader = "\n(object Petal\n    version \t42\n    charSet \t0)\n\n";

/// A model file with `body` inside of `Design`.
inline std::string model(std::string_view body)
{
    return std::string(petalHeader).append("(object Design \"Logical View\"\n").append(body).append(")\n");
}

/// A model whose Logical View holds `elements`, from line 11 on, and in a class diagram `Main` the views `items`.
inline std::string logicalView(std::string_view elements, std::string_view items = "")
{
    return model(std::string("root_category (object Class_Category \"Logical View\"\nquid \"0000000000A0\"\n"
                             "exportControl \"Public\"\nlogical_models (list unit_reference_list\n")
                     .append(elements)
                     .append(")\nlogical_presentations (list unit_reference_list\n(object ClassDiagram \"Main\"\n"
                             "quid \"0000000000A1\"\nitems (list diagram_item_list")
                     .append(items.empty() ? "" : "\n")
                     .append(items)
                     .append("))))"));
}

/// Reads a text without looking at other files.
inline reader::Document read(std::string text, const std::string& charset = "")
{
    reader::ReadOptions options;
    options.charset = charset;
    options.readsUnits = false;
    return reader::Document(std::move(text), "test.mdl", options);
}
