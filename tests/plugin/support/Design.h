#pragma once

#include "plugin/support/ModelBuilder.h"

#include <algorithm>

/// A model with one package, the Logical View itself.
class Design : public ModelBuilder {
public:
    KivDesignPackage* root = package("Logical View");

    /// What the package's `logical_models` list holds in the file.
    std::string elements(OptionValues options = {})
    {
        constexpr std::string_view opening = "logical_models \t(list unit_reference_list";
        constexpr std::string_view closing = ")\r\n\tlogical_presentations \t(list unit_reference_list))";
        const std::string view = exportedLogicalView(model, options);
        const std::size_t begin = view.find(opening) + opening.size();
        EXPECT_TRUE(view.ends_with(closing)) << view;
        return view.substr(begin, view.size() - closing.size() - begin);
    }
    KivClass* addClass(const KivString& name) { return ModelBuilder::addClass(name, root); }
    /// So that the next object gets this number.
    void numberFrom(long number)
    {
        for (long next = 10; next < number; ++next)
            type("filler");
    }
};

/// The lines of `text` that begin with `opening`, without it.
inline std::vector<std::string> linesWith(std::string_view opening, std::string_view text)
{
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find("\r\n"), text.size());
        std::string_view line = text.substr(0, end);
        line.remove_prefix(std::min(line.find_first_not_of('\t'), line.size()));
        if (line.starts_with(opening))
            lines.emplace_back(line.substr(opening.size()));
        text.remove_prefix(std::min(end + 2, text.size()));
    }
    return lines;
}

/// The only such line, or the empty text.
inline std::string lineWith(std::string_view opening, std::string_view text)
{
    const std::vector<std::string> lines = linesWith(opening, text);
    EXPECT_LE(lines.size(), 1U) << opening;
    return lines.empty() ? "" : lines.front();
}
