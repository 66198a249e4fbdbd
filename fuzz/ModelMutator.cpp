#include "ModelMutator.h"

#include "ExportWords.h"
#include "modelfile/read/Tables.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <map>
#include <set>
#include <utility>

namespace {

enum class ValueKind { Text, Integer, Boolean, Choice, Reference, ReferenceList, TextList, Object, ObjectList, Fixed };

struct ValueRule {
    std::string_view key;
    ValueKind kind;
    std::string_view objectKind; // what is listed or referred to
};

// What stands under a key; other keys have texts, or booleans when they begin with "is".
constexpr std::array valueRules = {
    ValueRule{"$schema", ValueKind::Fixed, {}},
    ValueRule{"format", ValueKind::Fixed, {}},
    ValueRule{"version", ValueKind::Fixed, {}},
    ValueRule{"id", ValueKind::Fixed, {}},
    ValueRule{"kind", ValueKind::Choice, {}},
    ValueRule{"notes", ValueKind::TextList, {}},
    ValueRule{"types", ValueKind::ObjectList, "type"},
    ValueRule{"typeValues", ValueKind::ObjectList, "typeValue"},
    ValueRule{"childPackages", ValueKind::ObjectList, "package"},
    ValueRule{"modelElements", ValueKind::ObjectList, "element"},
    ValueRule{"diagrams", ValueKind::ObjectList, "diagram"},
    ValueRule{"attributes", ValueKind::ObjectList, "attribute"},
    ValueRule{"qualifiers", ValueKind::ObjectList, "attribute"},
    ValueRule{"operations", ValueKind::ObjectList, "operation"},
    ValueRule{"arguments", ValueKind::ObjectList, "argument"},
    ValueRule{"parameters", ValueKind::ObjectList, "argument"},
    ValueRule{"keys", ValueKind::ObjectList, "key"},
    ValueRule{"keyMappings", ValueKind::ObjectList, "keyMapping"},
    ValueRule{"roles", ValueKind::ObjectList, "role"},
    ValueRule{"projections", ValueKind::ObjectList, "projection"},
    ValueRule{"multiplicity", ValueKind::Object, "multiplicity"},
    ValueRule{"type", ValueKind::Reference, "type"},
    ValueRule{"returnType", ValueKind::Reference, "type"},
    ValueRule{"participant", ValueKind::Reference, "class"},
    ValueRule{"associationClass", ValueKind::Reference, "class"},
    ValueRule{"client", ValueKind::Reference, "class"},
    ValueRule{"supplier", ValueKind::Reference, "class"},
    ValueRule{"key", ValueKind::Reference, "key"},
    ValueRule{"counterpart", ValueKind::Reference, "object"},
    ValueRule{"diagram", ValueKind::Reference, "diagram"},
    ValueRule{"supertypes", ValueKind::ReferenceList, "class"},
    ValueRule{"subtypes", ValueKind::ReferenceList, "class"},
    ValueRule{"elements", ValueKind::ReferenceList, "element"},
    ValueRule{"modelLevel", ValueKind::Integer, {}},
    ValueRule{"length", ValueKind::Integer, {}},
    ValueRule{"scale", ValueKind::Integer, {}},
    ValueRule{"position", ValueKind::Integer, {}},
    ValueRule{"classType", ValueKind::Integer, {}},
    ValueRule{"visibility", ValueKind::Integer, {}},
    ValueRule{"concurrency", ValueKind::Integer, {}},
    ValueRule{"space", ValueKind::Integer, {}},
    ValueRule{"containment", ValueKind::Integer, {}},
    ValueRule{"lower", ValueKind::Integer, {}},
    ValueRule{"upper", ValueKind::Integer, {}},
    ValueRule{"x", ValueKind::Integer, {}},
    ValueRule{"y", ValueKind::Integer, {}},
    ValueRule{"width", ValueKind::Integer, {}},
    ValueRule{"height", ValueKind::Integer, {}},
    ValueRule{"lineColor", ValueKind::Integer, {}},
    ValueRule{"fillColor", ValueKind::Integer, {}},
    ValueRule{"fontColor", ValueKind::Integer, {}},
    ValueRule{"fontSize", ValueKind::Integer, {}},
};

ValueRule ruleOf(std::string_view objectKind, std::string_view key)
{
    if (objectKind == "key" && key == "attributes")
        return {key, ValueKind::ReferenceList, "attribute"};
    const auto* const rule =
        std::find_if(valueRules.begin(), valueRules.end(), [&](const ValueRule& each) { return each.key == key; });
    if (rule != valueRules.end())
        return *rule;
    return {key, key.starts_with("is") ? ValueKind::Boolean : ValueKind::Text, {}};
}

constexpr std::array<std::string_view, 6> elementKinds = {"class",      "association", "generalization",
                                                          "dependency", "realization", "note"};

bool isElementKind(std::string_view kind)
{
    return std::find(elementKinds.begin(), elementKinds.end(), kind) != elementKinds.end();
}

struct KindChoices {
    std::string_view objectKind;
    std::array<const char*, 2> choices;
};
constexpr std::array kindChoices = {
    KindChoices{"type", {"baseType", "derivedType"}},
    KindChoices{"package", {"designPackage", "package"}},
    KindChoices{"key", {"candidateKey", "foreignKey"}},
    KindChoices{"diagram", {"classDiagram", "diagram"}},
};

const std::vector<std::string_view>& keysOf(std::string_view objectKind)
{
    static const std::vector<modelfile::ObjectKeys> all = modelfile::modelFileKeys();
    static const std::vector<std::string_view> none;
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const modelfile::ObjectKeys& each) { return each.objectKind == objectKind; });
    return found == all.end() ? none : found->keys;
}

