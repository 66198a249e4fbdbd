#include "ModelMutator.h"
#include "ModelParts.h"

#include <algorithm>
#include <map>
#include <set>

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
