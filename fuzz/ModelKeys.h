#pragma once

#include "modelfile/read/Tables.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

// The keys of model files, and what may stand under them.

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

inline ValueRule ruleOf(std::string_view objectKind, std::string_view key)
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

inline bool isElementKind(std::string_view kind)
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

inline const std::vector<std::string_view>& keysOf(std::string_view objectKind)
{
    static const std::vector<modelfile::ObjectKeys> all = modelfile::modelFileKeys();
    static const std::vector<std::string_view> none;
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const modelfile::ObjectKeys& each) { return each.objectKind == objectKind; });
    return found == all.end() ? none : found->keys;
}
