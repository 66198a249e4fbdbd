#pragma once

#include "reader/Index.h"

#include <cstddef>
#include <map>
#include <set>
#include <string>

/// Names of the pictures of diagrams in one folder, no two of which differ in case only.
class PictureNames {
public:
    /// A name that every file system takes, with `ending` behind it.
    [[nodiscard]] std::string nameFor(const reader::Diagram& diagram, const std::string& ending);

private:
    [[nodiscard]] bool isTaken(const std::string& name, const std::string& ending) const;

    std::set<std::string> taken;
    std::map<std::string, std::size_t> numbers; ///< the last behind each name
};
