#include "tool/input/DesignImport.h"

#include "designs/convert/ModelLayout.h"
#include "text/Files.h"
#include "text/NearestName.h"
#include "text/Utf8.h"
#include "text/Words.h"
#include "tool/terminal/Amounts.h"

#include <cctype>
#include <iostream>
#include <map>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t headLength = 4096;

// The beginning of a text, in which files say what they are.
std::string_view headOf(std::string_view text)
{
    if (text.starts_with(text::byteOrderMark))
        text.remove_prefix(text::byteOrderMark.size());
    return text::trimmed(text.substr(0, headLength));
}

std::string placed(const std::string& file, const std::string& reason)
{
    const bool beginsWithPlace = !reason.empty() && std::isdigit(static_cast<unsigned char>(reason.front())) != 0;
    return file + (beginsWithPlace ? ":" : ": ") + text::onOneLine(reason);
}

[[noreturn]] void throwUnknownFormat(const std::string& path)
{
    throw DesignError(text::fileName(path) +
                      ": this is of no format that can be imported; see petal import --list-formats");
}

// "left out: 3 box (a Rose diagram shows a class once)", a line for each kind and reason.
void addEntries(std::string& text, const char* word, const std::vector<design::ReportEntry>& entries)
{
    std::map<std::pair<std::string_view, std::string_view>, std::size_t> counts;
    for (const design::ReportEntry& entry : entries)
        ++counts[{entry.kind, entry.reason}];
    for (const auto& [entry, count] : counts)
        text.append(word)
            .append(std::to_string(count))
            .append(" x ")
            .append(text::onOneLine(entry.first))
            .append(" (")
            .append(text::onOneLine(entry.second))
            .append(")\n");
}

// "class" of "classes".
std::string singularOf(std::string_view plural)
{
    const auto without = [&](std::size_t letters) { return std::string(plural.substr(0, plural.size() - letters)); };
    if (plural.ends_with("ies"))
        return without(3) + "y";
    return without(plural.ends_with("sses") || plural.ends_with("xes") ? 2 : 1);
}

void writeEntries(text::JsonWriter& json, const char* key, const std::vector<design::ReportEntry>& entries)
{
    json.beginList(key);
    for (const design::ReportEntry& entry : entries) {
        json.beginObject();
        for (const auto& [name, text] : {std::pair{"kind", &entry.kind}, std::pair{"id", &entry.id},
                                         std::pair{"name", &entry.name}, std::pair{"reason", &entry.reason}})
            json.member(name, std::string_view(text::mended(*text)));
        json.endObject();
    }
    json.endList();
}

void writeWarnings(text::JsonWriter& json, const std::vector<ModelWarning>& warnings)
{
    json.beginList("warnings");
    for (const ModelWarning& warning : warnings) {
        json.beginObject().member("kind", std::string_view(nameOf(warning.kind)));
        if (warning.hasPlace())
            json.member("line", std::uint64_t{warning.place.line})
                .member("column", std::uint64_t{warning.place.column})
                .member("pointer", std::string_view(text::mended(warning.place.pointer)));
        json.member("text", std::string_view(text::mended(warning.text))).endObject();
    }
    json.endList();
}

} // namespace

bool isModelFile(std::string_view text)
{
    const std::string_view head = headOf(text);
    return head.starts_with('{') && head.find("\"kiv-model\"") != std::string_view::npos;
}

bool isRoseFile(std::string_view text)
{
    return headOf(text).starts_with("(object");
}

std::string whyNotARoseFile(const std::string& path)
{
    if (path == "-")
        return "";
    try {
        const std::string text = text::readFile(path);
        if (isModelFile(text))
            return "this is a model file; petal export makes a Rose file of it";
        const design::Format* const format = design::formatOf({text, path});
        if (format && !isRoseFile(text))
            return "this is a design (" + std::string(format->name) + "); petal export makes a Rose file of it";
    } catch (const std::exception&) {
        return ""; // what can be said of it was said before
    }
    return "";
}

