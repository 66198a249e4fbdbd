#include "logical/LogicalView.h"

#include "diagrams/ClassDiagrams.h"
#include "model/ExportState.h"
#include "petal/PetalWriter.h"

namespace {

constexpr int deepestLevel = 512;
constexpr const char* logicalViewName = "Logical View";

// Levels below the root package, counted over the nested calls.
class NestingLevel {
public:
    explicit NestingLevel(bool isRoot)
    {
        if (isRoot)
            level = 0;
        else
            ++level;
    }
    ~NestingLevel() { --level; }
    NestingLevel(const NestingLevel&) = delete;
    NestingLevel& operator=(const NestingLevel&) = delete;

    [[nodiscard]] static bool isTooDeep() { return level > deepestLevel; }

private:
    static inline int level = 0;
};

//     root_category \t(object Class_Category "Logical View"
//     quid\t"34429CE6000"
//     exportControl\t"Public"
//     global\tTRUE
//     subsystem\t"Component View"
//     quidu\t"344A14000012"
void printRootHead(const KivDesignPackage& package)
{
    line("root_category \t(object Class_Category ", quoted(package.getName()));
    line("quid\t\"34429CE6000\"");
    if (!package.description.isEmpty())
        line("documentation\t", makeRoseDesc(package.description));
    line("exportControl\t\"Public\"");
    line("global\tTRUE");
    line("subsystem\t\"Component View\"");
    line("quidu\t", quoted(makeQuid(pquid, package.pid)));
}

//     (object Class_Category "Orders"
//     quid\t"344A14000012"
//     exportControl\t"Public"
void printNestedHead(const KivDesignPackage& package)
{
    line("(object Class_Category ", quoted(package.getName()));
    line("quid\t", quoted(makeQuid(pquid, package.pid)));
    if (!package.description.isEmpty())
        line("documentation\t", makeRoseDesc(package.description));
    if (!package.stereotype.isEmpty())
        line("stereotype\t", quoted(package.stereotype));
    line("exportControl\t\"Public\"");
}

void printElements(const KivDesignPackage& package)
{
    ROS_E_PRINTING_CLASSES.log(*localLog);
    for (KivObject* const element : package.modelElements)
        if (element && element->elementType == KivElementType::Class)
            printClasses(static_cast<KivClass*>(element));
    createEnumClass();
    ROS_E_PRINTING_ASSOCIATIONS.log(*localLog);
    // By index: iteration fetches all that belongs to each element, and few of them are associations.
    for (std::size_t i = 0; i < package.modelElements.count(); ++i) {
        KivObject* const element = package.modelElements.at(i);
        if (element && element->elementType == KivElementType::Association)
            printAssociations(static_cast<KivAssociation*>(element));
    }
}

void printChildPackages(int* diagramCounter, KivModel* model, const KivDesignPackage& package)
{
    for (KivPackage* const child : package.childPackages)
        if (child->elementType == KivElementType::DesignPackage && child->getName() != logicalViewName)
            printPackages(0, diagramCounter, model, static_cast<KivDesignPackage*>(child));
}

void printDiagrams(int* diagramCounter, const KivDesignPackage& package)
{
    for (KivDiagram* const diagram : package.diagrams)
        if (diagram && diagram->elementType == KivElementType::ClassDiagram)
            printClassDiagrams(static_cast<KivClassDiagram*>(diagram), (*diagramCounter)++);
}

} // namespace

// The level is lowered once more than it is raised, so every package leaves what follows one level further left;
// readers go by the parentheses.
int printPackages(int root, int* diagramCounter, KivModel* model, KivDesignPackage* package)
{
    const NestingLevel nesting(root == 1);
    if (NestingLevel::isTooDeep())
        ROS_E_PACKAGES_NESTED_TOO_DEEP.throwException(package->getName());
    ROS_E_PRINTING_PACKAGE.log(*localLog, package->getName());
    object([&] {
        if (root == 1)
            printRootHead(*package);
        else
            printNestedHead(*package);
        list("logical_models \t(list unit_reference_list", [&] {
            printElements(*package);
            printChildPackages(diagramCounter, model, *package);
        });
        XScale = XLog;
        YScale = YLog;
        ROS_E_PRINTING_DIAGRAM.log(*localLog);
        flatList("logical_presentations \t(list unit_reference_list", [&] { printDiagrams(diagramCounter, *package); });
        decreaseIndent();
    });
    return 1;
}
