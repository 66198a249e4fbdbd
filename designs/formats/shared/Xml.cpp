#include "designs/formats/shared/Xml.h"

#include "text/Encodings.h"
#include "text/Places.h"
#include "text/Utf8.h"
#include "text/Words.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <optional>
#include <utility>

namespace design::xml {

namespace {

constexpr std::size_t maximumSize = std::size_t(1) << 30;
constexpr int maximumDepth = 500; // the readers descend with the tree
constexpr std::size_t headSize = 16384;

// The encoding that the XML declaration names, in small letters; empty if there is none.
std::string declaredEncoding(std::string_view bytes)
{
    if (!bytes.starts_with("<?xml"))
        return {};
    const std::string_view declaration = bytes.substr(0, std::min(bytes.find("?>"), std::size_t(300)));
    const std::size_t key = declaration.find("encoding");
    if (key == std::string_view::npos)
        return {};
    const std::size_t open = declaration.find_first_of("\"'", key);
    if (open == std::string_view::npos)
        return {};
    const std::size_t close = declaration.find(declaration[open], open + 1);
    const std::string_view name = declaration.substr(open + 1, close == std::string_view::npos ? 0 : close - open - 1);
    const bool isName = std::all_of(name.begin(), name.end(), [](unsigned char letter) {
        return std::isalnum(letter) != 0 || letter == '-' || letter == '_' || letter == '.' || letter == ':';
    });
    return isName ? text::lowerCase(name) : std::string("?");
}

// UTF-16, by byte order mark or by the zero byte beside the first character.
std::optional<std::string> utf16Name(std::string_view bytes)
{
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with(std::string_view("<\0", 2)))
        return "UTF-16LE";
    if (bytes.starts_with("\xFE\xFF") || bytes.starts_with(std::string_view("\0<", 2)))
        return "UTF-16BE";
    return std::nullopt;
}

std::string withoutMark(std::string text)
{
    if (text.starts_with(text::byteOrderMark))
        text.erase(0, text::byteOrderMark.size());
    return text;
}

// Bytes that are no character in `encoding` become U+FFFD.
std::string convert(std::string_view bytes, const std::string& encoding)
{
    std::optional<text::Decoded> decoded = text::decoded(bytes, encoding);
    if (!decoded)
        throw UnreadableDesign("1:1: unknown encoding " + encoding);
    return std::move(decoded->text);
}

// "12:5: "
std::string position(std::string_view text, std::size_t offset)
{
    return text::lineAndColumnAt(text, std::min(offset, text.size())).asText() + ": ";
}

bool isPredefinedEntity(std::string_view name)
{
    constexpr std::array<std::string_view, 5> predefined = {"amp", "lt", "gt", "quot", "apos"};
    return name.starts_with('#') || std::find(predefined.begin(), predefined.end(), name) != predefined.end();
}

// Entities of a document type are a way to blow a small file up or to read other files, so none is expanded. The
// parser would leave "&name;" as it stands.
void refuseEntities(std::string_view text)
{
    constexpr std::array<std::array<std::string_view, 2>, 2> passedOver = {{{"<!--", "-->"}, {"<![CDATA[", "]]>"}}};
    std::size_t at = 0;
    while ((at = text.find_first_of("<&", at)) != std::string_view::npos) {
        const std::string_view rest = text.substr(at);
        const auto* const skipped = std::find_if(passedOver.begin(), passedOver.end(),
                                                 [rest](const auto& pair) { return rest.starts_with(pair[0]); });
        if (skipped != passedOver.end()) {
            at = text.find((*skipped)[1], at + (*skipped)[0].size());
            continue;
        }
        const std::size_t length = rest.substr(1, 80).find_first_of("; \t\r\n<&\"'");
        const std::string_view name = rest.substr(1, length);
        const bool isEntity = rest.front() == '&' && length != std::string_view::npos && length > 0 &&
                              std::all_of(name.begin(), name.end(), [](unsigned char byte) { return byte > ' '; });
        if (isEntity && rest[length + 1] == ';' && !isPredefinedEntity(name))
            throw UnreadableDesign(position(text, at) + "entity &" + std::string(name) + "; is not expanded");
        ++at;
    }
}

// The parser and this walk do not recurse; whatever reads the tree does.
class DepthCheck : public pugi::xml_tree_walker {
public:
    explicit DepthCheck(std::string_view theText) : text(theText) {}

