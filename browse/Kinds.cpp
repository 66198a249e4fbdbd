#include "browse/Kinds.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <utility>

namespace browse {

namespace {

using reader::Object;

// What the page adds to the kinds that it shows by themselves. Their words are those of the reader.
struct KindRow {
    std::string_view keyword;
    std::string_view icon;
    Group group;
    std::string_view forward;
    std::string_view backward;
};

constexpr KindRow kindRows[] = {
    {"ActivityState", "activity", Group::behavior, "", ""},
    {"Association", "association", Group::relation, "Associated with", "Associated with"},
    {"Class", "class", Group::classifier, "In component", "Contains"},
    {"ClassAttribute", "attribute", Group::feature, "Type", "Type of"},
    {"Class_Category", "package", Group::package, "", ""},
    {"Class_Utility", "class", Group::classifier, "In component", "Contains"},
    {"Connection_Relationship", "association", Group::relation, "Connected to", "Connected to"},
    {"Decision", "decision", Group::behavior, "", ""},
    {"Dependency_Relationship", "dependency", Group::relation, "Depends on", "Needed by"},
    {"Design", "model", Group::package, "", ""},
    {"Device", "node", Group::classifier, "", ""},
    {"Inheritance_Relationship", "generalization", Group::relation, "Inherits from", "Inherited by"},
    {"Instantiated_Class", "class", Group::classifier, "In component", "Contains"},
    {"Instantiated_Class_Utility", "class", Group::classifier, "In component", "Contains"},
    {"Instantiation_Relationship", "dependency", Group::relation, "Instantiates", "Instantiated by"},
    {"Link", "association", Group::relation, "Linked to", "Linked to"},
    {"Mechanism", "interaction", Group::behavior, "", ""},
    {"Message", "dependency", Group::behavior, "Calls", "Called by"},
    {"Metaclass", "class", Group::classifier, "In component", "Contains"},
    {"Module_Visibility_Relationship", "dependency", Group::relation, "Depends on", "Needed by"},
    {"Object", "object", Group::behavior, "Instance of", "Instances"},
    {"Operation", "operation", Group::feature, "Returns", "Returned by"},
    {"Parameterized_Class", "class", Group::classifier, "In component", "Contains"},
    {"Parameterized_Class_Utility", "class", Group::classifier, "In component", "Contains"},
    {"Partition", "object", Group::behavior, "Instance of", "Instances"},
    {"Process", "operation", Group::behavior, "", ""},
    {"Processes", "package", Group::package, "", ""},
    {"Processor", "node", Group::classifier, "", ""},
    {"Realize_Relationship", "realization", Group::relation, "Realizes", "Realized by"},
    {"State", "state", Group::behavior, "", ""},
    {"State_Machine", "state", Group::behavior, "", ""},
    {"State_Transition", "dependency", Group::relation, "Goes to", "Comes from"},
    {"SubSystem", "package", Group::package, "", ""},
    {"SynchronizationState", "synchronization", Group::behavior, "", ""},
    {"UseCase", "use-case", Group::classifier, "", ""},
    {"Uses_Relationship", "dependency", Group::relation, "Uses", "Used by"},
    {"Visibility_Relationship", "dependency", Group::relation, "Depends on", "Needed by"},
    {"module", "component", Group::classifier, "", ""},
};

constexpr std::pair<reader::DiagramKind, std::string_view> diagramIcons[] = {
    {reader::DiagramKind::useCases, "use-case-diagram"},
    {reader::DiagramKind::sequence, "sequence-diagram"},
    {reader::DiagramKind::collaboration, "collaboration-diagram"},
    {reader::DiagramKind::state, "state-diagram"},
    {reader::DiagramKind::activity, "activity-diagram"},
    {reader::DiagramKind::component, "component-diagram"},
    {reader::DiagramKind::deployment, "deployment-diagram"},
};

// Keys whose labels do not follow from them, and those that are shown elsewhere or not at all.
constexpr std::pair<std::string_view, std::string_view> labels[] = {
    {"_written", "Written by"},
    {"client_cardinality", "Multiplicity"},
    {"client_quidu", ""},
    {"cardinality", "Multiplicity"},
    {"dir", "Direction"},
    {"documentation", ""},
    {"exportControl", "Visibility"},
    {"file_name", "Unit file"},
    {"initv", "Initial value"},
    {"is_loaded", ""}, // what is not is told above the sheet
    {"is_unit", ""},   // a unit has a file
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
    {"supplier_quidu", ""},
    {"title", ""},
    {"uid", ""},
    {"zoom", ""},
};

const KindRow* rowOf(std::string_view keyword)
{
    const auto* const row = std::find_if(std::begin(kindRows), std::end(kindRows),
                                         [&](const KindRow& each) { return each.keyword == keyword; });
    return row == std::end(kindRows) ? nullptr : row;
}

Kind kindOfDiagram(std::string_view keyword, reader::DiagramKind diagram)
{
    const auto* const icon = std::find_if(std::begin(diagramIcons), std::end(diagramIcons),
                                          [&](const auto& each) { return each.first == diagram; });
    const bool isKnown = diagram != reader::DiagramKind::other;
    return {keyword,
            (isKnown ? std::string(reader::diagramKindName(diagram)) + ' ' : "") + "diagram",
            icon == std::end(diagramIcons) ? "diagram" : icon->second,
            "",
            "",
            Group::diagram,
            false};
}

} // namespace

Kind kindOf(const Object& object)
{
    const std::string_view keyword = object.kind();
    if (const auto diagram = reader::diagramKindOf(object))
        return kindOfDiagram(keyword, *diagram);
    const KindRow* const row = rowOf(keyword);
    if (!row)
        return {keyword, std::string(keyword), "other", "Refers to", "Referred to by", Group::behavior, false};
    const reader::KnownKind* const known = reader::knownKindOf(object);
    const bool isRelation = row->group == Group::relation && !object.is("Association");
    return {keyword,   std::string(known ? known->word : keyword), row->icon, row->forward, row->backward, row->group,
            isRelation};
}

bool isElement(const Object& object)
{
    if (reader::diagramKindOf(object))
        return true;
    if (reader::knownKindOf(object))
        return rowOf(object.kind());
    return !object.viewNumber() && object.has("quid");
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
