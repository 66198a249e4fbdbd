#include "browse/Page.h"

#include "browse/Json.h"
#include "browse/PageTemplate.h"
#include "browse/Sheets.h"

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
        Json json(text);
        json.openObject().key("title").text(options.title).key("objects").number(document.objectCount());
        writeFiles(json);
        writeKinds(json);
        json.key("elements").openList();
        Sheets sheets(document, index, elements);
        for (const Element& element : elements.all()) {
            json.openList().number(element.kind).number(element.parent).text(element.name).text(element.id);
            json.openObject();
            sheets.write(json, element);
            json.closeObject().closeList();
            if (text.size() > pieceSize)
                passOn(text, sink);
        }
        json.closeList().key("shared").openList();
        sheets.writeShared(json);
        json.closeList();
        writeDiagrams(json, text);
        json.closeObject();
        passOn(text, sink);
    }

    void writeFiles(Json& json) const
    {
        json.key("files").openList();
        for (const reader::File& file : document.files())
            json.openList()
                .text(std::filesystem::path(file.name).filename().string())
                .text(std::to_string(file.version))
                .text(file.encoding)
                .text(file.writtenBy)
                .closeList();
        json.closeList().key("missing").openList();
        for (const reader::MissingUnit& unit : document.missingUnits())
            json.openList().text(unit.fileName).text(unit.reason).place(elements.placeOf(unit.stub)).closeList();
        json.closeList();
    }

    void writeKinds(Json& json) const
    {
        json.key("kinds").openList();
        for (const Kind& kind : elements.kinds())
            json.openList()
                .text(kind.word)
                .text(kind.icon)
                .number(static_cast<std::size_t>(kind.group))
                .text(kind.forward)
                .text(kind.backward)
                .number(kind.isRelation ? 1 : 0)
                .closeList();
        json.closeList();
    }

    // "diagrams": [[ELEMENT, [VIEW, ELEMENT, VIEW, ELEMENT ...]], ...]
    void writeDiagrams(Json& json, std::string& text) const
    {
        json.key("diagrams").openList();
        for (const reader::Diagram& diagram : index.diagrams()) {
            json.openList().place(elements.placeOf(diagram.object)).openList();
            reader::forEachObject(*diagram.object, [&](const Object& item) { writeItem(json, item); });
            json.closeList().closeList();
            if (text.size() > pieceSize)
                passOn(text, sink);
        }
        json.closeList();
    }

    void writeItem(Json& json, const Object& item) const
    {
        const auto number = item.viewNumber();
        if (!number)
            return;
        const std::size_t place = elements.placeOf(index.element(item).element);
        if (place != Json::nowhere)
            json.number(*number).number(place);
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