    bool for_each(pugi::xml_node& node) override
    {
        if (depth() < maximumDepth)
            return true;
        const auto offset = static_cast<std::size_t>(std::max<std::ptrdiff_t>(node.offset_debug(), 0));
        throw UnreadableDesign(position(text, offset) + "elements are nested more than " +
                               std::to_string(maximumDepth) + " deep");
    }

private:
    std::string_view text;
};

std::string checkedUtf8(std::string_view bytes)
{
    if (bytes.size() > maximumSize)
        throw UnreadableDesign("larger than " + std::to_string(maximumSize >> 20U) + " MiB");
    return toUtf8(bytes);
}

} // namespace

std::string toUtf8(std::string_view bytes)
{
    if (const auto name = utf16Name(bytes))
        return convert(bytes, *name);
    const std::string declared = declaredEncoding(bytes);
    if (declared.empty() || declared.starts_with("utf") || declared == "us-ascii")
        return withoutMark(text::isWellFormed(bytes) ? std::string(bytes) : text::mended(bytes));
    return convert(bytes, declared);
}

Document::Document(std::string_view bytes)
{
    const std::string text = checkedUtf8(bytes);
    refuseEntities(text);
    const pugi::xml_parse_result result =
        tree_.load_buffer(text.data(), text.size(), pugi::parse_default, pugi::encoding_utf8);
    if (!result) {
        const auto offset = static_cast<std::size_t>(std::max<std::ptrdiff_t>(result.offset, 0));
        throw UnreadableDesign(position(text, offset) + result.description());
    }
    if (!root())
        throw UnreadableDesign("1:1: no element");
    DepthCheck check(text);
    root().traverse(check);
}

std::string head(std::string_view bytes)
{
    std::string_view start = bytes.substr(0, headSize);
    // A sequence that the cut divides would make UTF-8 look like Windows-1252.
    while (start.size() < bytes.size() && !start.empty() && (static_cast<unsigned char>(start.back()) & 0x80U) != 0)
        start.remove_suffix(1);
    try {
        return toUtf8(start);
    } catch (const UnreadableDesign&) { // reading all of it will say why
        return text::mended(start);
    }
}

std::string_view localName(std::string_view name)
{
    const std::size_t colon = name.rfind(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

std::string_view xmiAttribute(pugi::xml_node node, std::string_view name)
{
    for (const pugi::xml_attribute attribute : node.attributes()) {
        const std::string_view full = attribute.name();
        if (full.size() == name.size() + 4 && full.ends_with(name) && (full[3] == ':' || full[3] == '.') &&
            full.starts_with("xmi"))
            return attribute.value();
    }
    return {};
}

std::string_view typeName(pugi::xml_node node)
{
    const std::string_view type = xmiAttribute(node, "type");
    return localName(type.empty() ? std::string_view(node.attribute("xsi:type").value()) : type);
}

std::string_view property(pugi::xml_node node, const char* name)
{
    if (const pugi::xml_attribute attribute = node.attribute(name))
        return attribute.value();
    return node.child(name).text().get();
}

bool flag(pugi::xml_node node, const char* name)
{
    const std::string_view value = property(node, name);
    return value == "true" || value == "1";
}

double number(std::string_view text, double otherwise)
{
    constexpr double limit = 1e8;
    while (text.starts_with(' ') || text.starts_with('+'))
        text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && std::abs(value) < limit ? value : otherwise;
}

std::vector<std::string_view> words(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n";
    std::vector<std::string_view> parts;
    std::size_t at = 0;
    while ((at = text.find_first_not_of(blanks, at)) != std::string_view::npos) {
        const std::size_t end = std::min(text.find_first_of(blanks, at), text.size());
        parts.push_back(text.substr(at, end - at));
        at = end;
    }
    return parts;
}

std::string_view between(std::string_view text, std::string_view key, char end)
{
    const std::size_t at = text.find(key);
    if (at == std::string_view::npos)
        return {};
    const std::string_view rest = text.substr(at + key.size());
    return rest.substr(0, rest.find(end));
}

namespace {

class SinkWriter : public pugi::xml_writer {
public:
    explicit SinkWriter(text::Sink& sink) : tail(sink) {}

    void write(const void* data, std::size_t size) override
    {
        tail.text().append(static_cast<const char*>(data), size);
        tail.passOnWhenLong();
    }

    text::Tail tail;
};

} // namespace

void save(const pugi::xml_document& document, text::Sink& sink, unsigned int flags)
{
    SinkWriter writer(sink);
    document.save(writer, "  ", pugi::format_indent | flags, pugi::encoding_utf8);
    writer.tail.passOn();
}

} // namespace design::xml
