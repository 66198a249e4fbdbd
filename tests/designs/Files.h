#pragma once

#include "designs/formats/Format.h"
#include "designs/formats/Formats.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// The small designs of the tests.

inline std::filesystem::path pathOf(const std::string& name)
{
    return std::filesystem::path(PETAL_DESIGNS) / name;
}

inline std::string bytesOf(const std::string& name)
{
    std::ifstream stream(pathOf(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

/// What the reader of its format says against a file; "none" when it takes it.
inline std::string faultOf(const design::Source& source)
{
    try {
        design::Report report;
        static_cast<void>(design::formatOf(source)->read(source, report));
    } catch (const design::UnreadableDesign& fault) {
        return fault.what();
    }
    return "none";
}
