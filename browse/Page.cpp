#include "browse/Page.h"

#include "browse/PageTemplate.h"
#include "browse/Sheets.h"
#include "text/JsonWriter.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>

namespace browse {

namespace {

using reader::Object;

// Texts are handed on in pieces of about this size.
constexpr std::size_t pieceSize = std::size_t{1} << 20U;

void passOn(std::string& text, const Sink& sink)
{
    sink(text);
    text.clear();
}

std::string escapedText(std::string_view text)
{
    std::string result;
    for (const char c : text)
        if (c == '<')
            result += "&lt;";
        else if (c == '&')
            result += "&amp;";
        else
            result += c;
    return result;
}

bool beginsWith(std::string_view text, std::string_view lowerCase)
{
    return text.size() >= lowerCase.size() &&
           std::equal(lowerCase.begin(), lowerCase.end(), text.begin(),
                      [](char a, char b) { return a == std::tolower(static_cast<unsigned char>(b)); });
}

// What would end the element of the page that holds a picture, or change what ends it, becomes text.
std::string harmless(std::string picture)
{
    constexpr std::array<std::string_view, 3> ends = {"<!--", "<script", "</script"};
    for (std::size_t at = picture.find('<'); at != std::string::npos; at = picture.find('<', at + 1)) {
        const std::string_view rest = std::string_view(picture).substr(at, 8);
        if (std::any_of(ends.begin(), ends.end(), [&](std::string_view end) { return beginsWith(rest, end); }))
            picture.replace(at, 1, "&lt;");
    }
    return picture;
}

class Page {
public:
    Page(const reader::Document& document, const reader::Index& index, const PageOptions& options, const Sink& sink)
        : document(document), index(index), options(options), sink(sink), elements(document, index)
    {
    }

    void write()
    {
        sink(beforeTitle());
        sink(escapedText(options.title));
        sink(beforeModel());
        writeModel();
        sink(beforePictures());
        writePictures();
        sink(afterPictures());
    }

private:
    void writeModel()
    {
        std::string text;
        text::JsonWriter json(text, pageLayout);
        json.beginObject().key("title").value(options.title).key("objects").value(document.objectCount());
        writeFiles(json);
        writeKinds(json);
        json.key("elements").beginList();
        Sheets sheets(document, index, elements);
        for (const Element& element : elements.all()) {
            json.beginList().value(element.kind).value(element.parent).value(element.name).value(element.id);
            json.beginObject();
            sheets.write(json, element);
            json.endObject().endList();
            if (text.size() > pieceSize)
                passOn(text, sink);
        }
        json.endList().key("shared").beginList();
        sheets.writeShared(json);
        json.endList();
        writeDiagrams(json, text);
        json.endObject();
        passOn(text, sink);
    }

    void writeFiles(text::JsonWriter& json) const
    {
        json.key("files").beginList();
        for (const reader::File& file : document.files())
            json.beginList()
                .value(std::filesystem::path(file.name).filename().string())
                .value(std::to_string(file.version))
                .value(file.encoding)
                .value(file.writtenBy)
                .endList();
        json.endList().key("missing").beginList();
        for (const reader::MissingUnit& unit : document.missingUnits())
            json.beginList()
                .value(unit.fileName)
                .value(unit.reason)
                .value(numberOf(elements.placeOf(unit.stub)))
                .endList();
        json.endList();
    }

    void writeKinds(text::JsonWriter& json) const
    {
        json.key("kinds").beginList();
        for (const Kind& kind : elements.kinds())
            json.beginList()
                .value(kind.word)
                .value(kind.icon)
                .value(static_cast<std::size_t>(kind.group))
                .value(kind.forward)
                .value(kind.backward)
                .value(kind.isRelation ? 1 : 0)
                .endList();
        json.endList();
    }

    // "diagrams": [[ELEMENT, [VIEW, ELEMENT, VIEW, ELEMENT ...]], ...]
    void writeDiagrams(text::JsonWriter& json, std::string& text) const
    {
        json.key("diagrams").beginList();
        for (const reader::Diagram& diagram : index.diagrams()) {
            json.beginList().value(numberOf(elements.placeOf(diagram.object))).beginList();
            reader::forEachObject(*diagram.object, [&](const Object& item) { writeItem(json, item); });
            json.endList().endList();
            if (text.size() > pieceSize)
                passOn(text, sink);
        }
        json.endList();
    }

    void writeItem(text::JsonWriter& json, const Object& item) const
    {
        const auto number = item.viewNumber();
        if (!number)
            return;
        const std::size_t place = elements.placeOf(index.element(item).element);
        if (place != Elements::nowhere)
            json.value(std::uint64_t{*number}).value(place);
    }

    void writePictures() const
    {
        std::size_t number = 0;
        for (const reader::Diagram& diagram : index.diagrams()) {
            sink("<script type=\"image/svg+xml\" id=\"picture-" + std::to_string(number++) + "\">");
            sink(harmless(options.picture ? options.picture(diagram) : std::string()));
            sink("</script>\n");
        }
    }

    const reader::Document& document;
    const reader::Index& index;
    const PageOptions& options;
    const Sink& sink;
    Elements elements;
};

} // namespace

void writePage(const reader::Document& document, const reader::Index& index, const PageOptions& options,
               const Sink& sink)
{
    Page(document, index, options, sink).write();
}

} // namespace browse