// A reference that is still to be led somewhere.
constexpr const char* anyId = "?";

constexpr std::array<std::string_view, 34> awkwardTexts = {
    "",
    "a",
    "\"",
    "\\",
    "a\\",
    "\\\\",
    "\n",
    "\n\n",
    "a\nb",
    "a\r\nb\r\n",
    "\r",
    "a\"b",
    "|",
    "||\n",
    ")",
    "(",
    "(\"",
    "\")",
    "\n\t)",
    "\n|\"",
    "C:\\temp\\new\n",
    "::",
    "<<x>>",
    "{}",
    "\t",
    "\x01\x7F",
    "äöü €",
    "😀",
    "Logical View",
    "My Logical View 2",
    "Interface",
    "True",
    "0..n",
    "n",
};

constexpr std::array<std::string_view, 19> dataTypes = {
    "BINARY",        "CHAR",    "DATE",    "DOUBLE",   "VARBINARY", "LONGVARBINARY", "INTEGER",
    "AUTOINCREMENT", "NUMERIC", "REAL",    "SMALLINT", "TIME",      "TIMESTAMP",     "VARCHAR",
    "LONGVARCHAR",   "BOOLEAN", "TINYINT", "",         "integer",
};

constexpr std::array<std::int64_t, 26> awkwardIntegers = {
    std::numeric_limits<int>::min(),
    std::numeric_limits<int>::max(),
    -32768,
    32767,
    -1,
    0,
    1,
    2,
    3,
    4,
    9,
    10,
    11,
    17,
    18,
    19,
    20,
    21,
    -2,
    -19,
    -20,
    -21,
    100,
    1000,
    65536,
    16777215,
};

constexpr std::array<std::string_view, 10> awkwardPoints = {
    "(",
    ")",
    "()",
    "(,)",
    "(1,2",
    "( 3,\t-4)",
    "(99999999999,-99999999999)",
    "(0,0) ",
    "(+1,1)(1,1)",
    "(-2147483648,2147483647)",
};

constexpr std::size_t mostElementsDrawn = 60;

} // namespace

struct ModelMutator::Object {
    Json* json;
    std::string_view kind;
};

struct ModelMutator::List {
    Json* json;
    std::string_view itemKind;
};

