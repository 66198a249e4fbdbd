#include "dump/forms/Json.h"

#include "dump/facts/Targets.h"
#include "dump/facts/Values.h"
#include "dump/facts/Walk.h"
#include "dump/rows/FileRows.h"
#include "dump/rows/Schema.h"
#include "text/JsonWriter.h"
#include "text/Words.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace dump {

using reader::Object;
using reader::Value;
using reader::ValueKind;

namespace {

using Sink = std::function<void(std::string_view)>;

constexpr std::size_t pieceSize = std::size_t{64} * 1024;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Whether a number of the file is one of JSON as it stands, which has no sign `+`, and digits on both sides of a point.
bool isJsonNumber(std::string_view text)
{
    if (text.starts_with('-'))
        text.remove_prefix(1);
    const std::size_t point = text.find('.');
    const std::string_view whole = text.substr(0, text.find_first_of(".eE"));
    const bool isWhole =
        !whole.empty() && (whole.size() == 1 || whole.front() != '0') && std::ranges::all_of(whole, isDigit);
    return isWhole && (point == std::string_view::npos || (point + 1 < text.size() && isDigit(text[point + 1])));
}

template <class Number>
bool isIn(std::string_view text)
{
    Number number = {};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

// Every number of JSON is one that readers can hold; others are texts.
bool isWritable(std::string_view text)
{
    const bool isWhole = text.find_first_of(".eE") == std::string_view::npos;
    return isJsonNumber(text) && (isWhole ? isIn<std::int64_t>(text) : isIn<double>(text));
}

void writeNumber(text::JsonWriter& json, const Value& value)
{
    if (isWritable(value.raw()))
        json.written(value.raw());
    else
        json.value(value.raw());
}

// `(450, 225)` as a list.
void writePoint(text::JsonWriter& json, const Value& value)
{
    const std::string_view inside = value.raw().substr(1, value.raw().size() - 2);
    const std::size_t comma = inside.find(',');
    const std::string_view x = text::trimmed(inside.substr(0, comma));
    const std::string_view y = text::trimmed(inside.substr(comma + 1));
    if (value.asPoint() && isWritable(x) && isWritable(y))
        json.beginList().written(x).written(y).endList();
    else
        json.value(value.raw());
}

class Tree : public Visitor {
public:
    Tree(const Source& theSource, const Sink& theSink) : source(theSource), sink(theSink), targets(theSource) {}

    void write()
    {
        json.beginObject().member("format", "petal-dump");
        std::optional<TableName> table;
        giveFileRows(source, [&](TableName name, std::span<const Cell> cells) { writeRow(table, name, cells); });
        if (table && *table != TableName::dump)
            json.endList();
        walk(source.document, *this);
        json.endObject();
        sink(out.append("\n"));
    }

    void beginFile(std::size_t file) override
    {
        json.onNewLine().beginObject(levels.empty() ? "model" : "unit").member("file", std::uint64_t{file});
        levels.push_back({LevelKind::file, file});
    }

    void endFile() override { close(); }

    void beginObject(const Object& object, const Member& member, const Extent& extent) override
    {
        const bool isOutermost = levels.back().kind == LevelKind::file;
        targets.beginObject(++objects, member);
        if (isOutermost)
            json.onNewLine().key(source.document.files()[levels.back().file - 1].header == &object ? "header" : "root");
        else
            beginProperty(member, "object");
        if (!isOutermost)
            json.key("value");
        json.beginObject().member("object", std::uint64_t{objects}).member("keyword", object.kind());
        writeWhatItIs(object);
        writePlace(extent);
        levels.push_back({LevelKind::object, extent.file, isOutermost});
    }

    void endObject() override
    {
        targets.endObject();
        const bool isOutermost = levels.back().isOutermost;
        close();
        if (!isOutermost)
            json.endObject(); // of the property
        flush();
    }

    void beginList(const Member& member, const Extent& extent) override
    {
        targets.beginList(member);
        beginProperty(member, nameOfKind(*member.value));
        writePlace(extent);
        json.beginList("value");
        levels.push_back({LevelKind::list, extent.file});
    }

    void endList() override
    {
        levels.pop_back();
        json.endList().endObject();
    }

    void value(const Member& member, const Extent& extent) override
    {
        beginProperty(member, nameOfKind(*member.value));
        writeValue(*member.value);
        if (const auto target = targets.of(member)) {
            if (target->object != 0)
                json.member("target", std::uint64_t{target->object});
            json.member("state", target->state);
        }
        writePlace(extent);
        json.endObject();
        flush();
    }

private:
    enum class LevelKind : std::uint8_t { file, object, list };
    struct Level {
        LevelKind kind;
        std::size_t file;
        bool isOutermost = false;   // an object that is no property of another
        bool hasProperties = false; // so far
    };

    // A row as an object in the list of its table; that of the dump itself as members.
    void writeRow(std::optional<TableName>& open, TableName name, std::span<const Cell> cells)
    {
        if (name != TableName::dump && open != name) {
            if (open && *open != TableName::dump)
                json.endList();
            json.onNewLine().beginList(table(name).name);
        }
        open = name;
        if (name != TableName::dump)
            json.onNewLine().beginObject();
        for (std::size_t i = 0; i < cells.size(); ++i)
            writeCell(table(name).columns[i].name, cells[i]);
        if (name != TableName::dump)
            json.endObject();
    }

    void writeCell(std::string_view name, const Cell& cell)
    {
        if (const auto* const whole = std::get_if<std::int64_t>(&cell))
            json.member(name, *whole);
        else if (const auto* const text = std::get_if<std::string_view>(&cell))
            json.member(name, *text);
    }

    void beginProperty(const Member& member, std::string_view kind)
    {
        Level& level = levels.back();
        if (level.kind == LevelKind::object && !level.hasProperties)
            json.beginList("properties");
        level.hasProperties = true;
        json.onNewLine().beginObject();
        if (!member.key.empty())
            json.member("key", member.key);
        json.member("kind", kind);
        if (!member.type.empty())
            json.member("type", member.type);
    }

    void writeWhatItIs(const Object& object)
    {
        if (const std::string word = kindWordOf(object); !word.empty())
            json.member("kind", word);
        if (const Category category = source.elements.category(objects); category != Category::none) {
            json.member("category", nameOf(category));
            if (const std::string name = source.elements.qualifiedName(objects); !name.empty())
                json.member("qualified_name", name);
        }
        if (!object.names().empty()) {
            json.beginList("names");
            for (const Value& name : object.names())
                json.value(textMeant(name, room));
            json.endList();
        }
        if (const auto number = object.viewNumber())
            json.member("view_number", std::uint64_t{*number});
    }

    void writeValue(const Value& value)
    {
        json.key("value");
        if (value.kind() == ValueKind::number)
            writeNumber(json, value);
        else if (value.kind() == ValueKind::point)
            writePoint(json, value);
        else if (const auto flag = value.asBool())
            json.value(*flag);
        else if (const auto number = value.asReference())
            json.value(std::uint64_t{*number});
        else
            json.value(textMeant(value, room));
    }

    // Line, column, first byte, number of bytes.
    void writePlace(const Extent& extent)
    {
        json.beginList("place");
        for (const std::size_t number : {extent.line, extent.column, extent.byte, extent.length})
            json.value(std::uint64_t{number});
        json.endList();
    }

    void close()
    {
        if (levels.back().kind == LevelKind::object && levels.back().hasProperties)
            json.endList();
        json.endObject();
        levels.pop_back();
    }

    void flush()
    {
        if (out.size() < pieceSize)
            return;
        sink(out);
        out.clear();
    }

    const Source& source;
    const Sink& sink;
    Targets targets;
    std::string out;
    text::JsonWriter json{out, {.indentation = 0, .isDense = true, .isForTerminal = true}};
    std::string room;
    Elements::Number objects = 0; // so many there were so far
    std::vector<Level> levels;
};

} // namespace

void writeJson(const Source& source, const Sink& write)
{
    Tree(source, write).write();
}

} // namespace dump
