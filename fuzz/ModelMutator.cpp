#include "ModelMutator.h"

#include "AwkwardValues.h"
#include "ExportWords.h"
#include "ModelParts.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

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
