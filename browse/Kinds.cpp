#include "browse/Kinds.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <utility>

namespace browse {

namespace {

using reader::ElementKind;
using reader::Object;

constexpr Kind kinds[] = {
    {"ActivityState", "activity", "activity", "", "", Group::behavior, false},
    {"Association", "association", "association", "Associated with", "Associated with", Group::relation, false},
    {"Class", "class", "class", "In component", "Contains", Group::classifier, false},
    {"ClassAttribute", "attribute", "attribute", "Type", "Type of", Group::feature, false},
    {"Class_Category", "package", "package", "", "", Group::package, false},
    {"Class_Utility", "class utility", "class", "In component", "Contains", Group::classifier, false},
    {"Connection_Relationship", "connection", "association", "Connected to", "Connected to", Group::relation, true},
    {"Decision", "decision", "decision", "", "", Group::behavior, false},
    {"Dependency_Relationship", "dependency", "dependency", "Depends on", "Needed by", Group::relation, true},
    {"Design", "model", "model", "", "", Group::package, false},
    {"Device", "device", "node", "", "", Group::classifier, false},
    {"Inheritance_Relationship", "generalization", "generalization", "Inherits from", "Inherited by", Group::relation,
     true},
    {"Instantiated_Class", "instantiated class", "class", "In component", "Contains", Group::classifier, false},
    {"Instantiated_Class_Utility", "instantiated class utility", "class", "In component", "Contains", Group::classifier,
     false},
    {"Instantiation_Relationship", "instantiation", "dependency", "Instantiates", "Instantiated by", Group::relation,
     true},
    {"Link", "link", "association", "Linked to", "Linked to", Group::relation, true},
    {"Mechanism", "interaction", "interaction", "", "", Group::behavior, false},
    {"Message", "message", "dependency", "Calls", "Called by", Group::behavior, false},
    {"Metaclass", "metaclass", "class", "In component", "Contains", Group::classifier, false},
    {"Module_Visibility_Relationship", "dependency", "dependency", "Depends on", "Needed by", Group::relation, true},
    {"Object", "object", "object", "Instance of", "Instances", Group::behavior, false},
    {"Operation", "operation", "operation", "Returns", "Returned by", Group::feature, false},
    {"Parameterized_Class", "parameterized class", "class", "In component", "Contains", Group::classifier, false},
    {"Parameterized_Class_Utility", "parameterized class utility", "class", "In component", "Contains",
     Group::classifier, false},
    {"Partition", "swimlane", "object", "Instance of", "Instances", Group::behavior, false},
    {"Process", "process", "operation", "", "", Group::behavior, false},
    {"Processes", "view", "package", "", "", Group::package, false},
    {"Processor", "processor", "node", "", "", Group::classifier, false},
    {"Realize_Relationship", "realization", "realization", "Realizes", "Realized by", Group::relation, true},
    {"State", "state", "state", "", "", Group::behavior, false},
    {"State_Machine", "state machine", "state", "", "", Group::behavior, false},
    {"State_Transition", "transition", "dependency", "Goes to", "Comes from", Group::relation, true},
    {"SubSystem", "component package", "package", "", "", Group::package, false},
    {"SynchronizationState", "synchronization", "synchronization", "", "", Group::behavior, false},
    {"UseCase", "use case", "use-case", "", "", Group::classifier, false},
    {"Uses_Relationship", "dependency", "dependency", "Uses", "Used by", Group::relation, true},
    {"Visibility_Relationship", "dependency", "dependency", "Depends on", "Needed by", Group::relation, true},
    {"module", "component", "component", "", "", Group::classifier, false},
};

struct DiagramRow {
    reader::DiagramKind kind;
    std::string_view word;
    std::string_view icon;
};

constexpr DiagramRow diagramRows[] = {
    {reader::DiagramKind::classes, "class diagram", "diagram"},
    {reader::DiagramKind::useCases, "use case diagram", "use-case-diagram"},
    {reader::DiagramKind::sequence, "sequence diagram", "sequence-diagram"},
    {reader::DiagramKind::collaboration, "collaboration diagram", "collaboration-diagram"},
    {reader::DiagramKind::state, "state diagram", "state-diagram"},
    {reader::DiagramKind::activity, "activity diagram", "activity-diagram"},
    {reader::DiagramKind::component, "component diagram", "component-diagram"},
    {reader::DiagramKind::deployment, "deployment diagram", "deployment-diagram"},
    {reader::DiagramKind::threeTier, "three-tier diagram", "diagram"},
    {reader::DiagramKind::other, "diagram", "diagram"},
};

// Parts of an element's own sheet.
constexpr std::string_view parts[] = {"Event", "Parameter", "Role", "action", "sendEvent"};

// Keys whose labels do not follow from them, and those that are shown elsewhere or not at all.
constexpr std::pair<std::string_view, std::string_view> labels[] = {
    {"_written", "Written by"},
    {"client_cardinality", "Multiplicity"},
    {"cardinality", "Multiplicity"},
    {"dir", "Direction"},
    {"documentation", ""},
    {"exportControl", "Visibility"},
    {"file_name", "Unit file"},
    {"initv", "Initial value"},
    {"is_unit", "Controlled unit"},
    {"is_loaded", "Loaded"},
    {"label", "Label"},
    {"max_height", ""},
    {"max_width", ""},
    {"mechanism_ref", ""},
    {"module", "Component"},
    {"opExportControl", "Visibility"},
    {"ordinal", ""},
    {"origin_x", ""},
    {"origin_y", ""},
    {"parameters", ""},
    {"quid", ""},
    {"quidu", ""},
    {"stereotype", ""},
    {"supplier_is_device", ""},
    {"supplier_is_spec", ""},
    {"supplier_is_subsystem", ""},
    {"title", ""},
    {"uid", ""},
    {"zoom", ""},
};

} // namespace

Kind kindOf(const Object& object)
{
    if (const auto diagram = reader::diagramKindOf(object))
        for (const DiagramRow& row : diagramRows)
            if (row.kind == *diagram)
                return {object.kind(), row.word, row.icon, "", "", Group::diagram, false};
    const auto* const row = std::find_if(std::begin(kinds), std::end(kinds),
                                         [&](const Kind& each) { return each.keyword == object.kind(); });
    if (row != std::end(kinds))
        return *row;
    return {object.kind(), object.kind(), "other", "Refers to", "Referred to by", Group::behavior, false};
}

bool isElement(const Object& object)
{
    if (std::find(std::begin(parts), std::end(parts), object.kind()) != std::end(parts) || object.is("Properties"))
        return false;
    if (reader::diagramKindOf(object) || reader::elementKindOf(object) != ElementKind::none)
        return true;
    if (object.is("Design", "Processes"))
        return true;
    return !reader::isKnownKind(object) && !object.viewNumber() && object.has("quid");
}

std::string labelOf(std::string_view key)
{
    for (const auto& [known, label] : labels)
        if (known == key)
            return std::string(label);
    std::string label;
    for (const char c : key) {
        const auto byte = static_cast<unsigned char>(c);
        const bool startsWord =
            std::isupper(byte) && !label.empty() && std::islower(static_cast<unsigned char>(label.back()));
        if (startsWord)
            label += ' ';
        if (label.empty())
            label += static_cast<char>(std::toupper(byte));
        else if (c == '_')
            label += ' ';
        else
            label += startsWord ? static_cast<char>(std::tolower(byte)) : c;
    }
    return label;
}

} // namespace browse
