#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>

/// A diagram as the name of its file tells it from others.
struct NamedDiagram {
    std::string name;
    std::string kind;  ///< "class", "sequence" ...
    std::string owner; ///< name of what it belongs to; may be empty
};

/// Names of the files of diagrams in one folder, no two of which differ in case only.
class PictureNames {
public:
    /// A name that every file system takes, with `ending` behind it.
    [[nodiscard]] std::string nameFor(const NamedDiagram& diagram, const std::string& ending);

private:
    [[nodiscard]] bool isTaken(const std::string& name, const std::string& ending) const;

    std::set<std::string> taken;
    std::map<std::string, std::size_t> numbers; ///< the last behind each name
};
