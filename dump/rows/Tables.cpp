#include "dump/rows/Tables.h"

#include "dump/facts/Targets.h"
#include "dump/facts/Values.h"
#include "dump/facts/Walk.h"
#include "dump/rows/ElementRows.h"
#include "dump/rows/FileRows.h"
#include "dump/rows/Row.h"

#include <vector>

namespace dump {

using reader::Object;

namespace {

// What is in the files.
class ContentRows : public Visitor {
public:
    ContentRows(const Source& theSource, const RowSink& theSink) : source(theSource), sink(theSink), targets(theSource)
    {
    }

    void beginObject(const Object& object, const Member& member, const Extent& extent) override
    {
        const Level around = open.empty() ? Level{} : open.back();
        const Elements::Number number = ++objects;
        targets.beginObject(number, member);
        row.number(number).object(around.object).object(around.list);
        addPosition(member);
        addNames(object);
        row.number(extent.file);
        addPlace(extent);
        row.give(sink, TableName::objects);
        open.push_back({number, 0});
        addFurtherNames(object, extent);
        if (source.elements.category(number) != Category::none)
            addElement(source, number, extent, row, sink);
        const Elements::Number diagram = source.elements.diagram(number);
        if (diagram != 0 && diagram != number && (object.viewNumber() || around.object == diagram))
            addView(source, number, around.object, extent, row, sink);
    }

    void endObject() override
    {
        targets.endObject();
        open.pop_back();
    }

    void beginList(const Member& member, const Extent& extent) override
    {
        targets.beginList(member);
        addProperty(member, nameOfKind(*member.value));
        row.none().none().none();
        addPlace(extent);
        row.give(sink, TableName::properties);
        open.push_back({open.back().object, properties});
    }

    void endList() override { open.pop_back(); }

    void value(const Member& member, const Extent& extent) override
    {
        addProperty(member, nameOfKind(*member.value));
        row.text(textMeant(*member.value, room));
        if (const auto target = targets.of(member))
            row.object(target->object).text(target->state);
        else
            row.none().none();
        addPlace(extent);
        row.give(sink, TableName::properties);
    }

private:
    struct Level {
        Elements::Number object = 0;
        Elements::Number list = 0; // the property that it is; 0 is an object
    };

    void addPosition(const Member& member)
    {
        member.position == Member::nowhere ? row.none() : row.number(member.position);
        row.nonEmpty(member.key);
    }

    void addNames(const Object& object)
    {
        const auto names = object.names();
        row.text(object.kind());
        for (const std::size_t i : {0U, 1U})
            i < names.size() ? row.text(names[i].asText()) : row.none();
        const auto number = object.viewNumber();
        number ? row.number(*number) : row.none();
        row.nonEmpty(object.get("quid").raw());
    }

    // No known object has more than two.
    void addFurtherNames(const Object& object, const Extent& extent)
    {
        const auto names = object.names();
        for (std::size_t i = 2; i < names.size(); ++i) {
            addProperty({.position = i, .value = &names[i]}, "name");
            row.text(names[i].asText()).none().none();
            addPlace(extent);
            row.give(sink, TableName::properties);
        }
    }

    void addProperty(const Member& member, std::string_view kind)
    {
        row.number(++properties).number(open.back().object).object(open.back().list);
        addPosition(member);
        row.text(kind).nonEmpty(member.type);
    }

    void addPlace(const Extent& extent)
    {
        row.number(extent.line).number(extent.column).number(extent.byte).number(extent.length);
    }

    const Source& source;
    const RowSink& sink;
    Targets targets;
    Row row;
    std::string room;
    Elements::Number objects = 0; // so many there were so far
    Elements::Number properties = 0;
    std::vector<Level> open;
};

} // namespace

void giveRows(const Source& source, const RowSink& sink)
{
    giveFileRows(source, sink);
    ContentRows content(source, sink);
    walk(source.document, content);
}

} // namespace dump
