#include "ReadRequest.h"

#include "Commands.h"

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

reader::ReadOptions readOptions(const ReadRequest& request)
{
    reader::ReadOptions options;
    options.charset = request.charset;
    options.readsUnits = !request.ignoresUnits;
    for (const std::string& path : request.paths) {
        const std::size_t equals = path.find('=');
        const std::size_t nameStart = path.starts_with('$') ? 1 : 0;
        options.paths[path.substr(nameStart, equals - nameStart)] = path.substr(equals + 1);
    }
    return options;
}

void reportFindings(const reader::Document& document)
{
    for (const reader::Finding& finding : document.findings())
        report(onOneLine(finding.place.file) + ":" + std::to_string(finding.place.line) + ":" +
               std::to_string(finding.place.column) + ": " + onOneLine(finding.text));
    for (const reader::MissingUnit& unit : document.missingUnits())
        if (!unit.isUnwanted)
            report(onOneLine(unit.fileName) + ": not loaded: " + onOneLine(unit.reason));
}

std::string onOneLine(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        const bool isLaterControl = c == 0xc2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xa0;
        if (c < ' ' || c == 0x7f || isLaterControl) {
            result += c == '\n' || c == '\t' ? ' ' : '?';
            i += isLaterControl ? 1 : 0;
        } else {
            result += text[i];
        }
    }
    return result;
}