struct ModelMutator::Value {
    Json* owner;
    std::string_view objectKind;
    JsonMember* member;
    ValueRule rule;
};

// Everything in a tree; valid until the tree changes.
struct ModelMutator::Parts {
    std::vector<Object> objects;
    std::vector<List> lists;
    std::vector<List> referenceLists;
    std::vector<Value> values;

    explicit Parts(Json& model) { addObject(model, "model"); }
    Parts(Json& object, std::string_view kind) { addObject(object, kind); }

private:
    void addObject(Json& object, std::string_view kind)
    {
        objects.push_back({&object, kind});
        for (JsonMember& member : object.members) {
            const ValueRule rule = ruleOf(kind, member.key);
            values.push_back({&object, kind, &member, rule});
            if (rule.kind == ValueKind::Object && member.value.isObject())
                addObject(member.value, rule.objectKind);
            else if (rule.kind == ValueKind::ObjectList)
                addList(member.value, rule.objectKind);
            else if (rule.kind == ValueKind::ReferenceList)
                referenceLists.push_back({&member.value, rule.objectKind});
        }
    }

    void addList(Json& list, std::string_view itemKind)
    {
        lists.push_back({&list, itemKind});
        for (JsonMember& item : list.members) {
            if (itemKind != "element") {
                addObject(item.value, itemKind);
                continue;
            }
            const std::string_view kind = item.value.textOf("kind");
            const auto* const known = std::find(elementKinds.begin(), elementKinds.end(), kind);
            if (known != elementKinds.end())
                addObject(item.value, *known);
        }
    }
};

// --- new parts ---

std::int64_t ModelMutator::newInteger(std::string_view key)
{
    if (key == "position")
        return static_cast<std::int16_t>(oneOf(awkwardIntegers));
    if (key == "modelLevel")
        return static_cast<std::int64_t>(below(3));
    if (oneIn(3))
        return static_cast<int>(random());
    return oneIn(2) ? static_cast<std::int64_t>(below(700)) - 50 : oneOf(awkwardIntegers);
}

std::string ModelMutator::newPointText()
{
    std::string text;
    std::array<std::int64_t, 2> place = {newInteger("x"), newInteger("y")};
    for (std::size_t count = below(6); count > 0; --count) {
        if (!text.empty())
            text += oneIn(20) ? "\n" : "\r\n";
        if (oneIn(12))
            text += oneOf(awkwardPoints);
        else
            text += "(" + std::to_string(place[0]) + "," + std::to_string(place[1]) + ")";
        place[below(2)] = newInteger("x");
    }
    return text;
}

std::string ModelMutator::newText(std::string_view key)
{
    if (key == "vertices")
        return newPointText();
    if (key == "dataType" && !oneIn(8))
        return std::string(oneOf(dataTypes));
    if (oneIn(3) && !knownTexts.empty())
        return oneOf(knownTexts);
    std::string text(oneOf(awkwardTexts));
    while (oneIn(2))
        text += oneOf(awkwardTexts);
    if (oneIn(10))
        text += std::string(below(oneIn(10) ? 5000 : 400), 'l');
    return text;
}

Json ModelMutator::newValue(std::string_view objectKind, std::string_view key, int depth)
{
    const ValueRule rule = ruleOf(objectKind, key);
    Json list(Json::Kind::List);
    switch (rule.kind) {
    case ValueKind::Integer:
        return Json(newInteger(key));
    case ValueKind::Boolean: {
        Json boolean(Json::Kind::Boolean);
        boolean.boolean = oneIn(2);
        return boolean;
    }
    case ValueKind::Choice:
        for (const KindChoices& row : kindChoices)
            if (row.objectKind == objectKind)
                return Json(std::string(row.choices[oneIn(4) ? 1 : 0]));
        break;
    case ValueKind::Reference:
        return Json(std::string(anyId));
    case ValueKind::ReferenceList:
        for (std::size_t count = 1 + below(4); count > 0; --count)
            list.members.push_back({{}, Json(std::string(anyId))});
        return list;
    case ValueKind::TextList:
        for (std::size_t count = 1 + below(3); count > 0; --count)
            list.members.push_back({{}, Json(newText(key))});
        return list;
    case ValueKind::Object:
        return newObject(rule.objectKind, depth - 1);
    case ValueKind::ObjectList:
        for (std::size_t count = depth > 0 ? 1 + below(2) : 0; count > 0; --count)
            list.members.push_back({{}, newObject(rule.objectKind, depth - 1)});
        return list;
    case ValueKind::Text:
    case ValueKind::Fixed:
        break;
    }
    return Json(newText(key));
}

