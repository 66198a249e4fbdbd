#include "reader/index/Kinds.h"

#include "reader/notation/Petal.h"

#include <algorithm>
#include <iterator>

namespace reader {

namespace {

// By keyword. Views and what is only a part of something have no words.
constexpr KnownKind kinds[] = {
    {"ActivityDiagram", "activity", ElementKind::none, DiagramKind::activity},
    {"ActivityState", "activity", ElementKind::behavior},
    {"ActivityStateView"},
    {"AnchorView"},
    {"AssocAttachView"},
    {"Association", "association", ElementKind::relation},
    {"AssociationViewNew"},
    {"AttachView"},
    {"Attribute"},
    {"CategoryView"},
    {"Class", "class", ElementKind::classifier},
    {"ClassAttribute", "attribute", ElementKind::feature},
    {"ClassDiagram", "class", ElementKind::none, DiagramKind::classes},
    {"ClassInstanceView"},
    {"ClassView"},
    {"Class_Category", "package", ElementKind::package},
    {"Class_Utility", "class utility", ElementKind::classifier},
    {"Compartment"},
    {"ConnectionView"},
    {"Connection_Relationship", "connection", ElementKind::relation},
    {"DataFlowView"},
    {"Decision", "decision", ElementKind::behavior},
    {"DecisionView"},
    {"DependencyView"},
    {"Dependency_Relationship", "dependency", ElementKind::relation},
    {"Design", "model"},
    {"Destruction_Marker"},
    {"Device", "device", ElementKind::node},
    {"DeviceView"},
    {"Event", "event", ElementKind::behavior},
    {"Focus_Of_Control"},
    {"Font"},
    {"ImportView"},
    {"InheritTreeView"},
    {"InheritView"},
    {"Inheritance_Relationship", "generalization", ElementKind::relation},
    {"InstantiateView"},
    {"Instantiated_Class", "instantiated class", ElementKind::classifier},
    {"Instantiated_Class_Utility", "instantiated class utility", ElementKind::classifier},
    {"Instantiation_Relationship", "instantiation", ElementKind::relation},
    {"InterMessView"},
    {"InterObjView"},
    {"InteractionDiagram", "sequence", ElementKind::none, DiagramKind::sequence},
    {"InterfaceView"},
    {"ItemLabel"},
    {"Label"},
    {"Link", "link", ElementKind::behavior},
    {"LinkSelfView"},
    {"LinkView"},
    {"Mechanism", "interaction", ElementKind::behavior},
    {"MessView"},
    {"Message", "message", ElementKind::behavior},
    {"Metaclass", "metaclass", ElementKind::classifier},
    {"ModView"},
    {"ModVisView"},
    {"Module_Diagram", "component", ElementKind::none, DiagramKind::component},
    {"Module_Visibility_Relationship", "dependency", ElementKind::relation},
    {"NoteView"},
    {"Object", "object", ElementKind::behavior},
    {"ObjectDiagram", "collaboration", ElementKind::none, DiagramKind::collaboration},
    {"ObjectView"},
    {"Operation", "operation", ElementKind::feature},
    {"Parameter", "parameter", ElementKind::feature},
    {"Parameterized_Class", "parameterized class", ElementKind::classifier},
    {"Parameterized_Class_Utility", "parameterized class utility", ElementKind::classifier},
    {"Partition", "swimlane", ElementKind::behavior},
    {"Petal"},
    {"Process", "process", ElementKind::behavior},
    {"Process_Diagram", "deployment", ElementKind::none, DiagramKind::deployment},
    {"Processes", "view"},
    {"Processor", "processor", ElementKind::node},
    {"ProcessorView"},
    {"Properties"},
    {"RealizeView"},
    {"Realize_Relationship", "realization", ElementKind::relation},
    {"Role", "role", ElementKind::feature},
    {"RoleView"},
    {"SegLabel"},
    {"SelfMessView"},
    {"SelfTransView"},
    {"Semantic_Info"},
    {"State", "state", ElementKind::behavior},
    {"StateView"},
    {"State_Diagram", "state", ElementKind::none, DiagramKind::state},
    {"State_Machine", "state machine", ElementKind::behavior},
    {"State_Transition", "transition", ElementKind::behavior},
    {"SubSysView"},
    {"SubSystem", "component package", ElementKind::package},
    {"Swimlane"},
    {"SynchronizationState", "synchronization", ElementKind::behavior},
    {"SynchronizationView"},
    {"ThreeTierDiagram", "three-tier", ElementKind::none, DiagramKind::threeTier},
    {"Tier_Diagram", "three-tier", ElementKind::none, DiagramKind::threeTier},
    {"TransView"},
    {"UseCase", "use case", ElementKind::classifier},
    {"UseCaseDiagram", "use case", ElementKind::none, DiagramKind::useCases},
    {"UseCaseView"},
    {"UsesView"},
    {"Uses_Relationship", "dependency", ElementKind::relation},
    {"Visibility_Relationship", "dependency", ElementKind::relation},
    {"action", "action", ElementKind::behavior},
    {"defaults"},
    {"module", "component", ElementKind::component},
    {"sendEvent", "send event", ElementKind::behavior},
};

constexpr bool isBefore(const KnownKind& a, const KnownKind& b)
{
    return a.keyword < b.keyword;
}

static_assert(std::is_sorted(std::begin(kinds), std::end(kinds), isBefore));

} // namespace

const KnownKind* knownKindOf(const Object& object)
{
    const auto* const row = std::lower_bound(std::begin(kinds), std::end(kinds), KnownKind{object.kind()}, isBefore);
    return row != std::end(kinds) && row->keyword == object.kind() ? row : nullptr;
}

std::string_view diagramKindName(DiagramKind kind)
{
    const auto* const row =
        std::find_if(std::begin(kinds), std::end(kinds), [&](const KnownKind& each) { return each.diagram == kind; });
    return row == std::end(kinds) ? "other" : row->word;
}

std::optional<DiagramKind> diagramKindOf(const Object& object)
{
    if (const KnownKind* const kind = knownKindOf(object); kind && kind->diagram)
        return kind->diagram;
    const List* const items = object.get("items").asList();
    return items && items->kind() == "diagram_item_list" ? std::optional(DiagramKind::other) : std::nullopt;
}

ElementKind elementKindOf(const Object& object)
{
    const KnownKind* const kind = knownKindOf(object);
    return kind ? kind->element : ElementKind::none;
}

bool isUnnamed(std::string_view name)
{
    return name.empty() || name.starts_with("$UNNAMED$");
}

std::string shownName(const Object& object)
{
    std::string name;
    if (elementKindOf(object) == ElementKind::none &&
        !diagramKindOf(object)) { // a view, or a reference, has the whole path
        name = object.lastName();
        if (const std::size_t colons = name.rfind("::", name.find('<')); colons != std::string::npos)
            name.erase(0, colons + 2);
    } else {
        name = object.name();
    }
    return isUnnamed(name) ? std::string() : name;
}

} // namespace reader
