#include "render/shapes/Node.h"

#include <algorithm>

namespace render {

namespace {

constexpr std::size_t longestSignature = 1000; // of an operation, in bytes
constexpr std::int64_t withIcons = 8;          // annotation of a view
constexpr Size iconRoom = {50, 46};
constexpr double ruleAbove = 6;     // of the first member
constexpr double ruleBelow = 19;    // of the last attribute
constexpr double belowRule = 31;    // the first operation
constexpr double belowMembers = 14; // the edge of the box

struct Visibility {
    std::string_view keyword;
    char sign;
};

constexpr Visibility visibilities[] = {
    {"Public", '+'},
    {"Protected", '#'},
    {"Private", '-'},
    {"Implementation", '~'},
};

char signOf(const Object& feature, std::string_view key, std::string_view otherwise)
{
    const std::string keyword = feature.has(key) ? feature.text(key) : std::string(otherwise);
    for (const Visibility& visibility : visibilities)
        if (keyword == visibility.keyword)
            return visibility.sign;
    return ' ';
}

std::string featureStereotype(const Object& view, const Object& feature)
{
    const std::string stereotype = lineOf(feature, "stereotype");
    if (stereotype.empty() || !view.flag("ShowCompartmentStereotypes"))
        return {};
    return "<<" + stereotype + ">> ";
}

std::string attributeLine(const Object& view, const Object& attribute)
{
    return featureStereotype(view, attribute) + (attribute.flag("static") ? "$" : "") +
           (attribute.flag("derived") ? "/" : "") + cleanText(attribute.name()) + typeAndValue(attribute);
}

std::string operationLine(const Object& view, const Object& operation)
{
    std::string line = featureStereotype(view, operation) + cleanText(operation.name());
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
    std::string_view accessKey;
    std::string_view usualAccess;
    std::string (*lineOf)(const Object& view, const Object& feature);
    bool areOperations;
};

constexpr FeatureKind featureKinds[] = {
    {"IncludeAttribute", "SuppressAttribute", "class_attributes", "exportControl", "Private", attributeLine, false},
    {"IncludeOperation", "SuppressOperation", "operations", "opExportControl", "Public", operationLine, true},
};

// `<<key>> + name : String` of the list: the sign is shown by the icon.
void addListed(MemberBlock& block, const std::string& text)
{
    const std::size_t end = text.starts_with("<<") ? text.find(">>") : std::string::npos;
    const std::size_t start = text.find_first_not_of(' ', end == std::string::npos ? 0 : end + 2);
    const bool hasSign = start != std::string::npos && start + 1 < text.size() &&
                         std::string_view("+#-~").find(text[start]) != std::string_view::npos && text[start + 1] == ' ';
    block.access += hasSign ? text[start] : ' ';
    block.text.lines.push_back(text);
    if (hasSign)
        block.text.lines.back().erase(start, 2);
}

void addListedLines(const Object& view, const FeatureKind& kind, MemberBlock& block)
{
    const Object* const compartment = view.object("compartment");
    const reader::List* const list = compartment ? compartment->get("compartmentItems").asList() : nullptr;
    if (!list)
        return;
    for (const reader::Value& value : list->values()) {
        const std::string text = cleanText(value.asText());
        const std::string_view name = std::string_view(text).substr(0, text.find(" : "));
        if ((name.find('(') != std::string_view::npos) == kind.areOperations)
            addListed(block, text);
    }
}

MemberBlock blockOf(const Context& context, const Object& view, const Object* element, const FeatureKind& kind)
{
    MemberBlock block;
    block.areOperations = kind.areOperations;
    const std::int64_t usual = context.defaults ? context.defaults->integer("annotation") : 0;
    block.hasIcons = (view.integer("annotation", usual) & withIcons) != 0;
    block.text.font = fontOf(view, context.defaultFont);
    block.text.font.isItalic = false;
    if (const Object* const compartment = view.object("compartment"))
        block.text.font = fontOf(*compartment, block.text.font);
    if (!view.flag(kind.includeKey)) {
        addListedLines(view, kind, block);
    } else if (element) {
        const std::vector<const Object*> features = element->objects(kind.listKey);
        addLines(context, block.text, features, [&](const Object& feature) { return kind.lineOf(view, feature); });
        for (std::size_t i = 0; i < std::min(features.size(), block.text.lines.size()); ++i)
            block.access += signOf(*features[i], kind.accessKey, kind.usualAccess);
    }
    return block;
}

void drawAccess(char sign, Point place, const Stroke& stroke, Svg& svg)
{
    const Stroke solid = {stroke.line, stroke.line, false, 2};
    const Stroke thin = {stroke.line, std::nullopt, false, 2};
    const auto at = [&](double x, double y) { return Point{place.x + x, place.y + y}; };
    if (sign == '-') { // a lock
        svg.polygon({at(2, 28), at(18, 28), at(18, 42), at(2, 42)}, solid);
        svg.line({at(5, 28), at(5, 22), at(8, 19), at(12, 19), at(15, 22), at(15, 28)}, thin);
    } else if (sign == '#') { // a key
        svg.ellipse(rectAround(at(7, 36), {10, 10}), thin);
        svg.line({at(12, 36), at(24, 36), at(24, 42)}, thin);
    } else if (sign == '~') { // a hammer
        svg.polygon({at(2, 22), at(18, 22), at(18, 29), at(2, 29)}, solid);
        svg.line({at(10, 29), at(10, 44)}, thin);
    }
}

// A small leaning tile in front of the text: blue with a light face for attributes, magenta for operations.
void drawMemberIcon(const MemberBlock& block, char sign, Point place, Svg& svg)
{
    constexpr Stroke blue = {0x800000, 0xFF0000, false, 1};
    constexpr Stroke face = {0xFFFF00, 0xFFFF00, false, 1};
    constexpr Stroke magenta = {0x800080, 0xFF00FF, false, 3};
    const auto at = [&](double x, double y) { return Point{place.x + x, place.y + y}; };
    svg.polygon({at(19, 31), at(36, 13), at(47, 25), at(30, 43)}, block.areOperations ? magenta : blue);
    if (!block.areOperations)
        svg.polygon({at(24, 31), at(36, 18), at(42, 25), at(30, 38)}, face);
    drawAccess(sign, place, {0, std::nullopt}, svg);
}

} // namespace

// ` : Money = 0`
std::string typeAndValue(const Object& feature)
{
    const std::string type = lineOf(feature, "type");
    const std::string value = lineOf(feature, "initv");
    return (type.empty() ? type : " : " + type) + (value.empty() ? value : " = " + value);
}

Size MemberBlock::size(const TextMeasure& measure) const
{
    const Size size = text.size(measure);
    return {size.width + (hasIcons ? iconRoom.width : 0), size.height};
}

std::vector<MemberBlock> membersOf(const Context& context, const Object& view, const Object* element)
{
    std::vector<MemberBlock> members;
    for (const FeatureKind& kind : featureKinds)
        if (!view.flag(kind.suppressKey))
            members.push_back(blockOf(context, view, element, kind));
    return members;
}

void drawMembers(const Context& context, const MemberBlock& block, const Rect& rect, Svg& svg)
{
    constexpr double readable = 0.85; // of a line
    if (rect.height() < block.text.font.lineHeight() * readable)
        return;
    TextBlock shown = block.text;
    shown.cutTo(rect.height());
    const double indentation = block.hasIcons ? iconRoom.width : 0;
    svg.text(shown, {rect.left + indentation, rect.top, rect.right, rect.bottom}, Align::left, context.measure);
    const double pitch = shown.font.lineHeight();
    const std::size_t icons = block.hasIcons ? std::min(block.access.size(), shown.lines.size()) : 0;
    for (std::size_t i = 0; i < icons; ++i)
        drawMemberIcon(block, block.access[i],
                       {rect.left, rect.top + (static_cast<double>(i) + 0.5) * pitch - iconRoom.height / 2}, svg);
}

double heightOfMembers(const Node& node)
{
    double height = 0;
    for (const MemberBlock& block : node.members)
        height += static_cast<double>(block.text.lines.size()) * block.text.font.lineHeight();
    return height + belowMembers + (node.members.size() > 1 ? ruleBelow + belowRule : 0);
}

void drawCompartments(const Context& context, const Node& node, const Rect& rect, bool isBoxed, Svg& svg)
{
    double top = rect.top;
    double rule = top - ruleAbove;
    for (const MemberBlock& block : node.members) {
        if (isBoxed && rule > node.rect.bottom)
            break;
        if (isBoxed)
            svg.line({{node.rect.left, rule}, {node.rect.right, rule}}, node.stroke);
        const double height = static_cast<double>(block.text.lines.size()) * block.text.font.lineHeight();
        drawMembers(context, block, {rect.left, top, rect.right, isBoxed ? rect.bottom : top + height}, svg);
        rule = top + height + ruleBelow;
        top = isBoxed ? rule + belowRule : top + height;
    }
}

} // namespace render
