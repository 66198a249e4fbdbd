#pragma once

#include "reader/document/Document.h"

#include <string>
#include <string_view>
#include <vector>

/// How petal files are read, as the options of the commands that read them say.
struct ReadRequest {
    std::string charset;                  ///< name of an encoding, or empty
    std::vector<std::string> paths;       ///< NAME=DIR, folders behind the symbols of unit paths
    std::vector<std::string> unitsWithin; ///< the only folders that units are read from, if there are any
    bool ignoresUnits = false;
};

/// What is wrong with a charset, a NAME=DIR or a folder, or the empty text.
[[nodiscard]] std::string whyNotACharset(const std::string& charset);
[[nodiscard]] std::string whyNotAPath(const std::string& path);
[[nodiscard]] std::string whyNotAFolder(const std::string& path);

[[nodiscard]] reader::ReadOptions readOptions(const ReadRequest& request);
