#include "dump/facts/Walk.h"

#include "text/Places.h"

#include <deque>
#include <span>
#include <unordered_map>
#include <vector>

namespace dump {

using reader::Attribute;
using reader::File;
using reader::List;
using reader::Object;
using reader::TypedValue;
using reader::Value;
using reader::ValueKind;

namespace {

// Without recursion: what is nested is on a stack of its own.
class Walk {
public:
    Walk(const reader::Document& document, Visitor& theVisitor) : files(document.files()), visitor(theVisitor)
    {
        for (const File& file : files) {
            texts.emplace_back(document.text(file));
            if (file.stub)
                units.emplace(file.root, texts.size());
        }
    }

    void run()
    {
        openFile(1);
        while (!open.empty()) {
            Level& level = open.back();
            const std::size_t next = level.next++;
            if (next == level.count)
                close();
            else if (level.kind == LevelKind::file)
                takeOutermost(level, next);
            else if (level.kind == LevelKind::object)
                takeAttribute(level, next);
            else
                take({.position = next}, level.values[next], level.values[next].position(), level.file);
        }
    }

private:
    enum class LevelKind : std::uint8_t { file, object, list };
    struct Level {
        LevelKind kind;
        std::size_t file; // that its text is in
        std::size_t count;
        const Object* object = nullptr;
        std::span<const Value> values = {};
        std::size_t next = 0;
    };
    struct Text {
        explicit Text(std::string_view text) : start(text.data()), places(text) {}

        const char* start;
        text::PlaceCursor places;
    };

    [[nodiscard]] Extent extent(std::size_t file, const char* begin, const char* end)
    {
        Text& text = texts[file - 1];
        const auto offset = static_cast<std::size_t>(begin - text.start);
        const auto [line, column] = text.places.at(offset);
        return {file, line, column, offset, static_cast<std::size_t>(end - begin)};
    }

    void openFile(std::size_t file)
    {
        visitor.beginFile(file);
        open.push_back({LevelKind::file, file, 2});
    }

    void takeOutermost(const Level& level, std::size_t next)
    {
        const File& file = files[level.file - 1];
        if (const Object* const object = next == 0 ? file.header : file.root)
            openObject(*object, {}, level.file);
    }

    void takeAttribute(const Level& level, std::size_t next)
    {
        const Attribute& attribute = level.object->attributes()[next];
        const char* const begin = attribute.key.empty() ? attribute.value.position() : attribute.key.data();
        take({.key = attribute.key}, attribute.value, begin, level.file);
    }

    // `(value Text "...")` is a text; what holds more is a list.
    void take(Member member, const Value& value, const char* begin, std::size_t file)
    {
        member.value = &value;
        member.kind = value.kind();
        if (const Object* const object = value.asObject()) {
            openNamed(*object, member, file);
        } else if (const List* const list = value.asList()) {
            member.type = list->kind();
            openList(member, list->values(), extent(file, begin, value.endPosition()));
        } else if (const TypedValue* const typed = value.asTyped()) {
            member.type = typed->type;
            takeTyped(member, *typed, extent(file, begin, value.endPosition()));
        } else {
            visitor.value(member, extent(file, begin, value.endPosition()));
        }
    }

    void takeTyped(Member member, const TypedValue& typed, const Extent& extent)
    {
        const ValueKind kind = typed.value.kind();
        if (kind == ValueKind::none || typed.value.asObject() || typed.value.asList() || typed.value.asTyped()) {
            openList(member, {&typed.value, kind == ValueKind::none ? 0U : 1U}, extent);
            return;
        }
        member.kind = kind;
        member.value = &typed.value;
        visitor.value(member, extent);
    }

    // In the place of the object that names a unit's file the document has the root of the unit.
    void openNamed(const Object& object, const Member& member, std::size_t file)
    {
        const auto unit = units.find(&object);
        if (unit == units.end()) {
            openObject(object, member, file);
            return;
        }
        openObject(*files[unit->second - 1].stub, member, file);
        openFile(unit->second);
    }

    void openObject(const Object& object, const Member& member, std::size_t file)
    {
        visitor.beginObject(object, member, extent(file, object.position(), object.endPosition()));
        open.push_back({LevelKind::object, file, object.attributes().size(), &object});
    }

    void openList(const Member& member, std::span<const Value> values, const Extent& extent)
    {
        visitor.beginList(member, extent);
        open.push_back({LevelKind::list, extent.file, values.size(), nullptr, values});
    }

    void close()
    {
        const LevelKind kind = open.back().kind;
        open.pop_back();
        if (kind == LevelKind::file)
            visitor.endFile();
        else if (kind == LevelKind::object)
            visitor.endObject();
        else
            visitor.endList();
    }

    const std::vector<File>& files;
    Visitor& visitor;
    std::deque<Text> texts;                               // of the files
    std::unordered_map<const Object*, std::size_t> units; // numbers of their files by their roots
    std::vector<Level> open;
};

} // namespace

void walk(const reader::Document& document, Visitor& visitor)
{
    Walk(document, visitor).run();
}

} // namespace dump
