#include "browse/Page.h"

#include "browse/Fields.h"
#include "browse/PageTemplate.h"
#include "browse/Sheets.h"
#include "text/JsonWriter.h"

#include <filesystem>

namespace browse {

namespace {

using reader::Object;

// Texts are handed on in pieces of about this size.
constexpr std::size_t pieceSize = std::size_t{1} << 20U;

void passOn(std::string& text, Packer& packer)
{
    packer.add(text);
    text.clear();
}

class Page {
public:
    Page(const reader::Document& document, const reader::Index& index, const PageOptions& options, const Sink& sink)
        : document(document), index(index), options(options), sink(sink), elements(document, index)
    {
    }

    void write()
    {
        const PageTemplate& page = modelPage();
        sink(page.beforeTitle);
        sink(escapedText(options.title));
        sink(page.beforeModel);
        writeModel();
        sink(page.beforePictures);
        writePictures();
        sink(page.afterPictures);
    }

private:
    void writeModel()
    {
        Packer packer(sink);
        std::string text;
        text::JsonWriter json(text, pageLayout);
        json.beginObject().key("title").value(options.title).key("objects").value(document.objectCount());
        writeFiles(json);
        writeMissing(json);
        writeFaults(json);
        writeKinds(json);
        json.key("elements").beginList();
        Sheets sheets(document, index, elements);
        for (const Element& element : elements.all()) {
            writeElement(json, sheets, element);
            if (text.size() > pieceSize)
                passOn(text, packer);
        }
        json.endList().key("shared").beginList();
        sheets.writeShared(json);
        json.endList();
        writeDiagrams(json, text, packer);
        json.endObject();
        passOn(text, packer);
        packer.finish();
    }

    static void writeElement(text::JsonWriter& json, Sheets& sheets, const Element& element)
    {
        using enum ElementField;
        json.beginList();
        FieldWriter<ElementField>(json)
            .add<kind>(element.kind)
            .add<parent>(element.parent)
            .add<name>(element.name)
            .add<id>(element.id)
            .add<details>([&] {
                json.beginObject();
                sheets.write(json, element);
                json.endObject();
            });
        json.endList();
    }

    void writeFiles(text::JsonWriter& json) const
    {
        using enum FileField;
        json.key("files").beginList();
        for (const reader::File& file : document.files()) {
            json.beginList();
            FieldWriter<FileField>(json)
                .add<name>(std::filesystem::path(file.name).filename().string())
                .add<version>(std::to_string(file.version))
                .add<encoding>(file.encoding)
                .add<writtenBy>(file.writtenBy);
            json.endList();
        }
        json.endList();
    }

    void writeMissing(text::JsonWriter& json) const
    {
        using enum MissingField;
        json.key("missing").beginList();
        for (const reader::MissingUnit& unit : document.missingUnits()) {
            json.beginList();
            FieldWriter<MissingField>(json)
                .add<file>(unit.fileName)
                .add<reason>(unit.reason)
                .add<stub>(numberOf(elements.placeOf(unit.stub)));
            json.endList();
        }
        json.endList();
    }

    // Where the file is not in the notation, so that what is shown may not be all of it.
    void writeFaults(text::JsonWriter& json) const
    {
        using enum FaultField;
        json.key("faults").beginList();
        for (const reader::Finding& finding : document.findings()) {
            if (finding.severity != reader::Severity::error)
                continue;
            json.beginList();
            FieldWriter<FaultField>(json)
                .add<place>(std::filesystem::path(finding.place.file).filename().string() + ":" +
                            std::to_string(finding.place.line) + ":" + std::to_string(finding.place.column))
                .add<FaultField::text>(finding.text);
            json.endList();
        }
        json.endList();
    }

    void writeKinds(text::JsonWriter& json) const
    {
        using enum KindField;
        json.key("kinds").beginList();
        for (const Kind& kind : elements.kinds()) {
            json.beginList();
            FieldWriter<KindField>(json)
                .add<word>(kind.word)
                .add<icon>(kind.icon)
                .add<group>(static_cast<std::size_t>(kind.group))
                .add<forward>(kind.forward)
                .add<backward>(kind.backward)
                .add<isRelation>(kind.isRelation ? 1 : 0);
            json.endList();
        }
        json.endList();
    }

    // The items of a diagram are [VIEW, ELEMENT, VIEW, ELEMENT ...].
    void writeDiagrams(text::JsonWriter& json, std::string& text, Packer& packer) const
    {
        using enum DiagramField;
        json.key("diagrams").beginList();
        for (const reader::Diagram& diagram : index.diagrams()) {
            json.beginList();
            FieldWriter<DiagramField>(json).add<element>(numberOf(elements.placeOf(diagram.object))).add<items>([&] {
                json.beginList();
                reader::forEachObject(*diagram.object, [&](const Object& item) { writeItem(json, item); });
                json.endList();
            });
            json.endList();
            if (text.size() > pieceSize)
                passOn(text, packer);
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
            sink("<script type=\"text/plain\" id=\"picture-" + std::to_string(number++) + "\">");
            if (const std::string picture = options.picture ? options.picture(diagram) : ""; !picture.empty())
                pack(picture, sink);
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

void writePage(const reader::Document& document, const reader::Index& index, const PageOptions& options,
               const Sink& sink)
{
    Page(document, index, options, sink).write();
}

} // namespace browse
