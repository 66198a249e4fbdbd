#include "modelfile/write/ModelOutput.h"

#include "modelfile/write/KnownClasses.h"
#include "text/Utf8.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <ostream>

namespace modelfile {

namespace {

// In an outermost package: keys of elements one a line, an attribute or a projection a line.
constexpr text::JsonLayout layout = {.deepestLine = 6};
constexpr std::size_t fullBuffer = 65536;

struct Point {
    int x;
    int y;
};

std::optional<int> coordinate(std::string_view text)
{
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

// The points of a text that is written as they would be; none for any other.
std::optional<std::vector<Point>> pointsOf(std::string_view text)
{
    std::vector<Point> points;
    std::string written;
    for (std::size_t at = 0; at < text.size(); at = std::min(text.find('(', at + 1), text.size())) {
        const std::string_view item = text.substr(at + 1, std::min(text.find(')', at), text.size()) - at - 1);
        const std::size_t comma = std::min(item.find(','), item.size());
        const std::optional<int> x = coordinate(item.substr(0, comma));
        const std::optional<int> y = coordinate(item.substr(std::min(comma + 1, item.size())));
        if (!x || !y)
            return std::nullopt;
        points.push_back({*x, *y});
        written.append(written.empty() ? "(" : "\r\n(")
            .append(std::to_string(*x))
            .append(",")
            .append(std::to_string(*y) + ")");
    }
    return written == text ? std::optional(std::move(points)) : std::nullopt;
}

} // namespace

ModelOutput::ModelOutput(Identities& theIdentities, Losses& theLosses, std::ostream* theStream)
    : json(buffer, layout), identities(theIdentities), losses(theLosses), stream(theStream)
{
}

bool ModelOutput::begins(const KivObject* object, const char* kind, const KivObject& holder)
{
    const KivObject* const within = holder.elementType == KivElementType::Model ? nullptr : &holder;
    if (object && kind && isKnownClass(*object))
        return identities.enter(*object, kind, within);
    if (object)
        lose(holder, "it holds " + text::jsonQuoted(text::mended(object->getName().view())) +
                         ", whose class has no place there in a model file");
    else
        lose(holder, "it holds nothing where an object belongs");
    return false;
}

void ModelOutput::flush()
{
    if (stream)
        stream->write(buffer.data(), static_cast<std::streamsize>(buffer.size()));
    buffer.clear();
}

void ModelOutput::flushWhenLarge()
{
    if (buffer.size() >= fullBuffer)
        flush();
}

void ModelOutput::common(const KivModelObject& object)
{
    if (const std::string& id = identities.id(object); !id.empty())
        json.member("id", id);
    texts(object);
    number("modelLevel", object.modelLevel);
    if (object.notes.isEmpty())
        return;
    json.beginList("notes");
    for (const KivNote* const note : object.notes) {
        if (note && isKnownClass(*note) && note->getName().isEmpty())
            quoted(object, "note", note->description.view());
        else
            lose(object, "a note of it is more than a text");
    }
    json.endList();
}

void ModelOutput::texts(const KivModelObject& object)
{
    text(object, "name", object.getName());
    text(object, "description", object.description);
    text(object, "stereotype", object.stereotype);
}

void ModelOutput::projections(const KivModelObject& object)
{
    bool isOpen = false;
    for (const KivProjection* const each : object.projections) {
        if (!each || !isKnownClass(*each) || !each->diagram) {
            lose(object, "a projection of it is on no diagram, or of a class of the host's own");
            continue;
        }
        identities.refer(object, *each->diagram);
        if (!identities.canReferTo(*each->diagram))
            continue;
        if (!std::exchange(isOpen, true))
            json.beginList("projections");
        projection(object, *each);
    }
    if (isOpen)
        json.endList();
}

void ModelOutput::projection(const KivObject& owner, const KivProjection& projection)
{
    static const KivProjection usual;
    json.beginObject();
    json.member("diagram", identities.id(*projection.diagram));
    number("x", projection.x);
    number("y", projection.y);
    number("width", projection.width);
    number("height", projection.height);
    colour("lineColor", projection.lineColor, usual.lineColor);
    colour("fillColor", projection.fillColor, usual.fillColor);
    colour("fontColor", projection.fontColor, usual.fontColor);
    if (projection.fontName != usual.fontName) {
        json.key("fontName");
        quoted(owner, "font", projection.fontName.view());
    }
    number("fontSize", projection.fontSize, usual.fontSize);
    if (projection.elementType == KivElementType::RelationshipProjection)
        vertices(owner, static_cast<const KivRelationshipProjection&>(projection).vertices);
    json.endObject();
}

void ModelOutput::colour(std::string_view key, int value, int usual)
{
    constexpr const char* digits = "0123456789abcdef";
    if (value == usual)
        return;
    json.key(key);
    if (value < 0 || value > 0xFFFFFF) {
        json.value(value);
        return;
    }
    std::string name = "#";
    for (const unsigned shift : {4U, 0U, 12U, 8U, 20U, 16U}) // red is lowest
        name += digits[static_cast<unsigned>(value) >> shift & 0xFU];
    json.value(name);
}

void ModelOutput::vertices(const KivObject& owner, const KivString& points)
{
    json.key("vertices");
    const auto pairs = pointsOf(points.view());
    if (!pairs || pairs->empty())
        return quoted(owner, "line", points.view());
    json.beginList();
    for (const Point& point : *pairs) {
        json.beginList().value(point.x).value(point.y).endList();
    }
    json.endList();
}

void ModelOutput::text(const KivObject& owner, std::string_view key, const KivString& value)
{
    if (value.isEmpty())
        return;
    json.key(key);
    quoted(owner, std::string(key).c_str(), value.view());
}

void ModelOutput::quoted(const KivObject& owner, const char* what, std::string_view value)
{
    if (text::isWellFormed(value)) {
        json.value(value);
        return;
    }
    lose(owner, std::string("its ") + what + " holds bytes that are no UTF-8");
    json.value(text::mended(value));
}

void ModelOutput::flag(std::string_view key, bool value)
{
    if (value)
        json.member(key, true);
}

void ModelOutput::number(std::string_view key, int value, int usual)
{
    if (value != usual)
        json.member(key, value);
}

void ModelOutput::code(std::string_view key, int value, int usual, std::span<const CodeName> names)
{
    if (value == usual)
        return;
    if (const std::string_view word = nameOfCode(names, value); !word.empty())
        json.member(key, word);
    else
        json.member(key, value);
}

void ModelOutput::position(std::int16_t value, std::size_t index)
{
    const auto usual = std::min<std::size_t>(index, std::numeric_limits<std::int16_t>::max());
    number("position", value, static_cast<int>(usual));
}

void ModelOutput::reference(const KivObject& owner, std::string_view key, const KivObject* target)
{
    if (!target)
        return;
    identities.refer(owner, *target);
    if (const std::string& id = identities.id(*target); !id.empty())
        json.member(key, id);
}

void ModelOutput::listedReference(const KivObject& owner, const KivObject* target)
{
    if (target)
        identities.refer(owner, *target);
    const std::string id = target ? identities.id(*target) : std::string();
    if (id.empty())
        json.written("null");
    else
        json.value(id);
}

} // namespace modelfile
