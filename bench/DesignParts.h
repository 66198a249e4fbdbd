#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

// The texts of which the designs are put together.

namespace parts {

// An empty field or entry is left out.

inline void appendWithComma(std::string& list, std::string_view entry)
{
    if (!list.empty() && !entry.empty())
        list += ',';
    list += entry;
}

inline std::string quoted(std::string_view text)
{
    return '"' + std::string(text) + '"';
}

inline std::string field(std::string_view key, std::string_view value)
{
    return value.empty() ? "" : quoted(key) + ':' + std::string(value);
}

inline std::string field(std::string_view key, std::size_t value)
{
    return field(key, std::to_string(value));
}

// `value` holds nothing that JSON wants escaped.
inline std::string textField(std::string_view key, std::string_view value)
{
    return value.empty() ? "" : field(key, quoted(value));
}

template <class... Entries>
std::string listed(const Entries&... entries)
{
    std::string text;
    (appendWithComma(text, entries), ...);
    return text;
}

template <class... Entries>
std::string list(const Entries&... entries)
{
    return '[' + listed(entries...) + ']';
}

template <class... Fields>
std::string object(const Fields&... fields)
{
    return '{' + listed(fields...) + '}';
}

// `entry(i)` for each i below `count`.
template <class Entry>
std::string repeated(std::size_t count, Entry entry)
{
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        appendWithComma(text, entry(i));
    return text;
}

inline std::string repeatedText(std::size_t count, std::string_view part)
{
    std::string text;
    text.reserve(count * part.size());
    for (std::size_t i = 0; i < count; ++i)
        text += part;
    return text;
}

// What all designs are made of.

inline std::string numbered(std::string_view word, std::size_t number)
{
    return std::string(word) + std::to_string(number);
}

inline std::string reference(std::string_view word, std::size_t number)
{
    return quoted(numbered(word, number));
}

template <class... Fields>
std::string modelFile(const Fields&... fields)
{
    return object(textField("format", "kiv-model"), field("version", 1), fields...);
}

template <class... Fields>
std::string packageOf(std::size_t number, const Fields&... fields)
{
    return object(textField("name", numbered("Package", number)), fields...);
}

template <class... Fields>
std::string classOf(std::size_t number, const Fields&... fields)
{
    const std::string name = numbered("Class", number);
    return object(textField("kind", "class"), textField("id", name), textField("name", name), fields...);
}

template <class... Fields>
std::string elementOf(std::string_view kind, std::string_view id, const Fields&... fields)
{
    return object(textField("kind", kind), textField("id", id), fields...);
}

template <class... Fields>
std::string diagramOf(std::size_t number, const Fields&... fields)
{
    const std::string name = numbered("Diagram", number);
    return object(textField("id", name), textField("name", name), fields...);
}

// A box in a grid of ten columns.
inline std::string projection(std::size_t diagram, std::size_t place)
{
    return object(field("diagram", reference("Diagram", diagram)), field("x", 400 + place % 10 * 800),
                  field("y", 300 + place / 10 % 1000 * 600), field("width", 600), field("height", 300));
}

inline std::string lineProjection(std::size_t diagram, std::string_view vertices)
{
    return object(field("diagram", reference("Diagram", diagram)), textField("vertices", vertices));
}

inline std::string drawnClass(std::size_t number, std::size_t diagram)
{
    return classOf(number, field("projections", list(projection(diagram, number))));
}

template <class... Entries>
std::string onePackage(const Entries&... elements)
{
    return modelFile(field("childPackages", list(packageOf(0, field("modelElements", list(elements...))))));
}

// A package with these elements and a diagram that shows what `drawn` names.
inline std::string oneDiagram(std::string_view elements, std::string_view drawn, std::string_view diagramNotes = {})
{
    return modelFile(
        field("childPackages",
              list(packageOf(0, field("modelElements", list(elements)),
                             field("diagrams", list(diagramOf(0, field("elements", list(drawn)),
                                                              field("notes", std::string(diagramNotes)))))))));
}

// The base types that the host knows, one of each.
constexpr std::array<std::string_view, 17> dataTypes = {
    "BINARY", "CHAR", "DATE",     "DOUBLE",  "VARBINARY", "LONGVARBINARY", "INTEGER", "AUTOINCREMENT", "NUMERIC",
    "REAL",   "TIME", "SMALLINT", "VARCHAR", "TIMESTAMP", "LONGVARCHAR",   "BOOLEAN", "TINYINT",
};

inline std::string baseTypes()
{
    return repeated(dataTypes.size(), [](std::size_t i) {
        return object(textField("id", numbered("Type", i)), textField("name", numbered("Type", i)),
                      textField("dataType", dataTypes[i]), field("length", 10 + i));
    });
}

inline std::string typeReference(std::size_t i)
{
    return reference("Type", i % dataTypes.size());
}

} // namespace parts
