#include "reader/Index.h"

#include <algorithm>
#include <array>
#include <utility>

namespace reader {

namespace {

struct DiagramRow {
    std::string_view keyword;
    DiagramKind kind;
    std::string_view name;
};

constexpr DiagramRow diagramRows[] = {
    {"ClassDiagram", DiagramKind::classes, "class"},
    {"UseCaseDiagram", DiagramKind::useCases, "use case"},
    {"InteractionDiagram", DiagramKind::sequence, "sequence"},
    {"ObjectDiagram", DiagramKind::collaboration, "collaboration"},
    {"State_Diagram", DiagramKind::state, "state"},
    {"ActivityDiagram", DiagramKind::activity, "activity"},
    {"Module_Diagram", DiagramKind::component, "component"},
    {"Process_Diagram", DiagramKind::deployment, "deployment"},
    {"Tier_Diagram", DiagramKind::threeTier, "three-tier"},
    {"ThreeTierDiagram", DiagramKind::threeTier, "three-tier"},
    {"", DiagramKind::other, "other"},
};

constexpr std::pair<std::string_view, ElementKind> elementRows[] = {
    {"ActivityState", ElementKind::behavior},
    {"Association", ElementKind::relation},
    {"Class", ElementKind::classifier},
    {"ClassAttribute", ElementKind::feature},
    {"Class_Category", ElementKind::package},
    {"Class_Utility", ElementKind::classifier},
    {"Connection_Relationship", ElementKind::relation},
    {"Decision", ElementKind::behavior},
    {"Dependency_Relationship", ElementKind::relation},
    {"Device", ElementKind::node},
    {"Event", ElementKind::behavior},
    {"Inheritance_Relationship", ElementKind::relation},
    {"Instantiated_Class", ElementKind::classifier},
    {"Instantiated_Class_Utility", ElementKind::classifier},
    {"Instantiation_Relationship", ElementKind::relation},
    {"Link", ElementKind::behavior},
    {"Mechanism", ElementKind::behavior},
    {"Message", ElementKind::behavior},
    {"Metaclass", ElementKind::classifier},
    {"Module_Visibility_Relationship", ElementKind::relation},
    {"Object", ElementKind::behavior},
    {"Operation", ElementKind::feature},
    {"Parameter", ElementKind::feature},
    {"Parameterized_Class", ElementKind::classifier},
    {"Parameterized_Class_Utility", ElementKind::classifier},
    {"Partition", ElementKind::behavior},
    {"Process", ElementKind::behavior},
    {"Processor", ElementKind::node},
    {"Realize_Relationship", ElementKind::relation},
    {"Role", ElementKind::feature},
    {"State", ElementKind::behavior},
    {"State_Machine", ElementKind::behavior},
    {"State_Transition", ElementKind::behavior},
    {"SubSystem", ElementKind::package},
    {"SynchronizationState", ElementKind::behavior},
    {"UseCase", ElementKind::classifier},
    {"Uses_Relationship", ElementKind::relation},
    {"Visibility_Relationship", ElementKind::relation},
    {"action", ElementKind::behavior},
    {"module", ElementKind::component},
    {"sendEvent", ElementKind::behavior},
};

// What else there is: views, and what is a part of something.
constexpr std::string_view otherKinds[] = {
    "ActivityStateView",
    "AnchorView",
    "AssocAttachView",
    "AssociationViewNew",
    "AttachView",
    "Attribute",
    "CategoryView",
    "ClassInstanceView",
    "ClassView",
    "Compartment",
    "ConnectionView",
    "DataFlowView",
    "DecisionView",
    "DependencyView",
    "Design",
    "Destruction_Marker",
    "DeviceView",
    "Focus_Of_Control",
    "Font",
    "ImportView",
    "InheritTreeView",
    "InheritView",
    "InstantiateView",
    "InterMessView",
    "InterObjView",
    "InterfaceView",
    "ItemLabel",
    "Label",
    "LinkSelfView",
    "LinkView",
    "MessView",
    "ModView",
    "ModVisView",
    "NoteView",
    "ObjectView",
    "Petal",
    "ProcessorView",
    "Processes",
    "Properties",
    "RealizeView",
    "RoleView",
    "SegLabel",
    "SelfMessView",
    "SelfTransView",
    "Semantic_Info",
    "StateView",
    "SubSysView",
    "Swimlane",
    "SynchronizationView",
    "TransView",
    "UseCaseView",
    "UsesView",
    "defaults",
};

} // namespace

std::string_view diagramKindName(DiagramKind kind)
{
    const auto* const row = std::find_if(std::begin(diagramRows), std::end(diagramRows),
                                         [&](const auto& each) { return each.kind == kind; });
    return row->name;
}

std::optional<DiagramKind> diagramKindOf(const Object& object)
{
    for (const DiagramRow& row : diagramRows)
        if (object.kind() == row.keyword && row.kind != DiagramKind::other)
            return row.kind;
    const List* const items = object.get("items").asList();
    return items && items->kind() == "diagram_item_list" ? std::optional(DiagramKind::other) : std::nullopt;
}

ElementKind elementKindOf(const Object& object)
{
    for (const auto& [keyword, kind] : elementRows)
        if (object.kind() == keyword)
            return kind;
    return ElementKind::none;
}

bool isKnownKind(const Object& object)
{
    const auto diagram = diagramKindOf(object);
    return elementKindOf(object) != ElementKind::none || (diagram && *diagram != DiagramKind::other) ||
           std::find(std::begin(otherKinds), std::end(otherKinds), object.kind()) != std::end(otherKinds);
}

bool isUnnamed(std::string_view name)
{
    return name.empty() || name.starts_with("$UNNAMED$");
}

std::string shownName(const Object& object)
{
    std::string name = elementKindOf(object) == ElementKind::none ? object.lastName() : object.name();
    if (const std::size_t colons = name.rfind("::"); colons != std::string::npos)
        name.erase(0, colons + 2);
    return isUnnamed(name) ? std::string() : name;
}

} // namespace reader