Json ModelMutator::newObject(std::string_view kind, int depth)
{
    // Without these an object has little to say.
    constexpr std::array<std::string_view, 9> essentials = {
        "name", "diagram", "roles", "participant", "supertypes", "subtypes", "client", "supplier", "elements"};
    Json object(Json::Kind::Object);
    std::string_view exactKind = kind;
    if (kind == "element") {
        exactKind = oneIn(2) ? elementKinds[below(2)] : oneOf(elementKinds);
        object.set("kind", Json(std::string(exactKind)));
    }
    for (const std::string_view key : keysOf(exactKind)) {
        const ValueKind rule = ruleOf(exactKind, key).kind;
        const bool isKind = rule == ValueKind::Choice && kind == "element";
        const bool isEssential = std::find(essentials.begin(), essentials.end(), key) != essentials.end();
        if (rule != ValueKind::Fixed && !isKind && (isEssential || oneIn(4)))
            object.set(key, newValue(exactKind, key, depth));
    }
    return object;
}

// --- changes ---

void ModelMutator::repeatObject(Json& model)
{
    Parts parts(model);
    std::erase_if(parts.lists, [](const List& list) { return list.json->members.empty(); });
    if (parts.lists.empty())
        return;
    Json& list = *oneOf(parts.lists).json;
    const std::size_t index = below(list.members.size());
    const std::size_t copies = oneIn(12) ? 1 + below(40) : 1;
    for (std::size_t i = 0; i < copies; ++i) {
        const Json original = list.members[index].value;
        const std::size_t place = below(list.members.size() + 1);
        list.members.insert(list.members.begin() + static_cast<std::ptrdiff_t>(place), {{}, original});
    }
}

void ModelMutator::removeItem(Json& model)
{
    Parts parts(model);
    std::vector<List>& lists = parts.referenceLists.empty() || !oneIn(4) ? parts.lists : parts.referenceLists;
    std::erase_if(lists, [](const List& list) { return list.json->members.empty(); });
    if (lists.empty())
        return;
    std::vector<JsonMember>& members = oneOf(lists).json->members;
    members.erase(members.begin() + static_cast<std::ptrdiff_t>(below(members.size())));
}

void ModelMutator::moveObject(Json& model)
{
    Parts before(model);
    std::erase_if(before.lists, [](const List& list) { return list.json->members.empty(); });
    if (before.lists.empty())
        return;
    const List from = oneOf(before.lists);
    const std::string_view itemKind = from.itemKind;
    const auto taken = from.json->members.begin() + static_cast<std::ptrdiff_t>(below(from.json->members.size()));
    const JsonMember item = *taken;
    from.json->members.erase(taken);

    Parts after(model);
    std::erase_if(after.lists, [&](const List& list) { return list.itemKind != itemKind; });
    std::vector<JsonMember>& target = oneOf(after.lists).json->members;
    target.insert(target.begin() + static_cast<std::ptrdiff_t>(below(target.size() + 1)), item);
}

void ModelMutator::reorderList(Json& model)
{
    Parts parts(model);
    std::vector<List>& lists = parts.referenceLists.empty() || oneIn(2) ? parts.lists : parts.referenceLists;
    if (lists.empty())
        return;
    std::vector<JsonMember>& members = oneOf(lists).json->members;
    std::shuffle(members.begin(), members.end(), random);
}

