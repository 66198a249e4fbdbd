#pragma once

#include "ModelKeys.h"
#include "ModelMutator.h"

#include <algorithm>

// What the mutator knows of a tree.

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
