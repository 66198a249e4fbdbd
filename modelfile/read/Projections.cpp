#include "modelfile/read/ObjectFields.h"
#include "modelfile/read/Tables.h"

// What every model object can hold: notes, and where it is drawn.

namespace modelfile {

namespace {

// "#rrggbb", or the number that Rose writes: red + 256 x green + 65536 x blue.
int readColour(Builder& builder, Value& value)
{
    const std::string_view token = Builder::tokenOf(value);
    if (token.empty() || token.front() != '"')
        return Builder::readInteger<int>(value);
    const std::string_view text = builder.readText(value);
    int colour = 0;
    const char* const end = text.data() + text.size();
    const bool hasSize = text.size() == 7 && text.front() == '#' && text[1] != '-';
    if (!hasSize || std::from_chars(text.data() + 1, end, colour, 16).ptr != end)
        Builder::fail(token.data(), "a colour such as \"#ffffcc\", or a number",
                      "the text " + std::string(shownPart(token)));
    return (colour >> 16 & 0xFF) | (colour & 0xFF00) | (colour & 0xFF) << 16;
}

template <int KivProjection::*Member>
constexpr Field<KivProjection> colour(std::string_view key)
{
    return {key, [](Builder& builder, KivProjection& projection, Value& value) {
                projection.*Member = readColour(builder, value);
            }};
}

// A point as the host keeps it: `(x,y)`.
std::string pointOf(Builder& builder, Value& pair)
{
    std::array<int, 2> coordinates = {};
    std::size_t count = 0;
    const char* const at = Builder::tokenOf(pair).data();
    builder.readList(pair, [&](Value& number, std::size_t index) {
        count = index + 1;
        const int coordinate = Builder::readInteger<int>(number);
        if (index < coordinates.size())
            coordinates[index] = coordinate;
    });
    if (count != coordinates.size())
        Builder::fail(at, "a point [x, y]", "a list of " + std::to_string(count));
    return std::string("(")
        .append(std::to_string(coordinates[0]))
        .append(",")
        .append(std::to_string(coordinates[1]))
        .append(")");
}

// The text that the host keeps, or the points that it is made of.
KivString readVertices(Builder& builder, Value& value)
{
    const std::string_view token = Builder::tokenOf(value);
    if (token.empty() || token.front() != '[')
        return KivString(builder.readText(value, "a text or a list of points"));
    std::string points;
    builder.readList(value, [&](Value& pair, std::size_t index) {
        points.append(index == 0 ? "" : "\r\n").append(pointOf(builder, pair));
    });
    return KivString(std::string_view(points));
}

constexpr auto projectionFields =
    fieldTable(reference<&KivProjection::diagram>("diagram"), member<&KivProjection::x>("x"),
               member<&KivProjection::y>("y"), member<&KivProjection::width>("width"),
               member<&KivProjection::height>("height"), colour<&KivProjection::lineColor>("lineColor"),
               colour<&KivProjection::fillColor>("fillColor"), colour<&KivProjection::fontColor>("fontColor"),
               member<&KivProjection::fontName>("fontName"), member<&KivProjection::fontSize>("fontSize"),
               Field<KivProjection>{"vertices", [](Builder& builder, KivProjection& projection, Value& value) {
                                        static_cast<KivRelationshipProjection&>(projection).vertices =
                                            readVertices(builder, value);
                                    }});

void readProjection(Builder& builder, KivVector<KivProjection>& projections, Value& value)
{
    const char* const at = Builder::tokenOf(value).data();
    Object object = builder.readObject(value);
    bool hasDiagram = false;
    builder.findField(object, "diagram", [&](Value& diagram) { hasDiagram = !Builder::isNull(diagram); });
    if (!hasDiagram)
        Builder::fail(at, "the id of a class diagram", "no \"diagram\"", "diagram");
    const bool isLine = builder.findField(object, "vertices", [](Value&) {});
    KivProjection* const projection =
        isLine ? builder.create<KivRelationshipProjection>() : builder.create<KivProjection>();
    builder.readFields(object, *projection, projectionFields);
    projections.add(projection);
}

} // namespace

void readNotes(Builder& builder, KivVector<KivNote>& notes, Value& value)
{
    builder.readList(value, [&](Value& item, std::size_t /*index*/) {
        auto* const note = builder.create<KivNote>();
        note->description = KivString(builder.readText(item));
        notes.add(note);
    });
}

void readProjections(Builder& builder, KivVector<KivProjection>& projections, Value& value)
{
    builder.readList(value, [&](Value& item, std::size_t /*index*/) { readProjection(builder, projections, item); });
}

std::vector<ObjectKeys> projectionKeys()
{
    return {keysOf("projection", projectionFields)};
}

} // namespace modelfile
