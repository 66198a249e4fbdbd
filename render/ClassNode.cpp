#include "render/Node.h"

#include <algorithm>

namespace render {

namespace {

constexpr double shadow = 14;
constexpr std::size_t longestSignature = 1000; // of an operation, in bytes

struct Visibility {
    std::string_view keyword;
    std::string_view sign;
};

constexpr Visibility visibilities[] = {
    {"Public", "+"},
    {"Protected", "#"},
    {"Private", "-"},
    {"Implementation", "~"},
};

std::string signOf(const Object& feature, std::string_view key, std::string_view otherwise)
{
    const std::string keyword = feature.has(key) ? feature.text(key) : std::string(otherwise);
    for (const Visibility& visibility : visibilities)
        if (keyword == visibility.keyword)
            return std::string(visibility.sign);
    return {};
}

// ` : Money = 0`
std::string typeAndValue(const Object& feature)
{
    const std::string type = lineOf(feature, "type");
    const std::string value = lineOf(feature, "initv");
    return (type.empty() ? type : " : " + type) + (value.empty() ? value : " = " + value);
}

std::string featureStereotype(const Object& view, const Object& feature)
{
    const std::string stereotype = lineOf(feature, "stereotype");
    if (stereotype.empty() || !view.flag("ShowCompartmentStereotypes"))
        return {};
    return withGuillemets("<<" + stereotype + ">>") + " ";
}

std::string attributeLine(const Object& view, const Object& attribute)
{
    return featureStereotype(view, attribute) + signOf(attribute, "exportControl", "Private") + " " +
           (attribute.flag("static") ? "$" : "") + (attribute.flag("derived") ? "/" : "") +
           cleanText(attribute.name()) + typeAndValue(attribute);
}

std::string operationLine(const Object& view, const Object& operation)
{
    std::string line = featureStereotype(view, operation) + signOf(operation, "opExportControl", "Public") + " " +
                       cleanText(operation.name());
    if (!view.flag("ShowOperationSignature"))
        return line + "()";
    line += "(";
    std::string_view separator;
    for (const Object* const parameter : operation.objects("parameters")) {
        if (line.size() > longestSignature) {
            line += ", \u2026";
            break;
        }
        line.append(separator).append(cleanText(parameter->name())).append(typeAndValue(*parameter));
        separator = ", ";
    }
    const std::string result = lineOf(operation, "result");
    return line + ")" + (result.empty() ? result : " : " + result);
}

// A view shows all features of one of these, or those whose lines its compartment lists.
struct FeatureKind {
    std::string_view includeKey;
    std::string_view suppressKey;
    std::string_view listKey;
    std::string (*lineOf)(const Object& view, const Object& feature);
    bool hasParameters;
};

constexpr FeatureKind featureKinds[] = {
    {"IncludeAttribute", "SuppressAttribute", "class_attributes", attributeLine, false},
    {"IncludeOperation", "SuppressOperation", "operations", operationLine, true},
};

// `<<key>> + name : String` of the list, with guillemets.
std::string listedLine(const std::string& text)
{
    const std::size_t end = text.starts_with("<<") ? text.find(">>") : std::string::npos;
    return end == std::string::npos ? text : withGuillemets(text.substr(0, end + 2)) + text.substr(end + 2);
}

std::vector<std::string> listedLines(const Object& view, const FeatureKind& kind)
{
    std::vector<std::string> lines;
    const Object* const compartment = view.object("compartment");
    const reader::List* const list = compartment ? compartment->get("compartmentItems").asList() : nullptr;
    if (list)
        for (const reader::Value& value : list->values()) {
            const std::string text = cleanText(value.asText());
            const std::string_view name = std::string_view(text).substr(0, text.find(" : "));
            if ((name.find('(') != std::string_view::npos) == kind.hasParameters)
                lines.push_back(listedLine(text));
        }
    return lines;
}

void addCompartment(const Context& context, Node& node, const FeatureKind& kind)
{
    if (node.view->flag(kind.suppressKey))
        return;
    TextBlock block;
    block.font = fontOf(*node.view, context.defaultFont);
    block.font.isItalic = false;
    if (const Object* const compartment = node.view->object("compartment"))
        block.font = fontOf(*compartment, block.font);
    if (!node.view->flag(kind.includeKey))
        block.lines = listedLines(*node.view, kind);
    else if (node.element)
        addLines(context, block, node.element->objects(kind.listKey),
                 [&](const Object& feature) { return kind.lineOf(*node.view, feature); });
    node.blocks.push_back(std::move(block));
}

std::string headStereotype(const Node& node)
{
    std::string shown = stereotypeOf(*node.view, node.element);
    if (!shown.empty())
        return shown;
    const bool isMetaclass = !node.view->names().empty() && node.view->name() == "Metaclass";
    return isMetaclass ? withGuillemets("<<metaclass>>") : shown;
}

bool isKind(const Node& node, std::string_view word)
{
    return !node.view->names().empty() && node.view->name().find(word) != std::string::npos;
}

// The formal parameters of a template.
TextBlock parametersOf(const Context& context, const Node& node)
{
    TextBlock block;
    block.font = node.font;
    if (node.element && isKind(node, "Parameterized"))
        addLines(context, block, node.element->objects("parameters"),
                 [](const Object& parameter) { return cleanText(parameter.name()) + typeAndValue(parameter); });
    return block;
}

Stroke dashed(Stroke stroke)
{
    stroke.isDashed = true;
    return stroke;
}

void drawParameters(const Context& context, const Node& node, Svg& svg)
{
    const TextBlock block = parametersOf(context, node);
    if (!isKind(node, "Parameterized"))
        return;
    const Size size = block.size(context.measure);
    const Size room = {std::max(size.width, 60.0) + 2 * padding, std::max(size.height, 40.0)};
    const Point corner = {node.rect.right, node.rect.top};
    const double overlap = std::min(room.width / 2, node.rect.width() / 6);
    const Rect rect = rectAround(corner, room).movedBy(room.width / 2 - overlap, padding - room.height / 2);
    svg.rectangle(rect, dashed(node.stroke));
    svg.text(block, rect, Align::centre, context.measure);
}

} // namespace

void prepareClass(const Context& context, Node& node)
{
    if (iconSize(node.icon).width > 0) {
        node.usual = iconSize(node.icon);
        node.outline = node.icon == "actor" ? Outline::rectangle : Outline::ellipse;
        node.isNamedOutside = true;
        return;
    }
    TextBlock head;
    head.font = node.font;
    head.font.isItalic = head.font.isItalic || (node.element && node.element->flag("abstract"));
    if (const std::string stereotype = headStereotype(node); !stereotype.empty())
        head.lines.push_back(stereotype);
    head.lines.push_back(node.name);
    node.blocks.push_back(std::move(head));
    for (const FeatureKind& kind : featureKinds)
        addCompartment(context, node, kind);
    const Size size = sizeOfBlocks(context, node);
    node.least = {size.width + 2 * padding, size.height};
}

void drawClass(const Context& context, const Node& node, Svg& svg)
{
    if (drawIcon(node.icon, node.rect, node.stroke, svg))
        return;
    if (isKind(node, "Utility"))
        svg.rectangle(node.rect.movedBy(shadow, shadow), {node.stroke.line, node.stroke.line});
    svg.rectangle(node.rect, node.stroke);
    Rect rest = node.rect;
    for (const TextBlock& block : node.blocks) {
        const bool isHead = &block == &node.blocks.front();
        if (!isHead)
            svg.line({{rest.left, rest.top}, {rest.right, rest.top}}, node.stroke);
        const double height = block.size(context.measure).height;
        const double above = isHead && node.blocks.size() == 1 ? (rest.height() - height) / 2 : padding / 2;
        const Rect lines = {rest.left + (isHead ? 0 : padding), rest.top + above, rest.right, rest.bottom};
        svg.text(block, lines, isHead ? Align::centre : Align::left, context.measure);
        rest.top += height + padding;
    }
    drawParameters(context, node, svg);
}

} // namespace render
