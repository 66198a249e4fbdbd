#include "tool/input/ReadRequest.h"

#include <filesystem>
#include <system_error>

std::string whyNotACharset(const std::string& charset)
{
    return reader::isCharset(charset) ? "" : "there is no charset '" + charset + "'";
}

std::string whyNotAPath(const std::string& path)
{
    const std::size_t equals = path.find('=');
    if (equals == std::string::npos || equals == 0 || equals + 1 == path.size())
        return "NAME=DIR expected, found '" + path + "'";
    return "";
}

std::string whyNotAFolder(const std::string& path)
{
    std::error_code error;
    const auto type = std::filesystem::status(path, error).type();
    if (type == std::filesystem::file_type::directory)
        return "";
    return "there is no folder '" + path + "'" + (error ? ": " + error.message() : "");
}

reader::ReadOptions readOptions(const ReadRequest& request)
{
    reader::ReadOptions options;
    options.charset = request.charset;
    options.unitsWithin.assign(request.unitsWithin.begin(), request.unitsWithin.end());
    options.readsUnits = !request.ignoresUnits;
    for (const std::string& path : request.paths) {
        const std::size_t equals = path.find('=');
        const std::size_t nameStart = path.starts_with('$') ? 1 : 0;
        options.paths[path.substr(nameStart, equals - nameStart)] = path.substr(equals + 1);
    }
    return options;
}