std::string whyNotAFormat(const std::string& name)
{
    const design::Format* const named = design::formatNamed(name);
    if (named && named->read)
        return "";
    std::vector<std::string_view> known;
    std::string list;
    for (const design::Format& format : design::formats()) {
        if (!format.read)
            continue;
        known.push_back(format.name);
        list.append("\n  ").append(format.name);
    }
    std::string reason = "there is no format '" + text::onOneLine(name) + "'";
    if (const auto nearest = text::nearestName(name, known))
        reason += "; did you mean " + std::string(*nearest) + "?";
    return reason + "\nThe formats are:" + list;
}

const design::Format& formatOfImport(std::string_view text, const std::string& path, const std::string& name)
{
    if (const design::Format* const format = design::formatNamed(name))
        return *format;
    if (isModelFile(text))
        throw DesignError(
            text::fileName(path) +
            ": this is a model file already; petal export takes it, and --layout places what has no place");
    const design::Format* const format = design::formatOf({text, path});
    if (!format)
        throwUnknownFormat(path);
    return *format;
}

const design::Format* formatOfExport(std::string_view text, const std::string& path, const std::string& name)
{
    if (const design::Format* const format = design::formatNamed(name))
        return format;
    if (isModelFile(text))
        return nullptr;
    const design::Format* const format = design::formatOf({text, path});
    if (!format && headOf(text).starts_with('<'))
        throwUnknownFormat(path);
    return format;
}

ImportedDesign importDesign(const design::Format& format, const design::Source& source, std::optional<bool> layout)
{
    ImportedDesign imported;
    imported.file = text::fileName(source.path.string());
    imported.format = format.name;
    try {
        imported.converted = design::importDesign(format, source, layout, imported.report);
    } catch (const design::UnreadableDesign& error) {
        throw DesignError(placed(imported.file, error.what()));
    }
    return imported;
}

design::Design readSource(const design::Format& format, const design::Source& source, design::Report& report)
{
    try {
        return design::readDesign(format, source, report);
    } catch (const design::UnreadableDesign& error) {
        throw DesignError(placed(text::fileName(source.path.string()), error.what()));
    }
}

std::unique_ptr<KivModel> placeBoxes(std::unique_ptr<KivModel> model, const std::string& name, bool isQuiet)
{
    design::Report report;
    model = design::placeBoxes(std::move(model), report);
    std::string rough;
    addEntries(rough, "made up: ", report.madeEntries());
    if (!isQuiet && !rough.empty())
        std::cerr << text::onOneLine(name) << ":\n" << rough;
    return model;
}

std::string summaryOf(const ImportedDesign& imported)
{
    std::string text = text::onOneLine(imported.file) + " (" + std::string(imported.format) + "): ";
    const char* separator = "";
    for (const design::Taken& taken : imported.converted.taken) {
        text.append(separator).append(counted(taken.count, singularOf(taken.kind), taken.kind));
        separator = ", ";
    }
    return text + '\n' + linesOf(imported.report);
}

std::string linesOf(const design::Report& report)
{
    std::string text;
    addEntries(text, "left out: ", report.leftEntries());
    addEntries(text, "made up: ", report.madeEntries());
    return text;
}

void writeReport(text::JsonWriter& json, const design::Report& report)
{
    writeEntries(json, "left", report.leftEntries());
    writeEntries(json, "made", report.madeEntries());
}

std::string reportAsJson(const std::optional<ImportedDesign>& imported, const std::vector<ModelWarning>& warnings)
{
    static const design::Report nothing;
    const design::Report& report = imported ? imported->report : nothing;
    constexpr int deepestLine = 2; // an entry a line
    std::string text;
    text::JsonWriter json(text, {.deepestLine = deepestLine, .isForTerminal = true});
    json.beginObject();
    json.member("format", imported ? imported->format : std::string_view("model file"));
    json.beginObject("taken");
    if (imported)
        for (const design::Taken& taken : imported->converted.taken)
            json.member(taken.kind, std::uint64_t{taken.count});
    json.endObject();
    json.beginObject("read");
    if (imported)
        for (const design::ElementCount& each : imported->converted.read)
            json.member(each.kind, std::uint64_t{each.count});
    json.endObject();
    writeReport(json, report);
    writeWarnings(json, warnings);
    json.endObject();
    text += '\n';
    return text;
}
