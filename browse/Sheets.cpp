#include "browse/Sheets.h"

#include "browse/Fields.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace browse {

namespace {

using reader::Object;
using reader::Value;

// Parts of parts are shown so deep.
constexpr int mostLevels = 4;

struct VisibilityRow {
    std::string_view word;
    std::string_view sign;
};

constexpr VisibilityRow visibilityRows[] = {
    {"Public", "+"},
    {"Private", "-"},
    {"Protected", "#"},
    {"Implementation", "~"},
};

std::string_view visibilitySign(const Object& object)
{
    std::string word = object.text("opExportControl");
    if (word.empty())
        word = object.text("exportControl");
    const auto* const row = std::find_if(std::begin(visibilityRows), std::end(visibilityRows),
                                         [&](const VisibilityRow& each) { return each.word == word; });
    return row == std::end(visibilityRows) ? std::string_view() : row->sign;
}

void writeText(text::JsonWriter& json, std::string_view key, std::string_view text)
{
    if (!text.empty())
        json.key(key).value(text);
}

// The name at the end of a path, or the empty text when it says that there is none.
std::string lastPart(const std::string& path)
{
    const std::size_t colons = path.rfind("::");
    std::string name = colons == std::string::npos ? path : path.substr(colons + 2);
    return name.starts_with("$UNNAMED$") ? std::string() : name;
}

// A type as the file has it; the path of a class inside the model ends in what its reader calls it.
std::string shownType(const std::string& type)
{
    return type.starts_with("Logical View::") ? lastPart(type) : type;
}

// A value as a reader of the sheet takes it; empty for what has parts that are objects.
std::string shownValue(const Value& value)
{
    const reader::List* const list = value.asList();
    if (!list)
        return value.asReference() ? std::string() : value.asText();
    std::string result;
    for (const Value& member : list->values()) {
        const std::string text = member.asList() ? std::string() : member.asText();
        if (!text.empty())
            result.append(result.empty() ? "" : ", ").append(text);
    }
    return result;
}

// Where an element names the one that it refers to.
std::string_view targetKey(const Object& object)
{
    if (object.is("Object", "Partition"))
        return "class";
    return object.has("module") ? "module" : "supplier";
}

using Row = std::pair<std::string, std::string>;

std::string listOf(const std::vector<Row>& rows)
{
    std::string result;
    text::JsonWriter json(result, pageLayout);
    json.beginList();
    for (const auto& [label, text] : rows)
        json.beginList().value(label).value(text).endList();
    json.endList();
    return result;
}

void addRows(std::vector<Row>& rows, const Object& object, const std::string& prefix, int level)
{
    for (const reader::Attribute& attribute : object.attributes()) {
        const std::string label = labelOf(attribute.key);
        if (label.empty())
            continue;
        if (const Object* const part = attribute.value.asObject()) {
            if (isElement(*part) || part->viewNumber() || level == mostLevels || part->is("Font", "defaults"))
                continue;
            if (!part->name().empty())
                rows.emplace_back(prefix + label, part->name());
            addRows(rows, *part, prefix + label + " \u203a ", level + 1);
        } else if (std::string text = shownValue(attribute.value); !text.empty()) {
            rows.emplace_back(prefix + label, std::move(text));
        }
    }
}

// Actions of a state and qualifiers are lists of such objects.
void addPartRows(std::vector<Row>& rows, const Object& object)
{
    for (const std::string_view key : {"actions", "keys", "Attributes"})
        for (const Object* const part : object.objects(key)) {
            if (isElement(*part))
                continue;
            rows.emplace_back(labelOf(key), part->name());
            addRows(rows, *part, labelOf(key) + " \u203a ", 1);
        }
}

// The JSON of the properties of an object, or the empty text.
std::string propertiesOf(const Object& object)
{
    std::vector<Row> rows;
    for (const Value& name : object.names().subspan(std::min<std::size_t>(object.names().size(), 1)))
        if (object.is("module"))
            rows.emplace_back("Kind", name.asText());
    if (!reader::diagramKindOf(object) || object.has("documentation"))
        addRows(rows, object, "", 0);
    addPartRows(rows, object);
    return rows.empty() ? std::string() : listOf(rows);
}

std::string toolsOf(const Object& object)
{
    std::vector<std::pair<std::string, std::vector<Row>>> tools;
    for (const Object* const property : object.objects("attributes")) {
        if (!property->is("Attribute"))
            continue;
        const std::string tool = property->text("tool");
        auto found = std::find_if(tools.begin(), tools.end(), [&](const auto& each) { return each.first == tool; });
        if (found == tools.end())
            found = tools.insert(tools.end(), {tool, {}});
        found->second.emplace_back(property->text("name"), shownValue(property->get("value")));
    }
    if (tools.empty())
        return {};
    std::string result;
    text::JsonWriter json(result, pageLayout);
    json.beginList();
    for (const auto& [tool, rows] : tools)
        json.beginList().value(tool).written(listOf(rows)).endList();
    json.endList();
    return result;
}

// What is true of a role, in words.
std::string flagsOf(const Object& role)
{
    constexpr std::pair<std::string_view, std::string_view> words[] = {
        {"is_navigable", "navigable"}, {"is_aggregate", "aggregate"}, {"derived", "derived"},
        {"static", "static"},          {"friend", "friend"},
    };
    std::string result;
    for (const auto& [key, word] : words)
        if (role.flag(key))
            result.append(result.empty() ? "" : ", ").append(word);
    if (role.text("Containment") == "By Value")
        result.append(result.empty() ? "" : ", ").append("by value");
    return result;
}

} // namespace