void ModelMutator::addObject(Json& model)
{
    const Parts parts(model);
    if (parts.lists.empty())
        return;
    const List list = oneOf(parts.lists);
    list.json->members.push_back({{}, newObject(list.itemKind, 2)});
}

void ModelMutator::addReference(Json& model)
{
    const Parts parts(model);
    if (!parts.referenceLists.empty())
        oneOf(parts.referenceLists).json->members.push_back({{}, Json(std::string(anyId))});
}

void ModelMutator::addKey(Json& model)
{
    const Parts parts(model);
    const Object object = oneOf(parts.objects);
    std::vector<std::string_view> missing;
    for (const std::string_view key : keysOf(object.kind))
        if (!object.json->find(key) && ruleOf(object.kind, key).kind != ValueKind::Fixed)
            missing.push_back(key);
    if (!missing.empty()) {
        const std::string_view key = oneOf(missing);
        object.json->set(key, newValue(object.kind, key, 2));
    }
}

void ModelMutator::dropKey(Json& model)
{
    const Parts parts(model);
    const Value value = oneOf(parts.values);
    const bool isElement = value.rule.kind == ValueKind::Choice && isElementKind(value.objectKind);
    if (value.rule.kind != ValueKind::Fixed && !isElement)
        value.owner->remove(std::string(value.member->key));
}

void ModelMutator::changeValue(Json& model)
{
    Parts parts(model);
    std::erase_if(parts.values, [](const Value& value) {
        return value.rule.kind == ValueKind::Fixed || value.rule.kind == ValueKind::Object ||
               value.rule.kind == ValueKind::ObjectList ||
               (value.rule.kind == ValueKind::Choice && isElementKind(value.objectKind));
    });
    if (parts.values.empty())
        return;
    const Value value = oneOf(parts.values);
    Json& json = value.member->value;
    const bool isList = value.rule.kind == ValueKind::ReferenceList || value.rule.kind == ValueKind::TextList;
    if (isList && json.isList() && !json.members.empty() && !oneIn(4))
        json.members[below(json.members.size())].value =
            value.rule.kind == ValueKind::TextList ? Json(newText("notes")) : Json(std::string(anyId));
    else
        json = newValue(value.objectKind, value.member->key, 1);
}

// A diagram that shows everything.
void ModelMutator::drawEverything(Json& model)
{
    const Parts parts(model);
    Json elements(Json::Kind::List);
    std::vector<Json*> diagrams;
    for (const Object& object : parts.objects) {
        if (object.kind == "diagram")
            diagrams.push_back(object.json);
        const std::string id(object.json->textOf("id"));
        if (isElementKind(object.kind) && !id.empty() && elements.members.size() < mostElementsDrawn)
            elements.members.push_back({{}, Json(id)});
    }
    if (diagrams.empty())
        return;
    std::shuffle(elements.members.begin(), elements.members.end(), random);
    oneOf(diagrams)->set("elements", elements);
}

void ModelMutator::chooseOptions(Json& model)
{
    std::string words;
    for (const ExportWord& word : exportWords)
        if (oneIn(3))
            words.append(word.word).append(" ");
    if (oneIn(8))
        words.append(enlargingWord).append(" ");
    for (std::size_t count = below(3); count > 0; --count)
        words += std::to_string(newInteger("x")) + " ";
    model.set("description", Json(words));
}

void ModelMutator::changeOnce(Json& model)
{
    switch (below(16)) {
    case 0:
        return repeatObject(model);
    case 1:
    case 2:
        return moveObject(model);
    case 3:
        return reorderList(model);
    case 4:
        return addObject(model);
    case 5:
        return addReference(model);
    case 6:
    case 7:
    case 8:
        return addKey(model);
    case 9:
        return dropKey(model);
    case 10:
        return removeItem(model);
    case 11:
        return oneIn(4) ? drawEverything(model) : oneIn(2) ? chooseOptions(model) : changeValue(model);
    default:
        return changeValue(model);
    }
}