std::int64_t Sheets::placeOf(const reader::Reference& reference) const
{
    return numberOf(elements.placeOf(reference.element));
}

reader::Reference Sheets::typeOf(const Object& object, const std::string& type) const
{
    const std::string_view quid = object.get("quidu").raw();
    return type.empty() ? reader::Reference() : index.lookUp(quid, type);
}

void Sheets::writeParameters(text::JsonWriter& json, const Object& object) const
{
    const std::vector<const Object*> parameters = object.objects("parameters");
    if (parameters.empty())
        return;
    using enum ParameterField;
    json.key("parameters").beginList();
    for (const Object* const parameter : parameters) {
        const std::string typeText = parameter->text("type");
        json.beginList();
        FieldWriter<ParameterField>(json)
            .add<name>(parameter->name())
            .add<type>(shownType(typeText))
            .add<target>(placeOf(typeOf(*parameter, typeText)))
            .add<value>(parameter->text("initv"))
            .add<documentation>(parameter->text("documentation"));
        json.endList();
    }
    json.endList();
}

void Sheets::writeFeature(text::JsonWriter& json, const Object& object) const
{
    writeText(json, "visibility", visibilitySign(object));
    const std::string type = object.text(object.is("Operation") ? "result" : "type");
    if (!type.empty()) {
        json.key("type").beginList();
        FieldWriter<TypeField>(json)
            .add<TypeField::name>(shownType(type))
            .add<TypeField::target>(placeOf(typeOf(object, type)));
        json.endList();
    }
    writeText(json, "value", object.text("initv"));
}

void Sheets::writeTarget(text::JsonWriter& json, const Element& element) const
{
    const Object& object = *element.object;
    if (object.is("ClassAttribute", "Operation") || elements.kinds()[element.kind].forward.empty())
        return;
    const reader::Reference reference = index.element(object);
    const std::string name = object.text(targetKey(object));
    if (reference.state == reader::ReferenceState::none)
        return;
    const std::string_view quid = reader::quidIn(object);
    json.key("to").beginList();
    FieldWriter<TargetField>(json)
        .add<TargetField::name>(lastPart(name.empty() ? std::string(quid) : name))
        .add<TargetField::target>(placeOf(reference))
        .add<TargetField::state>(static_cast<std::size_t>(reference.state));
    json.endList();
}

void Sheets::writeEnd(text::JsonWriter& json, const Object& role) const
{
    const reader::Reference reference = index.element(role);
    const std::string supplier = role.text("supplier");
    json.beginList();
    FieldWriter<EndField>(json)
        .add<EndField::role>(reader::shownName(role))
        .add<EndField::multiplicity>(role.text("client_cardinality"))
        .add<EndField::name>(
            lastPart(supplier.empty() && reference.element ? reader::shownName(*reference.element) : supplier))
        .add<EndField::target>(placeOf(reference))
        .add<EndField::state>(static_cast<std::size_t>(reference.state))
        .add<EndField::flags>(flagsOf(role))
        .add<EndField::documentation>(role.text("documentation"));
    json.endList();
}

void Sheets::writeEnds(text::JsonWriter& json, const Object& association) const
{
    json.key("ends").beginList();
    for (const Object* const role : association.objects("roles"))
        writeEnd(json, *role);
    json.endList();
}

void Sheets::writeUnit(text::JsonWriter& json, const Object& object) const
{
    if (const reader::MissingUnit* const unit = document.missingUnit(object))
        json.key("missing").value(unit->fileName + ": " + unit->reason);
}

void Sheets::writeTexts(text::JsonWriter& json, const Object& object) const
{
    writeText(json, "stereotype", object.text("stereotype"));
    writeText(json, "documentation", object.text("documentation"));
}

// Most elements have the same as many others.
void Sheets::writePlaceOf(text::JsonWriter& json, std::string_view key, const std::string& list)
{
    if (list.empty())
        return;
    const auto [entry, isNew] = sharedPlaces.try_emplace(list, shared.size());
    if (isNew)
        shared.push_back(&entry->first);
    json.key(key).value(entry->second);
}

void Sheets::writeShared(text::JsonWriter& json) const
{
    for (const std::string* const list : shared)
        json.written(*list);
}

void Sheets::write(text::JsonWriter& json, const Element& element)
{
    const Object& object = *element.object;
    writeTexts(json, object);
    if (object.is("ClassAttribute", "Operation"))
        writeFeature(json, object);
    writeParameters(json, object);
    if (object.is("Association"))
        writeEnds(json, object);
    else
        writeTarget(json, element);
    if (!document.missingUnits().empty())
        writeUnit(json, object);
    writePlaceOf(json, "properties", propertiesOf(object));
    writePlaceOf(json, "tools", toolsOf(object));
}

} // namespace browse