// --- the whole ---

struct ModelMutator::Ids {
    std::set<std::string> known;
    std::map<std::string_view, std::vector<std::string>> byKind;
    std::map<std::string_view, std::set<std::string>> setByKind;

    // Gives every object an id that no other one has.
    explicit Ids(Json& model)
    {
        Parts parts(model);
        // What an object holds comes before it, since another key can move its contents.
        std::reverse(parts.objects.begin(), parts.objects.end());
        for (const Object& object : parts.objects) {
            const std::vector<std::string_view>& keys = keysOf(object.kind);
            if (std::find(keys.begin(), keys.end(), "id") == keys.end())
                continue;
            std::string id(object.json->textOf("id"));
            while (id.empty() || !known.insert(id).second)
                id = "n" + std::to_string(known.size() + attempts++);
            object.json->set("id", Json(id));
            addToKinds(object, id);
        }
    }

private:
    void addToKinds(const Object& object, const std::string& id)
    {
        if (object.kind == "note")
            return;
        add("object", id);
        if (isElementKind(object.kind))
            add("element", id);
        if (object.kind != "diagram" || object.json->textOf("kind") != "diagram")
            add(object.kind, id);
    }
    void add(std::string_view kind, const std::string& id)
    {
        byKind[kind].push_back(id);
        setByKind[kind].insert(id);
    }

    std::size_t attempts = 0;
};

void ModelMutator::repairReference(Json& reference, std::string_view kind, Ids& ids)
{
    const bool canBeNull = kind != "diagram";
    const bool isNull = reference.kind == Json::Kind::Null;
    if (isNull ? canBeNull : ids.setByKind[kind].contains(reference.text))
        return;
    const std::vector<std::string>& choices = ids.byKind[kind];
    reference = choices.empty() || (canBeNull && oneIn(12)) ? Json() : Json(oneOf(choices));
}

// Makes ids unique again and leads each reference to an object of its kind.
void ModelMutator::repair(Json& model)
{
    Ids ids(model);
    Parts parts(model);
    for (const Value& value : parts.values) {
        if (value.rule.kind == ValueKind::Reference)
            repairReference(value.member->value, value.rule.objectKind, ids);
        else if (value.rule.kind == ValueKind::ReferenceList)
            for (JsonMember& item : value.member->value.members)
                repairReference(item.value, value.rule.objectKind, ids);
    }
    // In a broken model a projection can hold others; what it holds comes first.
    std::reverse(parts.lists.begin(), parts.lists.end());
    for (const List& list : parts.lists)
        if (list.itemKind == "projection")
            std::erase_if(list.json->members, [](JsonMember& item) { return item.value.textOf("diagram").empty(); });
}

void ModelMutator::mutate(Json& model)
{
    knownTexts.clear();
    const Parts parts(model);
    for (const Value& value : parts.values)
        if (value.rule.kind == ValueKind::Text && value.member->value.isText() && value.member->value.text.size() < 100)
            knownTexts.push_back(value.member->value.text);
    do {
        changeOnce(model);
    } while (!oneIn(3));
    repair(model);
}

void ModelMutator::cross(Json& model, Json other)
{
    const Parts theirs(other);
    const Parts ours(model);
    for (std::size_t count = 1 + below(4); count > 0 && !theirs.lists.empty() && !ours.lists.empty(); --count) {
        const List from = oneOf(theirs.lists);
        const List to = oneOf(ours.lists);
        if (from.itemKind != to.itemKind || from.json->members.empty())
            continue;
        to.json->members.push_back(oneOf(from.json->members));
        break;
    }
    repair(model);
}

void ModelMutator::shrinkModel(Json& model)
{
    Parts parts(model);
    // What an object holds comes first, since what is erased takes its contents along.
    std::reverse(parts.lists.begin(), parts.lists.end());
    for (const List& list : parts.lists)
        std::erase_if(list.json->members, [&](const JsonMember& /*item*/) { return oneIn(2); });
    repair(model);
}
